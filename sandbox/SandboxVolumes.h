#pragma once

#include "platform/Volumes.h"

#include <QMutex>

namespace brivane {

class SandboxMachine;

/// The volumes of a sandbox machine: at first the startup disk alone, "Macintosh HD" with 494 GB,
/// 120 GB of them free, and then what the test makes of it. Any thread. The machine is needed by
/// the constructor only.
class SandboxVolumes final : public Volumes {
public:
    explicit SandboxVolumes(const SandboxMachine& machine);

    /// A volume is mounted on the folder `path` (a real path, which has to be there), or, where one
    /// is already, has these facts from now on.
    void mount(const QString& path, const VolumeInfo& info, bool isNetwork = false);
    void unmount(const QString& path);

    /// An external drive with 2 TB, 1.3 TB of them free.
    static VolumeInfo externalDrive(const QString& name);

    [[nodiscard]] QString startupDisk() const { return m_root; }

    [[nodiscard]] std::vector<QString> mountedVolumes() override;
    [[nodiscard]] std::optional<VolumeInfo> volumeInfo(const QString& path) override;
    [[nodiscard]] std::vector<MountPoint> mountPoints() override;

private:
    struct Mounted {
        QString path;
        VolumeInfo info;
        bool isNetwork;
    };

    QString m_root;
    QMutex m_mutex;
    std::vector<Mounted> m_mounted; ///< in the order of mounting, the startup disk first; guarded
};

} // namespace brivane
