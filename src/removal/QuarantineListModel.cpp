#include "removal/QuarantineListModel.h"

#include "components/ColorPalette.h"
#include "core/ByteCountFormatter.h"
#include "platform/Clock.h"
#include "platform/PathText.h"

namespace brivane {

namespace {

constexpr qint64 urgentDays = 2; // below this, the days are red

template<typename Value>
std::strong_ordering compare(const Value& left, const Value& right)
{
    if (left < right)
        return std::strong_ordering::less;
    return right < left ? std::strong_ordering::greater : std::strong_ordering::equal;
}

} // namespace

QuarantineListModel::QuarantineListModel(QuarantineItemModel& source, Locations locations,
                                         const Clock& clock, QObject* parent)
    : QSortFilterProxyModel(parent)
    , m_source(source)
    , m_locations(std::move(locations))
    , m_clock(clock)
{
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
    setSourceModel(&source);
    sort(0);
}

void QuarantineListModel::setSearchText(const QString& text)
{
    m_searchText = text;
    m_wanted = text.toLower();
    invalidateFilter();
}

void QuarantineListModel::setSortOrder(QuarantineSortOrder order)
{
    if (order == m_sortOrder)
        return;
    m_sortOrder = order;
    // The base class sorts only what it takes for another order.
    sort(-1);
    sort(0);
}

void QuarantineListModel::setSelectedItems(const QSet<QUuid>& items)
{
    if (items == m_selectedItems)
        return;
    m_selectedItems = items;
    tellAllRows({IsSelectedRole});
}

void QuarantineListModel::refreshDays()
{
    tellAllRows({DaysTextRole, DaysColorRole});
}

void QuarantineListModel::tellAllRows(const QList<int>& roles)
{
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, 0), roles);
}

int QuarantineListModel::rowOf(const QuarantineItem& item) const
{
    for (int row = 0; row < rowCount(); ++row) {
        if (itemAt(mapToSource(index(row, 0)).row()).id == item.id)
            return row;
    }
    return -1;
}

QList<QuarantineItem> QuarantineListModel::filteredItems() const
{
    QList<QuarantineItem> items;
    for (int row = 0; row < rowCount(); ++row)
        items += itemAt(mapToSource(index(row, 0)).row());
    return items;
}

QVariant QuarantineListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const QuarantineItem& item = itemAt(mapToSource(index).row());
    switch (role) {
    case ItemRole:
        return QVariant::fromValue(item);
    case ItemIdRole:
        return item.id.toString();
    case NameRole:
        return PathText::forDisplay(item.fileName);
    case CategoryRole:
        return PathText::forDisplay(item.categoryName);
    case PathRole:
        return m_locations.shown(item.originalPath);
    case SizeTextRole:
        return ByteCountFormatter::string(item.size);
    case DaysTextRole:
        return QString(QString::number(item.daysRemaining(m_clock.now())) + u'd');
    case DaysColorRole:
        return item.daysRemaining(m_clock.now()) < urgentDays ? ColorPalette::red()
                                                              : ColorPalette::orange();
    case IsSelectedRole:
        return m_selectedItems.contains(item.id);
    default:
        return {};
    }
}

QHash<int, QByteArray> QuarantineListModel::roleNames() const
{
    return {
        {ItemRole, "item"},         {ItemIdRole, "itemId"},       {NameRole, "name"},
        {CategoryRole, "category"}, {PathRole, "path"},           {SizeTextRole, "sizeText"},
        {DaysTextRole, "daysText"}, {DaysColorRole, "daysColor"}, {IsSelectedRole, "isSelected"},
    };
}

bool QuarantineListModel::filterAcceptsRow(int row, const QModelIndex&) const
{
    const QuarantineItem& item = itemAt(row);
    return m_wanted.isEmpty() || item.fileName.toLower().contains(m_wanted) ||
           item.categoryName.toLower().contains(m_wanted);
}

bool QuarantineListModel::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const QuarantineItem& one = itemAt(left.row());
    const QuarantineItem& other = itemAt(right.row());
    std::strong_ordering order = std::strong_ordering::equal;
    switch (m_sortOrder) {
    case QuarantineSortOrder::dateDesc:
        order = compare(other.quarantineDate, one.quarantineDate);
        break;
    case QuarantineSortOrder::dateAsc:
        order = compare(one.quarantineDate, other.quarantineDate);
        break;
    case QuarantineSortOrder::sizeDesc:
        order = compare(other.size, one.size);
        break;
    case QuarantineSortOrder::nameAsc:
        order = m_collator.compare(one.fileName, other.fileName) <=> 0;
        break;
    }
    // The base class does not keep what is equal in the order of the store.
    return order == 0 ? left.row() < right.row() : order < 0;
}

} // namespace brivane
