#pragma once

#include <QByteArray>

#include <optional>

namespace brivane::PropertyList {

/// The XML in `bytes` as the parser can be given it; none for what it must not see. A result does
/// not mean that the XML is well formed. Pure, any thread.
///
/// The parser compares each attribute of a tag with all others, so a tag has at most a thousand
/// bytes. Entities unfold, so a document type has no declarations. Units of text that have no form
/// in XML, which earlier builds wrote as they are, become the processing instructions that stand
/// for them; so do carriage returns, which the parser drops or turns into new lines, and which
/// whoever writes property lists means.
[[nodiscard]] std::optional<QByteArray> guardedXml(const QByteArray& bytes);

} // namespace brivane::PropertyList
