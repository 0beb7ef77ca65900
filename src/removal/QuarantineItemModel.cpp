#include "removal/QuarantineItemModel.h"

namespace brivane {

void QuarantineItemModel::append(const QList<QuarantineItem>& items)
{
    if (items.isEmpty())
        return;
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(items.size()) - 1);
    m_items += items;
    endInsertRows();
    quint64 added = 0;
    for (const QuarantineItem& item : items)
        added += item.size;
    m_totalSize += added;
    if (added != 0)
        Q_EMIT totalSizeChanged();
}

void QuarantineItemModel::replaceAll(const QList<QuarantineItem>& items)
{
    QHash<QUuid, QuarantineItem> wanted;
    for (const QuarantineItem& item : items)
        wanted.insert(item.id, item);
    removeIf([&](const QuarantineItem& item) { return wanted.value(item.id) != item; });
    for (const QuarantineItem& item : std::as_const(m_items))
        wanted.remove(item.id);
    QList<QuarantineItem> added = items;
    added.removeIf([&](const QuarantineItem& item) { return !wanted.contains(item.id); });
    append(added);
}

void QuarantineItemModel::remove(const QUuid& id)
{
    removeIf([&](const QuarantineItem& item) { return item.id == id; });
}

void QuarantineItemModel::removeStored(const QSet<QString>& quarantinePaths)
{
    removeIf(
        [&](const QuarantineItem& item) { return quarantinePaths.contains(item.quarantinePath); });
}

template<typename Predicate>
void QuarantineItemModel::removeIf(Predicate isGone)
{
    quint64 removed = 0;
    // Neighbours go together, from the end so that rows which wait keep their numbers.
    for (qsizetype end = m_items.size(); end > 0;) {
        qsizetype begin = end;
        while (begin > 0 && isGone(std::as_const(m_items)[begin - 1]))
            removed += std::as_const(m_items)[--begin].size;
        if (begin == end) {
            --end;
            continue;
        }
        beginRemoveRows({}, static_cast<int>(begin), static_cast<int>(end) - 1);
        m_items.remove(begin, end - begin);
        endRemoveRows();
        end = begin;
    }
    m_totalSize -= removed;
    if (removed != 0)
        Q_EMIT totalSizeChanged();
}

int QuarantineItemModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_items.size());
}

QVariant QuarantineItemModel::data(const QModelIndex& index, int role) const
{
    if (role != ItemRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    return QVariant::fromValue(m_items[index.row()]);
}

QHash<int, QByteArray> QuarantineItemModel::roleNames() const
{
    return {{ItemRole, "item"}};
}

} // namespace brivane
