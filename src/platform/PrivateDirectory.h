#pragma once

#include <QString>

// Directories and files that nobody but the user can read, replace or plant things in. Any thread.
namespace brivane {

/// Makes `path` a directory of this user with mode 0700, or accepts one that is there. False when
/// it cannot be made, is a link or no directory, belongs to someone else, or lies in a directory
/// where others could put another one in its place.
[[nodiscard]] bool makePrivateDirectory(const QString& path);

/// Makes a new directory, mode 0700, whose name begins with `path`. Empty on failure.
[[nodiscard]] QString makeUniquePrivateDirectory(const QString& path);

/// Takes the rights of everybody else to the file at `path`, if there is one. False when what
/// stands there is anything but a regular file of this user's with this one name; a link is not
/// followed.
[[nodiscard]] bool keepToOurselves(const QString& path);

} // namespace brivane
