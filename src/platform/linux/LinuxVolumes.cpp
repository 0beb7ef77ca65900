#include "platform/linux/LinuxVolumes.h"

#include "platform/FileDescriptor.h"
#include "platform/PathText.h"

#include <array>
#include <cerrno>
#include <condition_variable>
#include <cstdlib>
#include <map>
#include <mutex>
#include <set>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <glib.h>
#include <sys/statvfs.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

struct Format {
    const char* type;
    const char* description;
};

// What is not listed is described by its type.
constexpr Format formats[] = {
    {"apfs", "APFS"},
    {"btrfs", "Btrfs"},
    {"cifs", "SMB"},
    {"exfat", "ExFAT"},
    {"fuse.sshfs", "SSHFS"},
    {"fuseblk", "NTFS"},
    {"hfs", "Mac OS Standard"},
    {"hfsplus", "Mac OS Extended"},
    {"iso9660", "ISO 9660"},
    {"msdos", "MS-DOS (FAT)"},
    {"nfs", "NFS"},
    {"nfs4", "NFS"},
    {"ntfs", "NTFS"},
    {"ntfs3", "NTFS"},
    {"smb3", "SMB"},
    {"udf", "UDF"},
    {"vfat", "MS-DOS (FAT)"},
    {"xfs", "XFS"},
    {"zfs", "ZFS"},
};

QString descriptionOf(const QByteArray& type)
{
    for (const Format& format : formats) {
        if (type == format.type)
            return QString::fromLatin1(format.description);
    }
    return QString::fromUtf8(type);
}

QString nameOf(const Mount& mount, const QString& label)
{
    if (!label.isEmpty())
        return label;
    if (mount.path != "/")
        return PathText::lastComponent(PathText::fromBytes(mount.path));
    char* system = ::g_get_os_info(G_OS_INFO_KEY_NAME);
    const QString name = QString::fromUtf8(system);
    ::g_free(system);
    return name.isEmpty() ? u"Computer"_s : name;
}

} // namespace

/// Questions under way. Outlives its LinuxVolumes with whoever still waits for an answer.
struct LinuxVolumes::Questions {
    struct Question {
        std::chrono::steady_clock::time_point askedAt;
        std::optional<PathFacts> answer; ///< guarded by mutex
    };

    std::mutex mutex;
    std::condition_variable answered;
    std::map<QByteArray, std::shared_ptr<Question>> open; ///< guarded by mutex: not answered yet
};

std::unique_ptr<Volumes> Volumes::ofThisMachine()
{
    return std::make_unique<LinuxVolumes>();
}

LinuxVolumes::LinuxVolumes(Sources sources)
    : m_sources(std::move(sources))
    , m_questions(std::make_shared<Questions>())
{
}

std::vector<Mount> LinuxVolumes::mounts() const
{
    std::vector<Mount> all = readMountInfo(m_sources.mountInfo);
    // In a changed root the kernel does not list what "/" lies on; it is there all the same.
    if (std::ranges::find(all, "/", &Mount::path) == all.end()) {
        Mount root;
        root.root = root.path = "/";
        all.insert(all.begin(), root);
    }
    return all;
}

std::vector<QString> LinuxVolumes::mountedVolumes()
{
    const std::vector<Mount> all = mounts();
    std::vector<QString> volumes;
    std::set<QByteArray> devices;
    const auto add = [&](const Mount& mount) {
        // The device number tells drives apart, also shares of one server.
        const QByteArray device =
            QByteArray::number(mount.major) + ':' + QByteArray::number(mount.minor);
        if (devices.insert(device).second)
            volumes.push_back(PathText::fromBytes(mount.path));
    };
    for (const Mount& mount : all) {
        if (mount.path == "/")
            add(mount);
    }
    for (const Mount& mount : all) {
        if (mount.isDisk())
            add(mount);
    }
    return volumes;
}

std::vector<MountPoint> LinuxVolumes::mountPoints()
{
    std::vector<MountPoint> points;
    for (const Mount& mount : mounts())
        points.push_back({mount.path, mount.isNetwork()});
    return points;
}

std::optional<VolumeInfo> LinuxVolumes::volumeInfo(const QString& path)
{
    const QByteArray bytes = PathText::toBytes(path);
    const std::optional<PathFacts> answer = askPatiently(bytes);
    if (answer && !answer->exists)
        return {};
    const std::vector<Mount> all = mounts();
    const Mount* mount = mountOf(all, answer ? answer->realPath : bytes);
    if (mount == nullptr)
        return {};
    const DeviceFacts device = deviceFacts(*mount, m_sources.devices);
    VolumeInfo info;
    info.name = nameOf(*mount, device.label);
    info.totalCapacity = answer ? answer->totalCapacity : 0;
    info.availableCapacity = answer ? answer->availableCapacity : 0;
    info.isRemovable = device.isRemovable;
    info.isInternal = device.isInternal;
    info.uuid = device.uuid;
    info.formatDescription = descriptionOf(mount->type);
    return info;
}

std::optional<PathFacts> LinuxVolumes::askPatiently(const QByteArray& path)
{
    std::unique_lock lock(m_questions->mutex);
    // A volume that has not answered yet is not asked again: each question holds a thread.
    std::shared_ptr<Questions::Question>& open = m_questions->open[path];
    if (!open) {
        open = std::make_shared<Questions::Question>();
        open->askedAt = std::chrono::steady_clock::now();
        try {
            std::thread([questions = m_questions, question = open, path, ask = m_sources.ask] {
                const PathFacts facts = ask(path);
                const std::lock_guard answering(questions->mutex);
                question->answer = facts;
                questions->open.erase(path);
                questions->answered.notify_all();
            }).detach();
        } catch (const std::system_error&) {
            m_questions->open.erase(path);
            return {};
        }
    }
    const std::shared_ptr<Questions::Question> question = open;
    m_questions->answered.wait_until(lock, question->askedAt + m_sources.patience,
                                     [&] { return question->answer.has_value(); });
    return question->answer;
}

PathFacts LinuxVolumes::askFileSystem(const QByteArray& path)
{
    PathFacts facts;
    char* real = ::realpath(path.constData(), nullptr);
    if (real == nullptr)
        return facts;
    facts.exists = true;
    facts.realPath = real;
    std::free(real);
    struct statvfs numbers = {};
    if (::statvfs(path.constData(), &numbers) == 0) {
        facts.totalCapacity = numbers.f_blocks * numbers.f_frsize;
        facts.availableCapacity = numbers.f_bavail * numbers.f_frsize;
    }
    return facts;
}

} // namespace brivane
