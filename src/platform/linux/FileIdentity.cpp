#include "platform/FileIdentity.h"

#include "platform/linux/PathPlace.h"

namespace brivane {

Result<FileIdentity> FileIdentity::of(const QString& path, ParentLinks links)
{
    const auto place = posix::PathPlace::find(path, FileOperation::Inspect, links);
    if (!place)
        return place.error();
    posix::FileStatus status;
    if (const int code = place->readStatus(status))
        return place->error(code, FileOperation::Inspect);
    return status.identity;
}

Result<ObjectId> FileIdentity::folderOf(const QString& path)
{
    const auto place = posix::PathPlace::find(path, FileOperation::Inspect);
    if (!place)
        return place.error();
    posix::FileStatus status;
    if (const int code = posix::readStatus(place->folder(), status))
        return place->error(code, FileOperation::Inspect);
    return ObjectId{status.identity.device, status.identity.inode};
}

bool FileIdentity::isDirectory() const
{
    return type == S_IFDIR;
}

bool FileIdentity::isRegularFile() const
{
    return type == S_IFREG;
}

bool FileIdentity::isLink() const
{
    return type == S_IFLNK;
}

bool FileIdentity::matches(const FileIdentity& actual) const
{
    return isSameObject(actual) && (!size || size == actual.size) &&
           (!modifiedAt || modifiedAt == actual.modifiedAt) &&
           (!changedAt || changedAt == actual.changedAt) && (!type || type == actual.type) &&
           (!folder || !actual.folder || folder == actual.folder);
}

} // namespace brivane
