#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace brivane {

/// What is known of a mounted volume. An empty text is an absent one.
struct VolumeInfo {
    QString name;
    quint64 totalCapacity = 0;     ///< bytes; 0 when it cannot be told
    quint64 availableCapacity = 0; ///< bytes that this user may still fill
    bool isRemovable = false;
    bool isInternal = true;
    QString uuid;
    QString formatDescription; ///< for the eye: "ext4", "MS-DOS (FAT)"
};

/// A place where some file system is mounted.
struct MountPoint {
    QByteArray path;
    bool isNetwork = false; ///< the answer may come from elsewhere, or never
};

/// The mounted volumes. Every call looks afresh, may come from any thread and never waits longer
/// than about a second for a volume that does not answer.
class Volumes {
public:
    Volumes() = default;
    Volumes(const Volumes&) = delete;
    Volumes& operator=(const Volumes&) = delete;
    virtual ~Volumes() = default;

    static std::unique_ptr<Volumes> ofThisMachine();

    /// Where the volumes are that a person would call disks: "/" first, then drives and network
    /// shares in the order of mounting. No pseudo file systems, no bind mounts, no device twice.
    [[nodiscard]] virtual std::vector<QString> mountedVolumes() = 0;

    /// The facts of the volume on which `path` lies; none when there is no such path. A volume that
    /// does not answer has capacities of 0.
    [[nodiscard]] virtual std::optional<VolumeInfo> volumeInfo(const QString& path) = 0;

    /// All mounts, pseudo file systems included.
    [[nodiscard]] virtual std::vector<MountPoint> mountPoints() = 0;
};

} // namespace brivane
