#include "platform/FolderListing.h"

#include "platform/PathText.h"
#include "platform/linux/FolderEntries.h"
#include "platform/linux/PathPlace.h"

namespace brivane {

using namespace posix;

namespace {

using Kind = FolderListing::Item::Kind;

Kind kindOf(int folder, const dirent64& entry)
{
    if (entry.d_type == DT_REG)
        return Kind::File;
    if (entry.d_type == DT_DIR)
        return Kind::Folder;
    struct stat status = {};
    if ((entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) ||
        ::fstatat(folder, entry.d_name, &status, AT_NO_AUTOMOUNT) != 0)
        return Kind::Other;
    if (S_ISREG(status.st_mode))
        return Kind::File;
    return S_ISDIR(status.st_mode) ? Kind::Folder : Kind::Other;
}

struct OpenFolder {
    FileDescriptor descriptor;
    ObjectId id;
};

Result<OpenFolder> open(const QString& path)
{
    const auto place = PathPlace::find(path, FileOperation::List);
    if (!place)
        return place.error();
    FileDescriptor folder(uninterrupted([&] {
        return ::openat(place->folder(), place->name(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    }));
    if (!folder.isValid())
        return place->error(errno, FileOperation::List);
    FileStatus status;
    if (const int code = readStatus(folder.get(), status))
        return place->error(code, FileOperation::Inspect);
    const ObjectId id{status.identity.device, status.identity.inode};
    return OpenFolder{std::move(folder), id};
}

} // namespace

Result<FolderListing> listFolder(const QString& path, std::size_t limit)
{
    const Result<OpenFolder> folder = open(path);
    if (!folder)
        return folder.error();
    const int descriptor = folder->descriptor.get();
    FolderListing listing{.folder = folder->id, .items = {}};
    FolderEntries entries(descriptor);
    while (const dirent64* entry = entries.next()) {
        if (listing.items.size() == limit)
            return FileError{EFBIG, path, FileOperation::List};
        listing.items.push_back({PathText::fromBytes(entry->d_name), kindOf(descriptor, *entry)});
    }
    if (entries.error() != 0)
        return FileError{entries.error(), path, FileOperation::List};
    return listing;
}

Result<std::vector<InspectedEntry>> inspectFolder(const QString& path, const std::stop_token& stop)
{
    const Result<OpenFolder> folder = open(path);
    if (!folder)
        return folder.error();
    const int descriptor = folder->descriptor.get();
    std::vector<InspectedEntry> inspected;
    FolderEntries entries(descriptor);
    while (const dirent64* entry = stop.stop_requested() ? nullptr : entries.next()) {
        FileStatus status;
        if (readStatus(descriptor, entry->d_name, status) != 0)
            continue;
        inspected.push_back({PathText::fromBytes(entry->d_name), status.identity});
        inspected.back().identity.folder = folder->id;
    }
    return inspected;
}

} // namespace brivane
