#pragma once

#include "platform/Volumes.h"
#include "platform/linux/BlockDevice.h"
#include "platform/linux/MountInfo.h"

#include <chrono>
#include <functional>
#include <memory>

namespace brivane {

/// What a volume says itself, and what it may never say when it is remote.
struct PathFacts {
    bool exists = false;
    QByteArray realPath;
    quint64 totalCapacity = 0;
    quint64 availableCapacity = 0;
};

/// The volumes as the kernel lists them. Asks a volume itself on a thread of its own, for which it
/// does not wait longer than `patience`. Where no thread can be started it is as one that does not
/// answer.
class LinuxVolumes final : public Volumes {
public:
    struct Sources {
        QByteArray mountInfo = "/proc/self/mountinfo";
        DeviceFolders devices = {};
        std::function<PathFacts(const QByteArray& path)> ask = askFileSystem;
        std::chrono::milliseconds patience{1000};
    };

    LinuxVolumes()
        : LinuxVolumes(Sources())
    {
    }
    explicit LinuxVolumes(Sources sources);

    [[nodiscard]] std::vector<QString> mountedVolumes() override;
    [[nodiscard]] std::optional<VolumeInfo> volumeInfo(const QString& path) override;
    [[nodiscard]] std::vector<MountPoint> mountPoints() override;

    /// The real question; does not return while the volume does not answer.
    static PathFacts askFileSystem(const QByteArray& path);

private:
    struct Questions;

    [[nodiscard]] std::vector<Mount> mounts() const;
    [[nodiscard]] std::optional<PathFacts> askPatiently(const QByteArray& path);

    const Sources m_sources;
    std::shared_ptr<Questions> m_questions;
};

} // namespace brivane
