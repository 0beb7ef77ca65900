#include "platform/linux/FileContent.h"

#include <QByteArray>

#include <algorithm>
#include <array>

#include <sys/xattr.h>

namespace brivane::posix {

namespace {

constexpr std::size_t portion = 1 << 20;

int writeAt(int file, QByteArrayView bytes, off_t at)
{
    while (!bytes.isEmpty()) {
        const ssize_t written = uninterrupted([&] {
            return ::pwrite(file, bytes.data(), static_cast<std::size_t>(bytes.size()), at);
        });
        if (written <= 0)
            return written < 0 ? errno : EIO;
        bytes = bytes.sliced(written);
        at += written;
    }
    return 0;
}

int copyRange(int from, int to, off_t at, off_t end, QByteArray& buffer)
{
    while (at < end) {
        const auto wanted = std::min(static_cast<std::size_t>(end - at), portion);
        buffer.resize(static_cast<qsizetype>(portion));
        const ssize_t read =
            uninterrupted([&] { return ::pread(from, buffer.data(), wanted, at); });
        if (read <= 0)
            return read < 0 ? errno : ESTALE;
        if (const int code = writeAt(to, QByteArrayView(buffer).first(read), at))
            return code;
        at += read;
    }
    return 0;
}

/// Reads a list or value whose size may change between the two calls that it takes.
template<typename Call>
int readSized(Call call, QByteArray& bytes)
{
    for (;;) {
        const ssize_t size = uninterrupted([&] { return call(nullptr, std::size_t{0}); });
        if (size < 0)
            return errno;
        bytes.resize(size);
        if (size == 0)
            return 0;
        const ssize_t read =
            uninterrupted([&] { return call(bytes.data(), static_cast<std::size_t>(size)); });
        if (read >= 0) {
            bytes.resize(read);
            return 0;
        }
        if (errno != ERANGE)
            return errno;
    }
}

int copyExtendedAttributes(int from, int to)
{
    QByteArray names;
    int code = readSized(
        [&](char* data, std::size_t size) { return ::flistxattr(from, data, size); }, names);
    if (code == ENOTSUP)
        return 0;
    if (code != 0)
        return code;
    for (const char* name = names.constData(); name < names.constData() + names.size();
         name += qstrlen(name) + 1) {
        QByteArray value;
        code = readSized(
            [&](char* data, std::size_t size) { return ::fgetxattr(from, name, data, size); },
            value);
        if (code == ENODATA)
            continue;
        if (code == 0) {
            code = errorOf([&] {
                return ::fsetxattr(to, name, value.constData(),
                                   static_cast<std::size_t>(value.size()), 0);
            });
        }
        const QByteArrayView view(name);
        const bool isSystems = view.startsWith("security.") || view.startsWith("trusted.");
        if (code != 0 && !(isSystems && (code == EPERM || code == ENOTSUP)))
            return code;
    }
    return 0;
}

/// The mode to set once an attempt to set the owner has ended with `ownerCode`.
mode_t modeAfterOwner(const FileStatus& status, int ownerCode)
{
    const mode_t lent = ownerCode == 0 ? 0 : S_ISUID | S_ISGID;
    return status.mode & 07777 & ~lent;
}

} // namespace

int writeAll(int file, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t written = uninterrupted(
            [&] { return ::write(file, bytes.data(), static_cast<std::size_t>(bytes.size())); });
        if (written <= 0)
            return written < 0 ? errno : EIO;
        bytes = bytes.sliced(written);
    }
    return 0;
}

int copyContent(int from, int to, std::uint64_t size)
{
    QByteArray buffer;
    const auto end = static_cast<off_t>(size);
    off_t at = 0;
    while (at < end) {
        off_t data = uninterrupted([&] { return ::lseek(from, at, SEEK_DATA); });
        if (data < 0 && errno == ENXIO)
            break; // a hole up to the end
        off_t hole = end;
        if (data >= 0)
            hole = uninterrupted([&] { return ::lseek(from, data, SEEK_HOLE); });
        if ((data < 0 || hole < 0) && errno != EINVAL)
            return errno;
        if (data < 0 || hole < 0) { // the file system does not know of holes
            data = at;
            hole = end;
        }
        hole = std::min(hole, end);
        if (const int code = copyRange(from, to, data, hole, buffer))
            return code;
        at = hole;
    }
    return errorOf([&] { return ::ftruncate(to, end); });
}

int copyAttributes(int from, int to, const FileStatus& status)
{
    const int ownerCode = errorOf([&] { return ::fchown(to, status.owner, status.group); });
    if (ownerCode != 0 && ownerCode != EPERM)
        return ownerCode;
    if (const int code = copyExtendedAttributes(from, to))
        return code;
    const mode_t mode = modeAfterOwner(status, ownerCode);
    if (const int code = errorOf([&] { return ::fchmod(to, mode); }))
        return code;
    const std::array times = {status.accessed, status.modified};
    return errorOf([&] { return ::futimens(to, times.data()); });
}

int copyAttributesByName(int folder, const char* name, const FileStatus& status)
{
    const int ownerCode = errorOf(
        [&] { return ::fchownat(folder, name, status.owner, status.group, AT_SYMLINK_NOFOLLOW); });
    if (ownerCode != 0 && ownerCode != EPERM)
        return ownerCode;
    if (!S_ISLNK(status.mode)) {
        const mode_t mode = modeAfterOwner(status, ownerCode);
        if (const int code = errorOf([&] { return ::fchmodat(folder, name, mode, 0); }))
            return code;
    }
    const std::array times = {status.accessed, status.modified};
    return errorOf([&] { return ::utimensat(folder, name, times.data(), AT_SYMLINK_NOFOLLOW); });
}

} // namespace brivane::posix
