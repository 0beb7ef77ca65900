#pragma once

#include "platform/Locations.h"

#include <QAbstractListModel>
#include <QHash>
#include <QString>
#include <QStringList>

namespace brivane {

/// What a clean-up left where it was, and why. Does not change. GUI thread.
class CleanFailureModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        PathRole = Qt::UserRole,
        ShownPathRole,
        ReasonRole,
    };

    CleanFailureModel(QStringList paths, QHash<QString, QString> reasons, Locations locations,
                      QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    const QStringList m_paths;
    const QHash<QString, QString> m_reasons;
    const Locations m_locations;
};

} // namespace brivane
