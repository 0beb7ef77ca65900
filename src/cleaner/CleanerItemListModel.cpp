#include "cleaner/CleanerItemListModel.h"

#include "core/ByteFormatter.h"
#include "platform/PathText.h"

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

constexpr int mostChanges = 32; // runs of rows that come or go before a reset is cheaper

QString folderOf(const QString& path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash > 0 ? path.first(slash) : u"/"_s;
}

/// How many runs of neighbours there are among the true ones.
int runsIn(const std::vector<bool>& marks)
{
    int runs = 0;
    for (std::size_t at = 0; at < marks.size(); ++at)
        runs += marks[at] && (at == 0 || !marks[at - 1]) ? 1 : 0;
    return runs;
}

/// Which of `places` are not in `others`; both ascend.
std::vector<bool> missingIn(const std::vector<int>& others, const std::vector<int>& places)
{
    std::vector<bool> isMissing(places.size());
    auto other = others.begin();
    for (std::size_t at = 0; at < places.size(); ++at) {
        while (other != others.end() && *other < places[at])
            ++other;
        isMissing[at] = other == others.end() || *other != places[at];
    }
    return isMissing;
}

} // namespace

CleanerItemListModel::CleanerItemListModel(Locations locations, QObject* parent)
    : QAbstractListModel(parent)
    , m_locations(std::move(locations))
{
}

void CleanerItemListModel::setCategory(std::shared_ptr<CleanerCategory> category)
{
    if (category == m_category)
        return;
    beginResetModel();
    if (m_category)
        m_category->disconnect(this);
    m_category = std::move(category);
    if (m_category) {
        connect(m_category.get(), &CleanerCategory::itemsChanged, this,
                &CleanerItemListModel::itemsChanged);
        connect(m_category.get(), &CleanerCategory::selectionChanged, this,
                &CleanerItemListModel::selectionChanged);
    }
    noteItems();
    m_rows = filtered();
    endResetModel();
}

void CleanerItemListModel::setFilter(const QString& searchText, const QString& extension)
{
    // A name may be written in composed or in decomposed letters; that is no difference to who
    // types.
    m_searchText = searchText.normalized(QString::NormalizationForm_C);
    m_extension = extension;
    showFiltered();
}

const CleanerItem* CleanerItemListModel::find(const QUuid& id) const
{
    const auto place = m_places.constFind(id);
    return place == m_places.cend() ? nullptr
                                    : &m_category->items()[static_cast<std::size_t>(*place)];
}

int CleanerItemListModel::rowOf(const QUuid& id) const
{
    const auto place = m_places.constFind(id);
    if (place == m_places.cend())
        return -1;
    const auto row = std::ranges::lower_bound(m_rows, *place);
    return row != m_rows.end() && *row == *place ? static_cast<int>(row - m_rows.begin()) : -1;
}

void CleanerItemListModel::noteItems()
{
    m_places.clear();
    m_ids.clear();
    if (!m_category)
        return;
    const std::vector<CleanerItem>& items = m_category->items();
    m_places.reserve(static_cast<qsizetype>(items.size()));
    for (const CleanerItem& item : items) {
        m_places.insert(item.id, static_cast<int>(m_ids.size()));
        m_ids.push_back(item.id);
    }
}

void CleanerItemListModel::itemsChanged()
{
    const std::vector<QUuid> before = std::exchange(m_ids, {});
    noteItems();
    // Views ask for rows while others go, and find them at their new places.
    for (int& place : m_rows)
        place = m_places.value(before[static_cast<std::size_t>(place)], -1);
    std::vector<bool> isGone(m_rows.size());
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        isGone[row] = m_rows[row] < 0;
    if (std::ranges::count(isGone, true) == std::ssize(m_rows) || runsIn(isGone) > mostChanges) {
        beginResetModel();
        m_rows = filtered();
        endResetModel();
        return;
    }
    dropRows(isGone);
    showFiltered();
    if (!m_rows.empty()) // the largest may be another one now
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {FractionRole});
}

