#include "scanner/VolumeEnumerator.h"

#include "platform/PathText.h"
#include "platform/Volumes.h"

namespace brivane {

using namespace Qt::StringLiterals;

VolumeEnumerator::VolumeEnumerator(Volumes& volumes)
    : m_volumes(volumes)
{
}

QList<DiskInfo> VolumeEnumerator::enumerateVolumes() const
{
    QList<DiskInfo> disks;
    for (const QString& mountPoint : m_volumes.mountedVolumes()) {
        const auto isSame = [&](const DiskInfo& disk) { return disk.mountPoint == mountPoint; };
        if (std::ranges::any_of(disks, isSame))
            continue;
        if (std::optional<DiskInfo> disk = getVolumeInfo(mountPoint))
            disks.append(*std::move(disk));
    }
    return disks;
}

std::optional<DiskInfo> VolumeEnumerator::getVolumeInfo(const QString& path) const
{
    const std::optional<VolumeInfo> info = m_volumes.volumeInfo(path);
    if (!info)
        return {};
    DiskInfo disk;
    disk.name = info->name.isEmpty() ? PathText::lastComponent(path) : info->name;
    disk.mountPoint = path;
    disk.totalSize = info->totalCapacity;
    disk.freeSize = info->availableCapacity;
    disk.fileSystem = info->formatDescription.isEmpty() ? u"Unknown"_s : info->formatDescription;
    disk.isRemovable = info->isRemovable;
    disk.isInternal = info->isInternal;
    if (!info->uuid.isEmpty())
        disk.volumeUUID = info->uuid;
    return disk;
}

} // namespace brivane
