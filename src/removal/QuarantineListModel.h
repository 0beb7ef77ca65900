#pragma once

#include "platform/Locations.h"
#include "removal/QuarantineItemModel.h"
#include "removal/tables/SortOrders.h"

#include <QCollator>
#include <QSet>
#include <QSortFilterProxyModel>

namespace brivane {

class Clock;

/// What is in quarantine as its screen lists it: filtered, sorted, and with the ticks of the rows.
/// Rows come, go and move without a reset. GUI thread.
class QuarantineListModel : public QSortFilterProxyModel {
    Q_OBJECT

public:
    enum Role {
        ItemRole = QuarantineItemModel::ItemRole,
        ItemIdRole,   ///< as text
        NameRole,     ///< of the file, to be shown
        CategoryRole, ///< who handed it over
        PathRole,     ///< where it came from, to be shown
        SizeTextRole,
        DaysTextRole,
        DaysColorRole,
        IsSelectedRole,
    };

    /// Both have to outlive this.
    QuarantineListModel(QuarantineItemModel& source, Locations locations, const Clock& clock,
                        QObject* parent = nullptr);

    [[nodiscard]] const QString& searchText() const { return m_searchText; }
    /// Keeps what has the text in its name or category, in small or capital letters.
    void setSearchText(const QString& text);
    [[nodiscard]] QuarantineSortOrder sortOrder() const { return m_sortOrder; }
    void setSortOrder(QuarantineSortOrder order);

    /// The ticks, also of what the filter hides or what is gone.
    [[nodiscard]] const QSet<QUuid>& selectedItems() const { return m_selectedItems; }
    void setSelectedItems(const QSet<QUuid>& items);

    /// The clock has gone on since the days were asked for.
    void refreshDays();

    /// Where an item is listed; -1 where it is not.
    [[nodiscard]] int rowOf(const QuarantineItem& item) const;
    /// The items as they are listed.
    [[nodiscard]] QList<QuarantineItem> filteredItems() const;

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
    [[nodiscard]] bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    void tellAllRows(const QList<int>& roles);
    [[nodiscard]] const QuarantineItem& itemAt(int sourceRow) const
    {
        return m_source.items().at(sourceRow);
    }

    QuarantineItemModel& m_source;
    const Locations m_locations;
    const Clock& m_clock;
    QCollator m_collator;
    QString m_searchText;
    QString m_wanted; ///< m_searchText in small letters
    QuarantineSortOrder m_sortOrder = QuarantineSortOrder::dateDesc;
    QSet<QUuid> m_selectedItems;
};

} // namespace brivane
