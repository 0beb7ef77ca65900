#include "platform/FolderListing.h"

#include "platform/PathText.h"
#include "platform/linux/FolderEntries.h"

namespace brivane {

Result<std::vector<ListedEntry>> listFolder(const QString& path, const std::stop_token& stop)
{
    const QByteArray bytes = PathText::toBytes(path);
    FileDescriptor folder(posix::uninterrupted([&] {
        return ::open(bytes.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK);
    }));
    posix::FileStatus status;
    const int code = !folder.isValid() ? errno : posix::readStatus(folder.get(), status);
    if (code != 0)
        return FileError{code, path, FileOperation::List};
    const ObjectId id{status.identity.device, status.identity.inode};

    std::vector<ListedEntry> listed;
    posix::FolderEntries entries(folder.get());
    while (const dirent64* entry = stop.stop_requested() ? nullptr : entries.next()) {
        if (posix::readStatus(folder.get(), entry->d_name, status) != 0)
            continue;
        listed.push_back({PathText::fromBytes(entry->d_name), status.identity});
        listed.back().identity.folder = id;
    }
    return listed;
}

} // namespace brivane
