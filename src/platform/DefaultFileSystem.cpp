#include "platform/DefaultFileSystem.h"

#include "platform/FileTrash.h"
#include "platform/FileWriting.h"
#include "platform/linux/TrashRecord.h"

namespace brivane {

Result<QString> DefaultFileSystem::trashItem(const QString& path,
                                             const std::optional<FileIdentity>& expected)
{
    return moveToTrash(path, expected);
}

RemovalReport DefaultFileSystem::removeItem(const QString& path,
                                            const std::optional<FileIdentity>& expected)
{
    const auto record = posix::TrashRecord::of(path);
    RemovalReport report = removeTree(path, expected);
    if (record && report.isComplete())
        record->removeWithoutThing();
    return report;
}

Result<Moved> DefaultFileSystem::moveItem(const QString& from, const QString& to,
                                          const MoveOptions& options)
{
    const auto record = posix::TrashRecord::of(from);
    Result<Moved> moved = moveWithoutReplacing(from, to, options);
    if (record && moved)
        record->removeWithoutThing();
    return moved;
}

Result<> DefaultFileSystem::makeDirectory(const QString& path, mode_t mode, ParentLinks links)
{
    return makeDirectoryWithParents(path, mode, links);
}

Result<> DefaultFileSystem::writeAtomically(const QString& path, QByteArrayView bytes, mode_t mode)
{
    return writeFileAtomically(path, bytes, mode);
}

Result<> DefaultFileSystem::reserveSpace(const QString& path, std::uint64_t bytes)
{
    return brivane::reserveSpace(path, bytes);
}

Result<> DefaultFileSystem::releaseSpace(const QString& path)
{
    return brivane::releaseSpace(path);
}

} // namespace brivane
