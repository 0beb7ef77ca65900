#pragma once

#include "platform/Worker.h"
#include "scanner/DiskInfo.h"
#include "scanner/VolumeEnumerator.h"
#include "scanner/VolumeListModel.h"

#include <QCoroTask>
#include <QFuture>
#include <QObject>

#include <optional>

namespace brivane {

struct Host;

/// The volumes that can be scanned, and which of them is. They are listed on a worker: a volume
/// that does not answer holds up nobody. GUI thread.
class VolumeSelection : public QObject {
    Q_OBJECT

public:
    /// `host` has to outlive this.
    explicit VolumeSelection(Host& host);
    ~VolumeSelection() override;

    /// Lists them again. The selection stays as it was; an empty one becomes the first volume.
    void refresh();
    /// Selects the volume at `mountPoint`; nothing if it is not listed.
    void select(const QString& mountPoint);
    /// Selects one that need not be listed.
    void select(const std::optional<DiskInfo>& volume);
    /// The volume that `path` lies on; none where that cannot be told.
    [[nodiscard]] QFuture<std::optional<DiskInfo>> infoFor(const QString& path);

    [[nodiscard]] VolumeListModel* model() { return &m_model; }
    [[nodiscard]] const VolumeListModel* model() const { return &m_model; }
    [[nodiscard]] const std::optional<DiskInfo>& selected() const { return m_selected; }
    [[nodiscard]] QString selectedMountPoint() const;

Q_SIGNALS:
    void selectedChanged();

private:
    QCoro::Task<> list();

    const VolumeEnumerator m_enumerator;
    VolumeListModel m_model;
    std::optional<DiskInfo> m_selected;
    unsigned m_request = 0; ///< only the answer to the last question counts
    Worker m_worker{QStringLiteral("volumes")};
};

} // namespace brivane
