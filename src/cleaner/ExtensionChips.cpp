#include "cleaner/ExtensionChips.h"

#include "cleaner/CleanerItem.h"
#include "platform/PathText.h"

#include <QHash>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace brivane {

void ExtensionChips::setItems(const std::vector<CleanerItem>& items)
{
    std::vector<Chip> chips;
    QHash<QString, std::size_t> places;
    for (const CleanerItem& item : items) {
        const QString extension = PathText::extension(item.path);
        if (extension.isEmpty())
            continue;
        const auto place = places.constFind(extension);
        if (place != places.cend()) {
            ++chips[*place].count;
        } else {
            places.insert(extension, chips.size());
            chips.push_back({extension, 1});
        }
    }
    std::ranges::stable_sort(chips, std::greater(), &Chip::count);
    if (chips == m_chips)
        return;
    if (std::ranges::equal(chips, m_chips, {}, &Chip::extension, &Chip::extension)) {
        m_chips = std::move(chips);
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {LabelRole});
        return;
    }
    beginResetModel();
    m_chips = std::move(chips);
    endResetModel();
}

int ExtensionChips::countForExtension(const QString& extension) const
{
    const auto found = std::ranges::find(m_chips, extension, &Chip::extension);
    return found == m_chips.end() ? 0 : found->count;
}

int ExtensionChips::rowOf(const QString& extension) const
{
    if (extension.isEmpty())
        return 0;
    const auto found = std::ranges::find(m_chips, extension, &Chip::extension);
    return found == m_chips.end() ? -1 : 1 + static_cast<int>(found - m_chips.begin());
}

int ExtensionChips::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 1 + static_cast<int>(m_chips.size());
}

QVariant ExtensionChips::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Chip all;
    const Chip& chip = index.row() == 0 ? all : m_chips[static_cast<std::size_t>(index.row()) - 1];
    switch (role) {
    case ValueRole:
        return chip.extension;
    case LabelRole:
        if (index.row() == 0)
            return u"All"_s;
        return QString(u'.' + PathText::forDisplay(chip.extension) + u" (%1)"_s.arg(chip.count));
    default:
        return {};
    }
}

QHash<int, QByteArray> ExtensionChips::roleNames() const
{
    return {{ValueRole, "value"}, {LabelRole, "label"}};
}

} // namespace brivane
