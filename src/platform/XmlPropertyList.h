#pragma once

#include <QByteArray>
#include <QVariant>

#include <optional>

// The XML encoding of property lists, for PropertyList, which sees to the bounds that hold for both
// encodings. Pure functions, any thread.
namespace brivane::PropertyList {

/// The value in `bytes`, which are UTF-8; none when they are malformed. Nesting is bounded.
[[nodiscard]] std::optional<QVariant> readXml(const QByteArray& bytes);

/// `value`, which is within the bounds; none when it holds a date that has no form, or the file
/// would be larger than the largest.
[[nodiscard]] std::optional<QByteArray> writeXml(const QVariant& value);

} // namespace brivane::PropertyList
