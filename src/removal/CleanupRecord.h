#pragma once

#include <QDateTime>
#include <QMap>
#include <QString>

namespace brivane {

/// One clean-up. A plain value.
struct CleanupRecord {
    QDateTime date; ///< when it finished
    qint64 filesRemoved = 0;
    quint64 bytesFreed = 0;
    QMap<QString, quint64> categories = {};
};

} // namespace brivane
