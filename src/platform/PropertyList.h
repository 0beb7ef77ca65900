#pragma once

#include <QByteArray>
#include <QVariant>

#include <optional>

// Property lists, the format of preferences and bundle descriptions, in both of its encodings.
//
// Values are QVariantMap, QVariantList, QString, QByteArray, qint64, double,
// bool and QDateTime (UTC). Pure functions, any thread.
namespace brivane::PropertyList {

enum class Encoding { Xml, Binary };

/// The value in `bytes`, whichever encoding it has; none when it is no property list. Input may be
/// hostile: nesting of more than 256 levels, or a file that unfolds to more values than its size
/// accounts for, is refused.
[[nodiscard]] std::optional<QVariant> read(const QByteArray& bytes);

/// `value` as a property list; none when something in it has no form in one. The text of a
/// name that is no UTF-8 (see PathText) has one in XML only.
[[nodiscard]] std::optional<QByteArray> write(const QVariant& value, Encoding encoding);

} // namespace brivane::PropertyList
