#include "cleaner/CleanerCategory.h"

#include "cleaner/tables/CategoryCatalogue.h"

#include <algorithm>
#include <iterator>

namespace brivane {

namespace {

std::vector<CategoryFacts> makeCatalogue()
{
    std::vector<CategoryFacts> facts;
    facts.reserve(std::size(categoryRows));
    for (const CatalogueRow& row : categoryRows) {
        facts.push_back({
            .rawValue = row.rawValue.toString(),
            .displayName = row.displayName.toString(),
            .iconName = row.iconName.toString(),
            .iconColor = QColor::fromHsvF(row.hue, row.saturation, row.brightness),
            .riskLevel = row.riskLevel,
            .description = row.description.toString(),
            .safetyExplanation = row.safetyExplanation.toString(),
            .regenerationInfo = row.regenerationInfo.toString(),
        });
    }
    return facts;
}

} // namespace

std::span<const CategoryFacts> categoryCatalogue()
{
    static const std::vector<CategoryFacts> facts = makeCatalogue();
    return facts;
}

const CategoryFacts& factsOf(CleanerCategory::CategoryType type)
{
    return categoryCatalogue()[static_cast<std::size_t>(type)];
}

CleanerCategory::CleanerCategory(CategoryType type, QObject* parent)
    : QObject(parent)
    , m_type(type)
{
}

QString CleanerCategory::name() const
{
    return factsOf(m_type).displayName;
}

QString CleanerCategory::description() const
{
    return factsOf(m_type).description;
}

QString CleanerCategory::iconName() const
{
    return factsOf(m_type).iconName;
}

QColor CleanerCategory::iconColor() const
{
    return factsOf(m_type).iconColor;
}

CleanerCategory::RiskLevel CleanerCategory::riskLevel() const
{
    return factsOf(m_type).riskLevel;
}

void CleanerCategory::toggleAll()
{
    const bool areSelected = !areAllSelected() && !m_items.empty();
    m_isSelected = areSelected;
    for (CleanerItem& item : m_items)
        item.isSelected = areSelected;
    sumUp();
    Q_EMIT selectionChanged(0, static_cast<int>(m_items.size()) - 1);
}

void CleanerCategory::setItemSelected(const QUuid& item, bool isSelected)
{
    const auto found = std::ranges::find(m_items, item, &CleanerItem::id);
    if (found == m_items.end() || found->isSelected == isSelected)
        return;
    found->isSelected = isSelected;
    if (isSelected) {
        m_selectedSize += found->size;
        ++m_selectedCount;
    } else {
        m_selectedSize -= found->size;
        --m_selectedCount;
    }
    const int index = static_cast<int>(found - m_items.begin());
    Q_EMIT selectionChanged(index, index);
}

void CleanerCategory::setScanning(bool isScanning)
{
    if (m_isScanning == isScanning)
        return;
    m_isScanning = isScanning;
    Q_EMIT isScanningChanged();
}

void CleanerCategory::setItems(std::vector<CleanerItem> items, bool areSelected)
{
    m_items = std::move(items);
    m_isSelected = areSelected;
    for (CleanerItem& item : m_items)
        item.isSelected = areSelected;
    sumUp();
    Q_EMIT itemsChanged();
}

void CleanerCategory::removeItems(const QSet<QUuid>& items)
{
    const auto gone =
        std::erase_if(m_items, [&](const CleanerItem& item) { return items.contains(item.id); });
    if (gone == 0)
        return;
    sumUp();
    Q_EMIT itemsChanged();
}

void CleanerCategory::sumUp()
{
    m_totalSize = 0;
    m_selectedSize = 0;
    m_selectedCount = 0;
    for (const CleanerItem& item : m_items) {
        m_totalSize += item.size;
        if (item.isSelected) {
            m_selectedSize += item.size;
            ++m_selectedCount;
        }
    }
}

} // namespace brivane
