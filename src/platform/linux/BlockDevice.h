#pragma once

#include "platform/linux/MountInfo.h"

#include <QByteArray>
#include <QString>

namespace brivane {

/// Where the kernel and udev tell about block devices. Tests point it elsewhere.
struct DeviceFolders {
    QByteArray sysDevBlock = "/sys/dev/block";
    QByteArray byUuid = "/dev/disk/by-uuid";
    QByteArray byLabel = "/dev/disk/by-label";
};

/// What is known of the device that a mount is on. Empty texts when nothing is.
struct DeviceFacts {
    bool isRemovable = false; ///< the medium, or the whole drive from its USB socket
    bool isInternal = true;
    QString uuid;
    QString label;
};

/// Reads small files of the kernel and of udev; never the device. Any thread.
[[nodiscard]] DeviceFacts deviceFacts(const Mount& mount, const DeviceFolders& folders);

} // namespace brivane
