#pragma once

#include <QHashFunctions>
#include <QString>
#include <QUuid>

#include <cstdint>
#include <optional>

namespace brivane {

/// A mounted volume, as it was when it was listed.
struct DiskInfo {
    QUuid id = QUuid::createUuid(); ///< fresh for each listing
    QString name;
    QString mountPoint;
    std::uint64_t totalSize = 0; ///< bytes
    std::uint64_t freeSize = 0;  ///< bytes
    QString fileSystem;          ///< for the eye
    bool isRemovable = false;
    bool isInternal = true;
    std::optional<QString> volumeUUID;

    bool operator==(const DiskInfo&) const = default;
};

inline std::size_t qHash(const DiskInfo& disk, std::size_t seed = 0)
{
    return qHashMulti(seed, disk.id, disk.name, disk.mountPoint, disk.totalSize, disk.freeSize,
                      disk.fileSystem, disk.isRemovable, disk.isInternal,
                      disk.volumeUUID.value_or(QString()));
}

} // namespace brivane
