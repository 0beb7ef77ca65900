#pragma once

#include <QByteArray>
#include <QVariant>

#include <optional>

// Property lists, the format of preferences and bundle descriptions, in both of its encodings.
//
// Values are QVariantMap, QVariantList, QString, QByteArray, qint64, double, bool and QDateTime
// (UTC); an integer that is too large for qint64 is a quint64. Pure functions, any thread.
namespace brivane::PropertyList {

enum class Encoding { Xml, Binary };

// The bounds of a list. What is beyond one of them is neither read nor written.

/// Bytes of a file.
inline constexpr qsizetype largestFile = 64 << 20;
/// Maps and lists in each other.
inline constexpr int deepestNesting = 256;
/// Values, keys among them; what a file holds once and refers to often counts each time.
inline constexpr qsizetype mostValues = 4'000'000;
/// Units of text and bytes of data, counted in the same way.
inline constexpr qsizetype mostContent = 64 << 20;

/// The value in `bytes`, whichever encoding it has; none when it is no property list, or not one
/// within the bounds. Input may be hostile: memory and time are in proportion to its size. No
/// entity is expanded and nothing is fetched; what has no type above (a UID, a set) is an error. Of
/// a key that stands twice in a map the last one counts.
[[nodiscard]] std::optional<QVariant> read(const QByteArray& bytes);

/// `value` as a property list, which read() gives back as it was; none when it has no form in one
/// or is beyond the bounds.
///
/// Every QString has a form in both encodings, whatever units it holds: also the text of a name
/// that is no UTF-8 (see PathText), and of one with control characters. Dates are kept to the
/// millisecond in binary lists, and cut to the second, which is all that the format has, in XML. A
/// date so far off that the encoding cannot tell it from its neighbours is refused. QStringList,
/// int and unsigned int are written too, and come back as QVariantList and qint64.
[[nodiscard]] std::optional<QByteArray> write(const QVariant& value, Encoding encoding);

} // namespace brivane::PropertyList
