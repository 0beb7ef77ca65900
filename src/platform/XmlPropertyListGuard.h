#pragma once

#include <QByteArray>

#include <optional>

namespace brivane::PropertyList {

/// The XML in `bytes` as the parser can be given it; none for what it must not see. A result does
/// not mean that the XML is well formed. Pure, any thread.
///
/// The parser compares each attribute of a tag with all others and goes wrong over very long names,
/// so a tag has at most a thousand bytes. Entities unfold, so a document type has no declarations.
/// Units of text that have no form in XML, which earlier builds wrote as they are, become the
/// processing instructions that stand for them.
[[nodiscard]] std::optional<QByteArray> guardedXml(const QByteArray& bytes);

} // namespace brivane::PropertyList
