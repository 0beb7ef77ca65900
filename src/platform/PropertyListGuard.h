#pragma once

#include <QByteArray>

namespace brivane::PropertyList {

/// Whether the parser can be given `bytes`. It follows nesting on the stack and copies what a
/// binary list refers to more than once, so that a small hostile file could exhaust stack or
/// memory. A yes does not mean that the bytes are well formed. Pure, any thread.
[[nodiscard]] bool isSafeToParse(const QByteArray& bytes);

} // namespace brivane::PropertyList
