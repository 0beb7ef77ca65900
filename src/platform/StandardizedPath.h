#pragma once

#include <QString>

namespace brivane {

/// `path` in the form in which paths are compared and stored: "~" and "~user" expanded, no empty
/// components and no ".", no slash at the end. In an absolute path ".." is the real parent, also
/// behind a link; in a relative one it stays. A "/private" in front goes when the shorter path
/// exists. Looks at the disk for these two only; any thread.
[[nodiscard]] QString standardizedPath(const QString& path, const QString& home);

/// `path` without links on the way and at its end, as far as it exists; as it is where that cannot
/// be found out. Blocks; any thread.
[[nodiscard]] QString withoutLinks(const QString& path);

} // namespace brivane
