#pragma once

#include <QByteArray>

#include <vector>

namespace brivane {

/// One line of /proc/self/mountinfo.
struct Mount {
    unsigned major = 0; ///< of the device; 0 for file systems that have none of their own
    unsigned minor = 0;
    QByteArray root; ///< which folder of the file system is mounted: "/", unless it is a part of it
    QByteArray path; ///< where
    QByteArray type;
    QByteArray source;

    /// Whether its answers come over a network or from another program, or never.
    [[nodiscard]] bool isNetwork() const;
    /// Whether a person would call it a disk: no pseudo file system, no part of the system's own.
    [[nodiscard]] bool isDisk() const;
};

/// The mounts in `text`, in order. Malformed lines are passed over, and so is what a later mount at
/// the same place hides. Pure.
[[nodiscard]] std::vector<Mount> parseMountInfo(const QByteArray& text);

/// The mounts that the kernel lists in the file `path`; none when it cannot be read. Any thread.
[[nodiscard]] std::vector<Mount> readMountInfo(const QByteArray& path = "/proc/self/mountinfo");

/// The mount that holds `path`: the one with the longest path; null for none.
[[nodiscard]] const Mount* mountOf(const std::vector<Mount>& mounts, const QByteArray& path);

} // namespace brivane
