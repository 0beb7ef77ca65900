#pragma once

#include <QByteArray>
#include <QVariant>

#include <optional>

// The binary encoding of property lists ("bplist00"), for PropertyList, which sees to the bounds
// that hold for both encodings. Pure functions, any thread.
//
// A file is a header, its objects, a table of their offsets, and a trailer that says where the
// table lies and which object is the root. Maps and lists refer to their content by its index in
// the table, so that a file may hold a value once and refer to it often.
namespace brivane::PropertyList {

/// The value in `bytes`; none when they are malformed. Nesting is bounded, and so is what a file
/// unfolds to, by its size.
[[nodiscard]] std::optional<QVariant> readBinary(const QByteArray& bytes);

/// `value`, which is within the bounds; none when it holds a date that has no form. Scalars that
/// are alike are written once.
[[nodiscard]] std::optional<QByteArray> writeBinary(const QVariant& value);

} // namespace brivane::PropertyList
