#include "platform/linux/SystemCall.h"

#include <cstdio>
#include <limits>

#include <sys/sysmacros.h>

namespace brivane::posix {

namespace {

timespec timeOf(const statx_timestamp& time)
{
    return {.tv_sec = time.tv_sec, .tv_nsec = time.tv_nsec};
}

int readStatus(int folder, const char* name, int flags, FileStatus& status)
{
    struct statx raw = {};
    const int code = errorOf([&] {
        return ::statx(folder, name, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | flags,
                       STATX_BASIC_STATS | STATX_MNT_ID, &raw);
    });
    if (code != 0)
        return code;
    status = {
        .identity = {.device = makedev(raw.stx_dev_major, raw.stx_dev_minor),
                     .inode = raw.stx_ino,
                     .size = raw.stx_size,
                     .modifiedAt = nanoseconds(raw.stx_mtime),
                     .changedAt = nanoseconds(raw.stx_ctime),
                     .type = raw.stx_mode & S_IFMT},
        .mount = raw.stx_mnt_id,
        .size = raw.stx_size,
        .mode = raw.stx_mode,
        .links = raw.stx_nlink,
        .owner = raw.stx_uid,
        .group = raw.stx_gid,
        .accessed = timeOf(raw.stx_atime),
        .modified = timeOf(raw.stx_mtime),
    };
    return 0;
}

} // namespace

std::int64_t nanoseconds(const statx_timestamp& time)
{
    using Limits = std::numeric_limits<std::int64_t>;
    constexpr std::int64_t inSecond = 1'000'000'000;
    constexpr std::int64_t mostSeconds = Limits::max() / inSecond - 1;
    if (time.tv_sec > mostSeconds)
        return Limits::max();
    if (time.tv_sec < -mostSeconds)
        return Limits::min();
    return time.tv_sec * inSecond + time.tv_nsec;
}

int readStatus(int folder, const char* name, FileStatus& status)
{
    return readStatus(folder, name, 0, status);
}

int readStatus(int descriptor, FileStatus& status)
{
    return readStatus(descriptor, "", AT_EMPTY_PATH, status);
}

int openAt(int folder, const char* name, int flags, FileDescriptor& opened, mode_t mode)
{
    const int descriptor =
        uninterrupted([&] { return ::openat(folder, name, flags | O_NOFOLLOW | O_CLOEXEC, mode); });
    if (descriptor < 0)
        return errno;
    opened = FileDescriptor(descriptor);
    return 0;
}

int openFolder(int folder, const char* name, FileDescriptor& opened)
{
    return openAt(folder, name, O_RDONLY | O_DIRECTORY | O_NONBLOCK, opened);
}

int removeAt(int folder, const char* name, int flags)
{
    return errorOf([&] { return ::unlinkat(folder, name, flags); });
}

int renameWithoutReplacing(int fromFolder, const char* from, int toFolder, const char* to)
{
    return errorOf([&] { return ::renameat2(fromFolder, from, toFolder, to, RENAME_NOREPLACE); });
}

int syncFolder(int folder)
{
    FileDescriptor readable;
    if (const int code = openFolder(folder, ".", readable))
        return code;
    return errorOf([&] { return ::fsync(readable.get()); });
}

} // namespace brivane::posix
