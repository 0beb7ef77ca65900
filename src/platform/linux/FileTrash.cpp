#include "platform/FileTrash.h"

#include "platform/PathText.h"
#include "platform/linux/FolderEntries.h"
#include "platform/linux/LentAccess.h"
#include "platform/linux/PathPlace.h"

#include <cstdlib>
#include <functional>
#include <memory>

#include <time.h>

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

/// The name of what came into `folder` last, if that was at `start` or later, in nanoseconds since
/// 1970; empty otherwise. A rename sets the time that this goes by.
QByteArray newestName(int folder, std::int64_t start)
{
    QByteArray newest;
    FolderEntries entries(folder);
    while (const dirent64* entry = entries.next()) {
        FileStatus status;
        if (readStatus(folder, entry->d_name, status) == 0 && status.identity.changedAt >= start) {
            newest = entry->d_name;
            start = *status.identity.changedAt;
        }
    }
    return newest;
}

/// Where what was trashed from `path` lies, by the name that `choose` gives for one of the folders
/// in question; empty when it gives none.
QString findInTrash(const QByteArray& path, const std::function<QByteArray(int folder)>& choose)
{
    const QByteArray parent = path.first(path.lastIndexOf('/') + 1);
    for (const QByteArray& trash : trashFolders(parent)) {
        FileDescriptor folder;
        if (openFolder(AT_FDCWD, trash.constData(), folder) != 0)
            continue;
        const QByteArray name = choose(folder.get());
        if (!name.isEmpty())
            return PathText::fromBytes(trash + '/' + name);
    }
    return {};
}

/// The time of the clock that file systems set times by.
std::int64_t timeOfFiles()
{
    timespec now = {};
    (void)::clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return now.tv_sec * std::int64_t{1'000'000'000} + now.tv_nsec;
}

/// Has GIO trash what `path` leads to. EACCES when that was refused; `error` says more.
int trash(const QByteArray& path, FileError& error)
{
    const std::unique_ptr<GFile, Free> file(g_file_new_for_path(path.constData()));
    GError* raised = nullptr;
    if (g_file_trash(file.get(), nullptr, &raised))
        return 0;
    const std::unique_ptr<GError, Free> reason(raised);
    error.code = codeOf(*reason);
    error.detail = QString::fromUtf8(reason->message);
    return error.code;
}

} // namespace

Result<QString> moveToTrash(const QString& path, const std::optional<FileIdentity>& expected)
{
    const auto place = PathPlace::find(path, FileOperation::Trash);
    if (!place)
        return place.error();
    FileStatus found;
    QByteArray bytes = PathText::toBytes(path);
    while (bytes.endsWith('/'))
        bytes.chop(1);
    const std::int64_t start = timeOfFiles();
    int code = place->readStatus(found);
    if (code == 0 && expected && !expected->matches(found.identity))
        code = ESTALE;
    if (code != 0)
        return place->error(code, FileOperation::Trash);
    FileError error = place->error(0, FileOperation::Trash);
    if (moveLending(*place, found, [&] { return trash(bytes, error); }) != 0)
        return error;

    // GIO does not tell where it is, and chooses another name when the former one is taken.
    const QString landed = findInTrash(
        bytes, [&](int folder) { return nameIn(folder, place->name(), found.identity); });
    if (!landed.isEmpty())
        return landed;
    // GIO went by the path, which may have led it to something else by then.
    const QString taken = findInTrash(bytes, [&](int folder) { return newestName(folder, start); });
    FileStatus now;
    const bool stands = place->readStatus(now) == 0 && now.identity.isSameObject(found.identity);
    if (taken.isEmpty() && !stands)
        return QString();
    return FileError{
        ESTALE, taken.isEmpty() ? path : taken, FileOperation::Trash,
        QStringLiteral("Another item had taken its place, and was moved to the Trash")};
}

} // namespace brivane
