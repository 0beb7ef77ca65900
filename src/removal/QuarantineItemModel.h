#pragma once

#include "removal/QuarantineItem.h"

#include <QAbstractListModel>
#include <QList>
#include <QSet>

namespace brivane {

/// What is in quarantine, in the order of the manifest, as rows that come and go one by one or in
/// batches and are never reset. GUI thread.
class QuarantineItemModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        ItemRole = Qt::UserRole, ///< QuarantineItem
    };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] const QList<QuarantineItem>& items() const { return m_items; }
    /// Bytes: the sum over all items.
    [[nodiscard]] quint64 totalSize() const { return m_totalSize; }

    /// Appends all of them as one batch of rows.
    void append(const QList<QuarantineItem>& items);
    /// Puts these in place of all others; rows of what is in both stay.
    void replaceAll(const QList<QuarantineItem>& items);
    /// Removes every item of that id.
    void remove(const QUuid& id);
    /// Removes every item that lies at one of these paths.
    void removeStored(const QSet<QString>& quarantinePaths);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void totalSizeChanged();

private:
    template<typename Predicate>
    void removeIf(Predicate isGone);

    QList<QuarantineItem> m_items;
    quint64 m_totalSize = 0;
};

} // namespace brivane
