#pragma once

#include "scanner/DiskInfo.h"
#include "scanner/FileNode.h"

#include <QDateTime>

namespace brivane {

/// The outcome of a finished scan.
struct ScanResult {
    FileNodePtr rootNode;
    DiskInfo diskInfo;
    std::int64_t totalFilesScanned = 0;
    double scanDuration = 0;            ///< seconds
    std::uint64_t hiddenSpaceBytes = 0; ///< used on the volume, and not seen by the walk
    QDateTime scanDate;

    /// "850 ms", "12.3 s" or "2m 5s"
    [[nodiscard]] QString formattedDuration() const;
};

} // namespace brivane
