#include "platform/FileTrash.h"

#include "platform/PathText.h"
#include "platform/linux/FolderEntries.h"
#include "platform/linux/PathPlace.h"

#include <cstdlib>
#include <memory>

// GIO's headers have names that are Qt's keywords elsewhere; they stand alone here.
#include <gio/gio.h>

namespace brivane {

using namespace posix;

namespace {

struct Free {
    void operator()(char* text) const { std::free(text); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(GFile* file) const { g_object_unref(file); }
};

int codeOf(const GError& error)
{
    if (error.domain != G_IO_ERROR)
        return EIO;
    switch (error.code) {
    case G_IO_ERROR_NOT_FOUND:
        return ENOENT;
    case G_IO_ERROR_PERMISSION_DENIED:
        return EACCES;
    case G_IO_ERROR_NOT_SUPPORTED:
        return ENOTSUP;
    case G_IO_ERROR_NO_SPACE:
        return ENOSPC;
    default:
        return EIO;
    }
}

/// The top folder of the volume that `folder` lies on.
QByteArray topOfVolume(QByteArray folder)
{
    struct stat start = {};
    struct stat above = {};
    if (::stat(folder.constData(), &start) != 0)
        return {};
    while (folder.size() > 1) {
        QByteArray parent = folder.first(folder.lastIndexOf('/'));
        if (parent.isEmpty())
            parent = "/";
        if (::stat(parent.constData(), &above) != 0 || above.st_dev != start.st_dev)
            break;
        folder = parent;
    }
    return folder;
}

/// The folders into which something that lay in the folder `parent` may have been trashed.
std::vector<QByteArray> trashFolders(const QByteArray& parent)
{
    std::vector<QByteArray> folders = {QByteArray(g_get_user_data_dir()) + "/Trash/files"};
    const std::unique_ptr<char, Free> real(::realpath(parent.constData(), nullptr));
    if (!real)
        return folders;
    QByteArray top = topOfVolume(real.get());
    if (!top.endsWith('/'))
        top += '/';
    const QByteArray user = QByteArray::number(::getuid());
    folders.push_back(top + ".Trash/" + user + "/files");
    folders.push_back(top + ".Trash-" + user + "/files");
    return folders;
}

/// The name under which the object `identity` lies in `folder`; empty when it does not.
QByteArray nameIn(int folder, const QByteArray& formerName, const FileIdentity& identity)
{
    const auto isIt = [&](const char* name) {
        FileStatus status;
        return readStatus(folder, name, status) == 0 && status.identity.isSameObject(identity);
    };
    if (isIt(formerName.constData()))
        return formerName;
    FolderEntries entries(folder);
    while (const dirent64* entry = entries.next()) {
        if (entry->d_ino == identity.inode && isIt(entry->d_name))
            return entry->d_name;
    }
    return {};
}

/// Where the object `identity` lies in the Trash. GIO does not tell, and chooses another name when
/// the former one is taken.
QString findInTrash(const QByteArray& path, const PathPlace& place, const FileIdentity& identity)
{
    const QByteArray parent = path.first(path.lastIndexOf('/') + 1);
    for (const QByteArray& trash : trashFolders(parent)) {
        FileDescriptor folder;
        if (openFolder(AT_FDCWD, trash.constData(), folder) != 0)
            continue;
        const QByteArray name = nameIn(folder.get(), place.name(), identity);
        if (!name.isEmpty())
            return PathText::fromBytes(trash + '/' + name);
    }
    return {};
}

} // namespace

Result<QString> moveToTrash(const QString& path, const std::optional<FileIdentity>& expected)
{
    const auto place = PathPlace::find(path, FileOperation::Trash);
    if (!place)
        return place.error();
    FileStatus found;
    int code = place->readStatus(found);
    if (code == 0 && expected && !expected->matches(found.identity))
        code = ESTALE;
    if (code != 0)
        return place->error(code, FileOperation::Trash);

    QByteArray bytes = PathText::toBytes(path);
    while (bytes.endsWith('/'))
        bytes.chop(1);
    const std::unique_ptr<GFile, Free> file(g_file_new_for_path(bytes.constData()));
    GError* raised = nullptr;
    if (!g_file_trash(file.get(), nullptr, &raised)) {
        const std::unique_ptr<GError, Free> error(raised);
        return FileError{codeOf(*error), path, FileOperation::Trash,
                         QString::fromUtf8(error->message)};
    }
    return findInTrash(bytes, *place, found.identity);
}

} // namespace brivane
