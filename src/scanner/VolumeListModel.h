#pragma once

#include "scanner/DiskInfo.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace brivane {

/// The volumes as cards and rows show them. GUI thread.
class VolumeListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The view model brings it")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        MountPointRole = Qt::UserRole,
        NameRole,
        UsageTextRole, ///< "120 GB used of 494 GB"
        FreeTextRole,  ///< "374 GB free"
        UsedFractionRole,
        IconRole,
        IsBootRole,
    };

    /// `startupPath` is where the volume that the machine has started from is mounted.
    explicit VolumeListModel(QString startupPath, QObject* parent = nullptr);

    [[nodiscard]] const QList<DiskInfo>& volumes() const { return m_volumes; }
    void setVolumes(const QList<DiskInfo>& volumes);
    [[nodiscard]] int count() const { return static_cast<int>(m_volumes.size()); }

    /// Used space over total, 0 to 1. No fill when the total is unknown, and none when more is free
    /// than there is.
    [[nodiscard]] static double usedFraction(const DiskInfo& disk);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    const QString m_startupPath;
    QList<DiskInfo> m_volumes;
};

} // namespace brivane
