#include "platform/FileWriting.h"

#include "platform/linux/FileContent.h"
#include "platform/linux/PathPlace.h"

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

} // namespace brivane
