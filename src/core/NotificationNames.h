#pragma once

#include <QString>

// The names that travel through the NotificationCenter. None carries anything but itself.
namespace brivane::NotificationNames {

inline const QString scanStartupDisk = QStringLiteral("scanStartupDisk");
inline const QString rescan = QStringLiteral("rescan");
inline const QString navigateUp = QStringLiteral("navigateUp");
inline const QString navigateRoot = QStringLiteral("navigateRoot");

/// Free space may have changed: posted by whatever removes data.
inline const QString diskSpaceChanged = QStringLiteral("diskSpaceChanged");

} // namespace brivane::NotificationNames