void CleanerItemListModel::selectionChanged(int first, int last)
{
    const auto from = std::ranges::lower_bound(m_rows, first);
    const auto to = std::ranges::upper_bound(m_rows, last);
    if (from < to)
        Q_EMIT dataChanged(index(static_cast<int>(from - m_rows.begin())),
                           index(static_cast<int>(to - m_rows.begin()) - 1), {IsSelectedRole});
}

void CleanerItemListModel::showFiltered()
{
    std::vector<int> wanted = filtered();
    const std::vector<bool> isGone = missingIn(wanted, m_rows);
    if (runsIn(isGone) + runsIn(missingIn(m_rows, wanted)) > mostChanges) {
        beginResetModel();
        m_rows = std::move(wanted);
        endResetModel();
        return;
    }
    dropRows(isGone);
    insertMissing(wanted);
}

void CleanerItemListModel::dropRows(const std::vector<bool>& isGone)
{
    for (int end = static_cast<int>(isGone.size()); end > 0;) {
        int first = end;
        while (first > 0 && isGone[static_cast<std::size_t>(first) - 1])
            --first;
        if (first < end) {
            beginRemoveRows({}, first, end - 1);
            m_rows.erase(m_rows.begin() + first, m_rows.begin() + end);
            endRemoveRows();
        }
        end = first - 1;
    }
}

void CleanerItemListModel::insertMissing(const std::vector<int>& wanted)
{
    // What is listed is among what is wanted, in the same order.
    for (std::size_t first = 0; first < wanted.size(); ++first) {
        if (first < m_rows.size() && m_rows[first] == wanted[first])
            continue;
        std::size_t end = first;
        while (end < wanted.size() && (first >= m_rows.size() || wanted[end] < m_rows[first]))
            ++end;
        beginInsertRows({}, static_cast<int>(first), static_cast<int>(end) - 1);
        m_rows.insert(m_rows.begin() + static_cast<std::ptrdiff_t>(first),
                      wanted.begin() + static_cast<std::ptrdiff_t>(first),
                      wanted.begin() + static_cast<std::ptrdiff_t>(end));
        endInsertRows();
    }
}

std::vector<int> CleanerItemListModel::filtered() const
{
    std::vector<int> places;
    if (!m_category)
        return places;
    const std::vector<CleanerItem>& items = m_category->items();
    for (std::size_t place = 0; place < items.size(); ++place) {
        const CleanerItem& item = items[place];
        if (!m_extension.isEmpty() && PathText::extension(item.path) != m_extension)
            continue;
        if (!m_searchText.isEmpty() && !item.name.normalized(QString::NormalizationForm_C)
                                            .contains(m_searchText, Qt::CaseInsensitive))
            continue;
        places.push_back(static_cast<int>(place));
    }
    return places;
}

quint64 CleanerItemListModel::maxSize() const
{
    const std::vector<CleanerItem>& items = m_category->items();
    return items.empty() ? 1 : std::max<quint64>(1, items.front().size);
}

int CleanerItemListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant CleanerItemListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const int place = m_rows[static_cast<std::size_t>(index.row())];
    if (place < 0)
        return {};
    const CleanerItem& item = m_category->items()[static_cast<std::size_t>(place)];
    switch (role) {
    case ItemRole:
        return QVariant::fromValue(item);
    case NameRole:
        return PathText::forDisplay(item.name);
    case FolderRole:
        return m_locations.shown(folderOf(item.path));
    case IconNameRole:
        return item.iconName;
    case SizeTextRole:
        return ByteFormatter::format(item.size);
    case FractionRole:
        return static_cast<double>(item.size) / static_cast<double>(maxSize());
    case IsSelectedRole:
        return item.isSelected;
    default:
        return {};
    }
}

QHash<int, QByteArray> CleanerItemListModel::roleNames() const
{
    return {
        {ItemRole, "item"},
        {NameRole, "name"},
        {FolderRole, "folder"},
        {IconNameRole, "iconName"},
        {SizeTextRole, "sizeText"},
        {FractionRole, "fraction"},
        {IsSelectedRole, "isSelected"},
    };
}

} // namespace brivane
