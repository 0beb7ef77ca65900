#pragma once

#include "platform/linux/SystemCall.h"

#include <QByteArray>

#include <deque>

namespace brivane::posix {

/// The way from a folder down to the one that is being worked in, for work on trees of any depth
/// without recursion and with few descriptors.
///
/// Only the deepest levels and the first are kept open. The way up goes by ".." and is checked: a
/// level is open only ever as the very folder that was entered. When somebody has moved a folder
/// meanwhile, its level is sought once more from the top, by names and without following links.
class FolderStack {
public:
    /// Begins at `root`, which `status` describes; O_PATH will do.
    FolderStack(FileDescriptor root, const FileStatus& status);

    /// The folder that is being worked in; -1 when the last leave() could not get back into it.
    [[nodiscard]] int current() const { return m_levels.back().descriptor.get(); }
    /// The folder where the way begins, always open.
    [[nodiscard]] int root() const { return m_levels.front().descriptor.get(); }
    /// Names on the way below the root, each after a slash.
    [[nodiscard]] QByteArray path() const;

    /// Goes down into `opened`, which is the folder `name` of the current one.
    void enter(QByteArray name, FileDescriptor opened, const FileStatus& status);
    /// Goes up by one level, never from the root; `left` becomes the folder that was current(). On
    /// an error current() is -1 and leave() may be called again, to go on one level higher; the
    /// root can always be reached.
    [[nodiscard]] int leave(FileDescriptor& left);

private:
    struct Level {
        QByteArray name;
        FileIdentity identity;
        FileDescriptor descriptor;
    };

    [[nodiscard]] int reopen(int folder, const char* name, Level& level);
    [[nodiscard]] int descendAgain();

    std::deque<Level> m_levels;
    std::size_t m_firstOpen = 1; ///< from here to the end levels are open, and so is the root
};

} // namespace brivane::posix
