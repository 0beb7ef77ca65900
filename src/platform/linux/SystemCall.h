#pragma once

#include "platform/FileDescriptor.h"
#include "platform/FileIdentity.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

// The few system calls that every operation on files here is made of, in the form in which it uses
// them: from the descriptor of a folder, for one name, never through a link. Functions that return
// `int` return 0 or an errno value.
namespace brivane::posix {

/// Calls again what a signal interrupted.
template<typename Call>
auto uninterrupted(Call call)
{
    for (;;) {
        const auto result = call();
        if (result >= 0 || errno != EINTR)
            return result;
    }
}

/// errno of a call that says -1 for failure, 0 when it succeeded.
template<typename Call>
[[nodiscard]] int errorOf(Call call)
{
    return uninterrupted(call) < 0 ? errno : 0;
}

/// What lstat says, and which mount the object lies on.
struct FileStatus {
    FileIdentity identity;
    std::uint64_t mount = 0;
    std::uint64_t size = 0;
    mode_t mode = 0;
    nlink_t links = 0;
    uid_t owner = 0;
    gid_t group = 0;
    timespec accessed = {};
    timespec modified = {};

    [[nodiscard]] bool isDirectory() const { return S_ISDIR(mode); }
    /// Whether both lie on one device and one mount, so that no mount point is between them.
    [[nodiscard]] bool isOnSameMount(const FileStatus& other) const
    {
        return identity.device == other.identity.device && mount == other.mount;
    }
};

/// Nanoseconds since 1970. Times of three centuries away and more, which a file may well have, are
/// all the farthest one that can be said.
[[nodiscard]] std::int64_t nanoseconds(const statx_timestamp& time);

[[nodiscard]] int readStatus(int folder, const char* name, FileStatus& status);
[[nodiscard]] int readStatus(int descriptor, FileStatus& status);

/// Opens `name` in `folder` with O_NOFOLLOW and O_CLOEXEC; `mode` is for O_CREAT.
[[nodiscard]] int openAt(int folder, const char* name, int flags, FileDescriptor& opened,
                         mode_t mode = 0);
/// Opens the folder `name` for reading; a link is ENOTDIR or ELOOP.
[[nodiscard]] int openFolder(int folder, const char* name, FileDescriptor& opened);
[[nodiscard]] int removeAt(int folder, const char* name, int flags = 0);
/// Renames; EEXIST when anything stands at `to`.
[[nodiscard]] int renameWithoutReplacing(int fromFolder, const char* from, int toFolder,
                                         const char* to);
/// Syncs a folder that may be open by O_PATH only.
[[nodiscard]] int syncFolder(int folder);

} // namespace brivane::posix
