#include "platform/linux/BlockDevice.h"

#include "platform/FileDescriptor.h"
#include "platform/PathText.h"

#include <array>
#include <cstdlib>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace brivane {

namespace {

constexpr int deepestStack = 8; // of encryption on volume management on RAID on ...

QByteArray realPath(const QByteArray& path)
{
    char* real = ::realpath(path.constData(), nullptr);
    const QByteArray result(real);
    std::free(real);
    return result;
}

QByteArray lastComponent(const QByteArray& path)
{
    return path.sliced(path.lastIndexOf('/') + 1);
}

QByteArray contentOf(const QByteArray& file)
{
    const FileDescriptor descriptor(::open(file.constData(), O_RDONLY | O_CLOEXEC));
    std::array<char, 64> buffer = {};
    const ssize_t got =
        descriptor.isValid() ? ::read(descriptor.get(), buffer.data(), buffer.size()) : 0;
    return QByteArray(buffer.data(), std::max<ssize_t>(got, 0)).trimmed();
}

std::vector<QByteArray> namesIn(const QByteArray& folder)
{
    std::vector<QByteArray> names;
    DIR* directory = ::opendir(folder.constData());
    if (directory == nullptr)
        return names;
    while (const dirent* entry = ::readdir(directory)) {
        if (entry->d_name[0] != '.')
            names.emplace_back(entry->d_name);
    }
    ::closedir(directory);
    return names;
}

/// The kernel's folder of the physical disk behind a mount; empty for none.
QByteArray diskFolder(const Mount& mount, const DeviceFolders& folders)
{
    unsigned major = mount.major;
    unsigned minor = mount.minor;
    struct stat node = {};
    // Some file systems over several devices have a number of their own; their source is one of
    // them.
    if (major == 0 && ::stat(mount.source.constData(), &node) == 0 && S_ISBLK(node.st_mode)) {
        major = ::major(node.st_rdev);
        minor = ::minor(node.st_rdev);
    }
    QByteArray folder = realPath(folders.sysDevBlock + '/' + QByteArray::number(major) + ':' +
                                 QByteArray::number(minor));
    for (int level = 0; level < deepestStack && !folder.isEmpty(); ++level) {
        const std::vector<QByteArray> below = namesIn(folder + "/slaves");
        if (below.empty())
            break;
        folder = realPath(folder + "/slaves/" + below.front());
    }
    if (::access((folder + "/partition").constData(), F_OK) == 0)
        folder.truncate(folder.lastIndexOf('/'));
    return folder;
}

/// The name under which udev's `folder` links to the device named `device`. Bytes that are special
/// stand there as \xNN.
QString nameFor(const QByteArray& folder, const QByteArray& device)
{
    for (const QByteArray& name : namesIn(folder)) {
        std::array<char, 4096> target = {};
        const ssize_t length =
            ::readlink((folder + '/' + name).constData(), target.data(), target.size());
        if (length <= 0 || lastComponent(QByteArray(target.data(), length)) != device)
            continue;
        QByteArray text;
        for (qsizetype at = 0; at < name.size(); ++at) {
            bool isHex = false;
            const int code =
                name.sliced(at).startsWith("\\x") ? name.mid(at + 2, 2).toInt(&isHex, 16) : 0;
            text += isHex ? static_cast<char>(code) : name[at];
            at += isHex ? 3 : 0;
        }
        return PathText::fromBytes(text);
    }
    return {};
}

} // namespace

DeviceFacts deviceFacts(const Mount& mount, const DeviceFolders& folders)
{
    DeviceFacts facts;
    if (mount.isNetwork()) {
        facts.isInternal = false;
        return facts;
    }
    const QByteArray disk = diskFolder(mount, folders);
    const bool isImage = lastComponent(disk).startsWith("loop");
    facts.isRemovable = contentOf(disk + "/removable") == "1" || disk.contains("/usb") ||
                        contentOf(disk + "/device/type") == "SD";
    facts.isInternal = !facts.isRemovable && !isImage;
    if (!mount.source.startsWith("/dev/"))
        return facts;
    const QByteArray real = realPath(mount.source);
    const QByteArray device = lastComponent(real.isEmpty() ? mount.source : real);
    facts.uuid = nameFor(folders.byUuid, device);
    facts.label = nameFor(folders.byLabel, device);
    return facts;
}

} // namespace brivane
