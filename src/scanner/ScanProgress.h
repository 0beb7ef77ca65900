#pragma once

#include "scanner/FileNode.h"

#include <QDateTime>
#include <QString>

namespace brivane {

/// How far a walk has come.
struct ScanProgress {
    std::int64_t filesScanned =
        0; ///< entries seen; a directory counts before and after its content
    QString currentPath;
    std::uint64_t bytesProcessed = 0; ///< in regular files
    bool isComplete = false;
    QDateTime startTime = QDateTime::currentDateTimeUtc();
    FileNodePtr partialTree; ///< the live root, if there is one yet

    /// "1,234,567"
    [[nodiscard]] QString formattedFilesScanned() const;
};

} // namespace brivane
