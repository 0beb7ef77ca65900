#include "scanner/VolumeListModel.h"

#include "core/ByteFormatter.h"
#include "platform/PathText.h"

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

std::uint64_t usedSize(const DiskInfo& disk)
{
    return disk.totalSize > disk.freeSize ? disk.totalSize - disk.freeSize : 0;
}

} // namespace

VolumeListModel::VolumeListModel(QString startupPath, QObject* parent)
    : QAbstractListModel(parent)
    , m_startupPath(std::move(startupPath))
{
}

void VolumeListModel::setVolumes(const QList<DiskInfo>& volumes)
{
    const auto isSamePlace = [](const DiskInfo& a, const DiskInfo& b) {
        return a.mountPoint == b.mountPoint;
    };
    if (std::ranges::equal(volumes, m_volumes, isSamePlace)) {
        // The same disks with other figures: cards stay where they are, with what is hovered on
        // them.
        m_volumes = volumes;
        if (!volumes.isEmpty())
            Q_EMIT dataChanged(index(0), index(count() - 1));
        return;
    }
    beginResetModel();
    m_volumes = volumes;
    endResetModel();
    Q_EMIT countChanged();
}

double VolumeListModel::usedFraction(const DiskInfo& disk)
{
    if (disk.totalSize == 0)
        return 0;
    return static_cast<double>(usedSize(disk)) / static_cast<double>(disk.totalSize);
}

int VolumeListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant VolumeListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const DiskInfo& disk = m_volumes[index.row()];
    const bool isBoot = disk.mountPoint == m_startupPath;
    switch (role) {
    case MountPointRole:
        return disk.mountPoint;
    case Qt::DisplayRole:
    case NameRole:
        return PathText::forDisplay(disk.name);
    case UsageTextRole:
        return u"%1 used of %2"_s.arg(ByteFormatter::format(usedSize(disk)),
                                      ByteFormatter::format(disk.totalSize));
    case FreeTextRole:
        return ByteFormatter::format(disk.freeSize) + u" free"_s;
    case UsedFractionRole:
        return usedFraction(disk);
    case IconRole:
        return isBoot || (disk.isInternal && !disk.isRemovable) ? u"internaldrive.fill"_s
                                                                : u"externaldrive.fill"_s;
    case IsBootRole:
        return isBoot;
    default:
        return {};
    }
}

QHash<int, QByteArray> VolumeListModel::roleNames() const
{
    return {
        {MountPointRole, "mountPoint"},
        {NameRole, "name"},
        {UsageTextRole, "usageText"},
        {FreeTextRole, "freeText"},
        {UsedFractionRole, "usedFraction"},
        {IconRole, "iconName"},
        {IsBootRole, "isBoot"},
    };
}

} // namespace brivane
