#pragma once

#include <QByteArray>

namespace brivane::posix {

/// Reads where the link `name` in the open folder `folder` leads, if it may be trusted (see
/// ParentLinks). ENOTDIR when it may not, or is no link. What was judged is what is read, also when
/// another link takes its name in between.
[[nodiscard]] int readTrustedLink(int folder, const char* name, QByteArray& target);

} // namespace brivane::posix
