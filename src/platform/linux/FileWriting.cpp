#include "platform/FileWriting.h"

#include "platform/linux/FileContent.h"
#include "platform/linux/PathPlace.h"

#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <span>

namespace brivane {

using namespace posix;

namespace {

/// The content under a temporary name beside its place: made, written, synced.
int writeTemporary(const PathPlace& place, const char* temporary, QByteArrayView bytes, mode_t mode)
{
    FileDescriptor file;
    if (const int code = openAt(place.folder(), temporary, O_WRONLY | O_CREAT | O_EXCL, file, mode))
        return code;
    if (const int code = writeAll(file.get(), bytes))
        return code;
    return errorOf([&] { return ::fsync(file.get()); });
}

/// EEXIST for what is no reserve: removing or shortening it would take something from somebody.
int checkReserve(const FileStatus& status)
{
    const bool isOne = S_ISREG(status.mode) && status.owner == ::geteuid() && status.links == 1;
    return isOne ? 0 : EEXIST;
}

constexpr int reserveFlags = O_WRONLY | O_NONBLOCK | O_NOCTTY;

/// Opens the reserve at `place`; ENOENT when there is none.
int openReserve(const PathPlace& place, FileDescriptor& file, FileStatus& status)
{
    int code = place.readStatus(status);
    if (code == 0)
        code = checkReserve(status);
    if (code == 0)
        code = openAt(place.folder(), place.name(), reserveFlags, file);
    if (code == 0)
        code = readStatus(file.get(), status);
    return code == 0 ? checkReserve(status) : code;
}

/// Writes from `begin` to `end` what no file system can make smaller.
int fill(int file, std::uint64_t begin, std::uint64_t end)
{
    std::array<quint32, 16384> noise = {};
    const QByteArrayView bytes(std::as_bytes(std::span(noise)));
    while (begin < end) {
        QRandomGenerator::global()->fillRange(noise.data(), qsizetype(noise.size()));
        const auto size = std::min<std::uint64_t>(end - begin, sizeof noise);
        const QByteArrayView portion = bytes.first(static_cast<qsizetype>(size));
        if (const int code = writeAll(file, portion))
            return code;
        begin += size;
    }
    return 0;
}

/// Gives the file, which is `size` bytes long, room for at least `bytes`.
int allocate(int file, std::uint64_t size, std::uint64_t bytes)
{
    const int code = errorOf([&] { return ::fallocate(file, 0, 0, static_cast<off_t>(bytes)); });
    if (code != EOPNOTSUPP || size >= bytes)
        return code == EOPNOTSUPP ? 0 : code;
    if (::lseek(file, static_cast<off_t>(size), SEEK_SET) < 0)
        return errno;
    return fill(file, size, bytes);
}

/// Makes the open file, which `before` describes, a reserve of `bytes`; as long as it was on
/// failure.
int reserve(int file, const FileStatus& before, std::uint64_t bytes)
{
    const auto setSize = [file](std::uint64_t size) {
        return errorOf([&] { return ::ftruncate(file, static_cast<off_t>(size)); });
    };
    // Nothing is written to what is as it should be.
    struct stat facts = {};
    const bool isRoomy = ::fstat(file, &facts) == 0 && before.size >= bytes &&
                         static_cast<std::uint64_t>(facts.st_blocks) * 512 >= bytes;
    if (isRoomy && before.size / 2 <= bytes && (before.mode & 07777) == (S_IRUSR | S_IWUSR))
        return 0;
    int code = 0;
    if ((before.mode & 07777) != (S_IRUSR | S_IWUSR))
        code = errorOf([&] { return ::fchmod(file, S_IRUSR | S_IWUSR); });
    if (code == 0 && before.size > bytes && before.size - bytes > bytes)
        code = setSize(bytes);
    if (code == 0 && bytes > 0)
        code = allocate(file, before.size, bytes);
    if (code == 0)
        code = errorOf([&] { return ::fsync(file); });
    if (code != 0 && before.size < bytes)
        (void)setSize(before.size);
    return code;
}

} // namespace

Result<> writeFileAtomically(const QString& path, QByteArrayView bytes, mode_t mode)
{
    const auto place = PathPlace::find(path, FileOperation::Write);
    if (!place)
        return place.error();
    const QByteArray temporary = temporaryName();
    int code = writeTemporary(*place, temporary.constData(), bytes, mode);
    if (code == 0) {
        code = errorOf([&] {
            return ::renameat(place->folder(), temporary.constData(), place->folder(),
                              place->name());
        });
    }
    if (code != 0) {
        if (code != EEXIST)
            (void)removeAt(place->folder(), temporary.constData());
        return place->error(code, FileOperation::Write);
    }
    if (const int syncCode = syncFolder(place->folder()))
        return place->error(syncCode, FileOperation::Sync);
    return {};
}

Result<> makeDirectoryWithParents(const QString& path, mode_t mode, ParentLinks links)
{
    std::vector<QByteArray> components;
    FileDescriptor folder;
    int code = splitPath(path, components);
    if (code == 0)
        code = stepInto(AT_FDCWD, "/", links, folder);
    for (std::size_t i = 0; code == 0 && i < components.size(); ++i) {
        const char* name = components[i].constData();
        code = stepInto(folder.get(), name, links, folder);
        if (code != ENOENT)
            continue;
        code = errorOf([&] { return ::mkdirat(folder.get(), name, mode); });
        if (code == 0 || code == EEXIST)
            code = stepInto(folder.get(), name, links, folder);
    }
    if (code != 0)
        return FileError{code, path, FileOperation::Make};
    return {};
}

Result<> reserveSpace(const QString& path, std::uint64_t bytes)
{
    const auto place = PathPlace::find(path, FileOperation::Write);
    if (!place)
        return place.error();
    FileDescriptor file;
    FileStatus status;
    int code = openReserve(*place, file, status);
    const bool isNew = code == ENOENT;
    if (isNew) {
        code = openAt(place->folder(), place->name(), reserveFlags | O_CREAT | O_EXCL, file,
                      S_IRUSR | S_IWUSR);
        if (code == 0)
            code = readStatus(file.get(), status);
    }
    if (code == 0)
        code = reserve(file.get(), status, bytes);
    if (code == 0 && isNew)
        code = syncFolder(place->folder());
    if (code == 0)
        return {};
    if (isNew && file.isValid())
        (void)removeAt(place->folder(), place->name());
    return place->error(code, FileOperation::Write);
}

Result<> releaseSpace(const QString& path)
{
    const auto place = PathPlace::find(path, FileOperation::Remove);
    if (!place)
        return place.error();
    FileDescriptor file;
    FileStatus status;
    int code = openReserve(*place, file, status);
    if (code == ENOENT)
        return {};
    // Its room is free once the transaction that shortens it is on the disk. Where that takes room
    // itself and there is none, the removal has to do.
    if (code == 0 && errorOf([&] { return ::ftruncate(file.get(), 0); }) == 0)
        (void)errorOf([&] { return ::fsync(file.get()); });
    if (code == 0)
        code = removeAt(place->folder(), place->name());
    file.close();
    if (code == 0)
        code = syncFolder(place->folder());
    if (code != 0)
        return place->error(code, FileOperation::Remove);
    return {};
}

} // namespace brivane
