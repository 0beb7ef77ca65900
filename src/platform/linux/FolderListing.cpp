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

} // namespace

Result<FolderListing> listFolder(const QString& path, std::size_t limit)
{
    const auto place = PathPlace::find(path, FileOperation::List);
    if (!place)
        return place.error();
    const FileDescriptor folder(uninterrupted([&] {
        return ::openat(place->folder(), place->name(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    }));
    if (!folder.isValid())
        return place->error(errno, FileOperation::List);
    FileStatus status;
    if (const int code = readStatus(folder.get(), status))
        return place->error(code, FileOperation::Inspect);
    FolderListing listing{.folder = {status.identity.device, status.identity.inode}, .items = {}};
    FolderEntries entries(folder.get());
    while (const dirent64* entry = entries.next()) {
        if (listing.items.size() == limit)
            return place->error(EFBIG, FileOperation::List);
        listing.items.push_back({PathText::fromBytes(entry->d_name), kindOf(folder.get(), *entry)});
    }
    if (entries.error() != 0)
        return place->error(entries.error(), FileOperation::List);
    return listing;
}

} // namespace brivane
