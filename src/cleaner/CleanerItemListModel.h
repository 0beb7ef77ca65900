#pragma once

#include "cleaner/CleanerCategory.h"
#include "platform/Locations.h"

#include <QAbstractListModel>
#include <QHash>

#include <memory>
#include <vector>

namespace brivane {

/// The items of one category that pass the filter, largest first. GUI thread.
///
/// Rows are places in the category's list, so a filter copies no item. A change of a few rows comes
/// as such; where most of them change, telling of each would take longer than a reset.
class CleanerItemListModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        ItemRole = Qt::UserRole,
        NameRole,     ///< to be shown
        FolderRole,   ///< that it lies in, to be shown
        IconNameRole, ///< of a symbol
        SizeTextRole,
        FractionRole, ///< of the size of the category's largest item
        IsSelectedRole,
    };

    explicit CleanerItemListModel(Locations locations, QObject* parent = nullptr);

    /// Null for none.
    void setCategory(std::shared_ptr<CleanerCategory> category);
    /// Keeps what has `searchText` in its name, in small or capital letters, and `extension`, in
    /// small letters, at its end. Empty texts keep all.
    void setFilter(const QString& searchText, const QString& extension);

    /// Null when it is not in the category any more.
    [[nodiscard]] const CleanerItem* find(const QUuid& id) const;
    /// Where an item is listed; -1 where it is not.
    [[nodiscard]] int rowOf(const QUuid& id) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    void itemsChanged();
    void selectionChanged(int first, int last);
    void noteItems();
    void showFiltered();
    void dropRows(const std::vector<bool>& isGone);
    void insertMissing(const std::vector<int>& wanted);
    [[nodiscard]] std::vector<int> filtered() const;
    [[nodiscard]] quint64 maxSize() const;

    const Locations m_locations;
    std::shared_ptr<CleanerCategory> m_category;
    QHash<QUuid, int> m_places; ///< of all items in the category
    std::vector<QUuid> m_ids;   ///< the same the other way round
    std::vector<int> m_rows;    ///< places, ascending; -1 for what is gone and about to be removed
    QString m_searchText;       ///< composed
    QString m_extension;
};

} // namespace brivane
