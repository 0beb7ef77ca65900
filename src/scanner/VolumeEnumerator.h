#pragma once

#include "scanner/DiskInfo.h"

#include <QList>

namespace brivane {

class Volumes;

/// Lists the mounted volumes as the screens show them. Any thread; looks afresh at each call.
class VolumeEnumerator {
public:
    explicit VolumeEnumerator(Volumes& volumes);

    /// The startup volume first, then the others; each mount point once. A volume that tells no
    /// capacities is there with sizes of 0.
    [[nodiscard]] QList<DiskInfo> enumerateVolumes() const;
    /// The facts of the volume on which `path` lies, with `path` as its mount point; none when
    /// there is no such path.
    [[nodiscard]] std::optional<DiskInfo> getVolumeInfo(const QString& path) const;

private:
    Volumes& m_volumes;
};

} // namespace brivane
