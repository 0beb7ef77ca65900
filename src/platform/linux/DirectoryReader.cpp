#include "platform/linux/DirectoryReader.h"

#include "platform/linux/SystemCall.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace brivane::walking {

namespace {

constexpr std::size_t listingSize = 1U << 16;

/// What getdents64 writes, as the kernel lays it out.
struct ListedEntry {
    std::uint64_t inode;
    std::int64_t offset;
    std::uint16_t length;
    std::uint8_t type;
    char name[1]; // as long as it is, with its NUL
};
constexpr std::size_t nameOffset = offsetof(ListedEntry, name);

bool isSelfOrParent(const char* name)
{
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

WalkKind kindOf(std::uint32_t mode)
{
    if (S_ISREG(mode))
        return WalkKind::File;
    if (S_ISDIR(mode))
        return WalkKind::Directory;
    if (S_ISLNK(mode))
        return WalkKind::SymbolicLink;
    return WalkKind::Other;
}

} // namespace

void readAttributes(int descriptor, const char* name, Record& record)
{
    struct statx status;
    // Cached attributes serve: a walk shows a moment of the past in any case.
    constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;
    const int ofItself = *name == '\0' ? AT_EMPTY_PATH : 0;
    if (::statx(descriptor, name, flags | ofItself, STATX_BASIC_STATS, &status) != 0) {
        record.kind = WalkKind::NoAttributes;
        record.error = errno;
        return;
    }
    record.kind = kindOf(status.stx_mode);
    record.isMountPoint =
        record.kind == WalkKind::Directory && (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    record.attributes = {
        .device = ::makedev(status.stx_dev_major, status.stx_dev_minor),
        .inode = status.stx_ino,
        .size = status.stx_size,
        .allocatedSize = status.stx_blocks * 512,
        .modifiedAt = posix::nanoseconds(status.stx_mtime),
        .changedAt = posix::nanoseconds(status.stx_ctime),
        .mode = status.stx_mode,
        .links = status.stx_nlink,
    };
}

DirectoryReader::DirectoryReader(WalkQueue& queue)
    : m_queue(queue)
    , m_listing(listingSize)
    , m_records(listingSize)
{
}

void DirectoryReader::read(Directory* directory)
{
    const int descriptor = m_queue.open(directory);
    const bool isListed = descriptor >= 0 && !isElsewhere(directory, descriptor);
    while (isListed && !m_queue.isStopped()) {
        const ssize_t listed = posix::uninterrupted(
            [&] { return ::getdents64(descriptor, m_listing.data(), m_listing.size()); });
        if (listed <= 0) {
            // A folder that has been removed meanwhile is at its end, as readdir has it. Any other
            // error is told after the entries that came before it.
            if (listed < 0 && errno != ENOENT)
                directory->error = errno;
            break;
        }
        for (ssize_t at = 0; at < listed && !m_queue.isStopped();) {
            const char* entry = m_listing.data() + at;
            std::uint16_t length = 0;
            std::memcpy(&length, entry + offsetof(ListedEntry, length), sizeof length);
            at += length;
            const char* name = entry + nameOffset;
            if (isSelfOrParent(name) || (!m_queue.options.includeHidden && name[0] == '.'))
                continue;
            append(directory, descriptor, name,
                   static_cast<std::uint8_t>(entry[offsetof(ListedEntry, type)]));
        }
        // A small directory ends with the next call; what it holds goes out in one piece with that.
        if (static_cast<std::size_t>(listed) > listingSize / 2)
            m_queue.publish(directory, takeBatch(), m_children, false);
    }
    m_queue.publish(directory, takeBatch(), m_children, true);
}

/// Nobody has asked yet whether another file system begins there, if attributes are not wanted.
bool DirectoryReader::isElsewhere(const Directory* directory, int descriptor) const
{
    if (m_queue.options.directoryAttributes || !directory->parent)
        return false;
    Record record;
    readAttributes(descriptor, "", record);
    return record.isMountPoint || record.attributes.device != m_queue.device;
}

void DirectoryReader::append(Directory* directory, int descriptor, const char* name,
                             std::uint8_t type)
{
    const std::size_t nameLength = std::strlen(name);
    const std::size_t stride = Record::strideFor(nameLength);
    if (m_used + stride > m_records.size())
        m_records.resize(m_records.size() * 2);
    auto* record = new (m_records.data() + m_used) Record;
    record->nameLength = static_cast<std::uint16_t>(nameLength);
    std::memcpy(record + 1, name, nameLength);
    m_used += stride;
    ++m_count;

    if (!m_queue.untouchable.empty() && isUntouchable(directory, record->name())) {
        record->kind = WalkKind::Directory;
        record->attributes.mode = S_IFDIR;
        record->isMountPoint = true;
        return;
    }
    if (isPlainDirectory(type, record->name())) {
        record->kind = WalkKind::Directory;
        record->attributes.mode = S_IFDIR;
        return enterLater(directory, *record);
    }
    if (isPlainOther(type, record->name())) {
        record->attributes.mode = static_cast<std::uint32_t>(DTTOIF(type));
        record->kind = kindOf(record->attributes.mode);
        return;
    }
    readAttributes(descriptor, name, *record);
    if (record->kind != WalkKind::Directory)
        return;
    if (record->attributes.device != m_queue.device)
        record->isMountPoint = true;
    if (!record->isMountPoint)
        enterLater(directory, *record);
}

/// Needs no attributes: those are not wanted, and none of the mount points is named like it. What
/// the table of mounts does not tell, it is asked for itself when it has been opened.
bool DirectoryReader::isPlainDirectory(std::uint8_t type, std::string_view name) const
{
    return type == DT_DIR && !m_queue.options.directoryAttributes &&
           !std::ranges::binary_search(m_queue.mountNames, name);
}

/// Is no directory and needs no attributes.
bool DirectoryReader::isPlainOther(std::uint8_t type, std::string_view name) const
{
    return type != DT_DIR && type != DT_UNKNOWN && m_queue.options.needsAttributes &&
           !m_queue.options.needsAttributes(name);
}

void DirectoryReader::enterLater(Directory* directory, Record& record)
{
    record.directory = WalkQueue::make(directory, record.name());
    m_children.push_back(record.directory);
}

bool DirectoryReader::isUntouchable(const Directory* directory, std::string_view name) const
{
    for (const std::string& path : m_queue.untouchable) {
        std::string_view rest = path;
        const auto endsWithComponent = [&rest](std::string_view component) {
            if (!rest.ends_with(component))
                return false;
            rest.remove_suffix(component.size());
            return true;
        };
        if (!endsWithComponent(name))
            continue;
        const Directory* at = directory;
        while (at && endsWithComponent("/") && at->parent && endsWithComponent(at->name))
            at = at->parent;
        // What is left has to be the start of the walk, written with or without a slash at its end.
        if (at && !at->parent) {
            std::string_view start = at->name;
            while (start.ends_with('/'))
                start.remove_suffix(1);
            if (rest == start)
                return true;
        }
    }
    return false;
}

Batch DirectoryReader::takeBatch()
{
    Batch batch;
    if (m_count > 0) {
        batch.bytes = std::make_unique_for_overwrite<std::byte[]>(m_used);
        std::memcpy(batch.bytes.get(), m_records.data(), m_used);
        batch.size = m_used;
        batch.count = m_count;
    }
    m_used = 0;
    m_count = 0;
    return batch;
}

} // namespace brivane::walking
