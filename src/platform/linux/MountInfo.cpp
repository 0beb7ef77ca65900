#include "platform/linux/MountInfo.h"

#include "platform/FileDescriptor.h"
#include "platform/LiesIn.h"

#include <QList>

#include <algorithm>
#include <array>
#include <cerrno>
#include <iterator>

#include <fcntl.h>
#include <unistd.h>

namespace brivane {

namespace {

/// Blank, tab, newline and backslash stand as three octal digits.
QByteArray unescaped(const QByteArray& field)
{
    QByteArray text;
    for (qsizetype at = 0; at < field.size(); ++at) {
        bool isOctal = false;
        const int code = field[at] == '\\' ? field.mid(at + 1, 3).toInt(&isOctal, 8) : 0;
        if (isOctal && at + 3 < field.size() && code <= 0xFF) {
            text += static_cast<char>(code);
            at += 3;
        } else {
            text += field[at];
        }
    }
    return text;
}

bool isOneOf(const QByteArray& type, std::initializer_list<const char*> types)
{
    return std::any_of(types.begin(), types.end(), [&](const char* one) { return type == one; });
}

} // namespace

bool Mount::isNetwork() const
{
    // Every FUSE file system but a mounted drive may be remote, and all of them may be stuck.
    return isOneOf(type, {"9p", "afs", "autofs", "ceph", "cifs", "coda", "davfs", "fuse",
                          "glusterfs", "lustre", "ncpfs", "nfs", "nfs4", "smb3", "smbfs"}) ||
           type.startsWith("fuse.");
}

bool Mount::isDisk() const
{
    if (path == "/")
        return true;
    static const QByteArray systemFolders[] = {
        "/boot",          "/dev", "/efi", "/proc", "/run", "/snap", "/sys", "/var/lib/containers",
        "/var/lib/docker"};
    const bool isInSystem =
        std::any_of(std::begin(systemFolders), std::end(systemFolders),
                    [&](const QByteArray& folder) { return liesIn(path, folder); });
    if (isInSystem && !liesIn(path, "/run/media"))
        return false;
    if (type == "autofs" || type == "fuse.portal" || type == "fuse.gvfsd-fuse" ||
        type == "squashfs" || type == "erofs")
        return false;
    if (isNetwork()) // of FUSE only those that name a machine, as in user@host:folder
        return !type.startsWith("fuse") || source.contains(':');
    if (root != "/" && type != "btrfs") // btrfs: a subvolume is mounted like a disk
        return false;
    return source.startsWith("/dev/") || type == "zfs";
}

std::vector<Mount> parseMountInfo(const QByteArray& text)
{
    std::vector<Mount> mounts;
    const QList<QByteArray> lines = text.split('\n');
    for (const QByteArray& line : lines) {
        // id parent major:minor root path options [tags ...] - type source options
        const QList<QByteArray> fields = line.split(' ');
        const qsizetype dash = fields.indexOf("-", 6);
        if (dash < 0 || fields.size() < dash + 3)
            continue;
        const QList<QByteArray> device = fields[2].split(':');
        if (device.size() != 2)
            continue;
        Mount mount;
        mount.major = device[0].toUInt();
        mount.minor = device[1].toUInt();
        mount.root = unescaped(fields[3]);
        mount.path = unescaped(fields[4]);
        mount.type = unescaped(fields[dash + 1]);
        mount.source = unescaped(fields[dash + 2]);
        std::erase_if(mounts, [&](const Mount& earlier) { return earlier.path == mount.path; });
        mounts.push_back(std::move(mount));
    }
    return mounts;
}

const Mount* mountOf(const std::vector<Mount>& mounts, const QByteArray& path)
{
    const Mount* best = nullptr;
    for (const Mount& mount : mounts) {
        if (liesIn(path, mount.path) && (best == nullptr || mount.path.size() > best->path.size()))
            best = &mount;
    }
    return best;
}

std::vector<Mount> readMountInfo(const QByteArray& path)
{
    const FileDescriptor file(::open(path.constData(), O_RDONLY | O_CLOEXEC));
    QByteArray text;
    std::array<char, 16384> buffer = {};
    for (;;) {
        const ssize_t got = ::read(file.get(), buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return parseMountInfo(text);
        text.append(buffer.data(), got);
    }
}

} // namespace brivane
