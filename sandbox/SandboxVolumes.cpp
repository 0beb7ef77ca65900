#include "sandbox/SandboxVolumes.h"

#include "platform/LiesIn.h"
#include "platform/PathText.h"
#include "sandbox/SandboxMachine.h"

#include <algorithm>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

constexpr quint64 gigabyte = 1'000'000'000;

bool exists(const QString& path)
{
    struct stat unused {};
    return ::lstat(PathText::toBytes(path).constData(), &unused) == 0;
}

} // namespace

SandboxVolumes::SandboxVolumes(const SandboxMachine& machine)
    : m_root(machine.path(u"/"))
{
    mount(m_root, {.name = u"Macintosh HD"_s,
                   .totalCapacity = 494 * gigabyte,
                   .availableCapacity = 120 * gigabyte,
                   .isRemovable = false,
                   .isInternal = true,
                   .uuid = u"5A2D0F1C-7B64-4E0B-9C55-21D3A8E7F604"_s,
                   .formatDescription = u"APFS"_s});
}

VolumeInfo SandboxVolumes::externalDrive(const QString& name)
{
    return {.name = name,
            .totalCapacity = 2000 * gigabyte,
            .availableCapacity = 1300 * gigabyte,
            .isRemovable = true,
            .isInternal = false,
            .uuid = u"C3B1E9D0-4F27-4A8E-8D16-0E7A55B2F9C1"_s,
            .formatDescription = u"ExFAT"_s};
}

void SandboxVolumes::mount(const QString& path, const VolumeInfo& info, bool isNetwork)
{
    const QMutexLocker lock(&m_mutex);
    const auto there = std::find_if(m_mounted.begin(), m_mounted.end(),
                                    [&](const Mounted& mounted) { return mounted.path == path; });
    if (there != m_mounted.end())
        *there = {path, info, isNetwork};
    else
        m_mounted.push_back({path, info, isNetwork});
}

void SandboxVolumes::unmount(const QString& path)
{
    const QMutexLocker lock(&m_mutex);
    std::erase_if(m_mounted, [&](const Mounted& mounted) { return mounted.path == path; });
}

std::vector<QString> SandboxVolumes::mountedVolumes()
{
    const QMutexLocker lock(&m_mutex);
    std::vector<QString> paths;
    for (const Mounted& mounted : m_mounted)
        paths.push_back(mounted.path);
    return paths;
}

std::optional<VolumeInfo> SandboxVolumes::volumeInfo(const QString& path)
{
    const QMutexLocker lock(&m_mutex);
    if (!exists(path))
        return std::nullopt;
    const Mounted* innermost = nullptr;
    for (const Mounted& mounted : m_mounted) {
        if (liesIn(path, mounted.path) &&
            (innermost == nullptr || mounted.path.size() > innermost->path.size()))
            innermost = &mounted;
    }
    // The home and what is needed beside it lie on the startup disk, though not in its folder.
    if (innermost == nullptr && !m_mounted.empty())
        innermost = &m_mounted.front();
    return innermost != nullptr ? std::optional(innermost->info) : std::nullopt;
}

std::vector<MountPoint> SandboxVolumes::mountPoints()
{
    const QMutexLocker lock(&m_mutex);
    std::vector<MountPoint> points;
    for (const Mounted& mounted : m_mounted)
        points.push_back({PathText::toBytes(mounted.path), mounted.isNetwork});
    return points;
}

} // namespace brivane
