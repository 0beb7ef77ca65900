#include "cleaner/CleanerDetailViewModel.h"

#include "core/ByteFormatter.h"
#include "core/Publish.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

const std::vector<CleanerItem>& itemsOf(const std::shared_ptr<CleanerCategory>& category)
{
    static const std::vector<CleanerItem> none;
    return category ? category->items() : none;
}

} // namespace

CleanerDetailViewModel::CleanerDetailViewModel(const Locations& locations, QObject* parent)
    : QObject(parent)
    , m_rows(locations)
{
}

void CleanerDetailViewModel::setCategory(std::shared_ptr<CleanerCategory> category)
{
    if (category == m_category)
        return;
    if (m_category)
        m_category->disconnect(this);
    m_category = std::move(category);
    m_rows.setCategory(m_category);
    if (m_category) {
        connect(m_category.get(), &CleanerCategory::itemsChanged, this,
                &CleanerDetailViewModel::countItems);
        connect(m_category.get(), &CleanerCategory::selectionChanged, this,
                &CleanerDetailViewModel::selectionChanged);
        connect(m_category.get(), &CleanerCategory::isScanningChanged, this,
                &CleanerDetailViewModel::itemsChanged);
        if (m_category->type() != m_lastType) {
            m_lastType = m_category->type();
            setFilter({}, {});
            setShowLearnMore(false);
        }
    }
    Q_EMIT categoryChanged();
    countItems();
}

void CleanerDetailViewModel::countItems()
{
    m_chips.setItems(itemsOf(m_category));
    // The last item that had it may have gone. While there is nothing at all, it may come again.
    if (hasItems() && m_chips.rowOf(m_selectedExtension) < 0)
        setFilter(m_searchText, {});
    Q_EMIT filterChanged(); // the chip may be elsewhere
    Q_EMIT itemsChanged();
    Q_EMIT selectionChanged();
}

void CleanerDetailViewModel::toggleAll()
{
    if (hasItems())
        m_category->toggleAll();
}

void CleanerDetailViewModel::selectAll()
{
    if (hasItems() && !m_category->areAllSelected())
        m_category->toggleAll();
}

void CleanerDetailViewModel::toggle(const CleanerItem& item)
{
    if (m_category)
        m_category->setItemSelected(item.id, !isSelected(item));
}

bool CleanerDetailViewModel::isSelected(const CleanerItem& item) const
{
    const CleanerItem* found = m_rows.find(item.id);
    return found && found->isSelected;
}

int CleanerDetailViewModel::rowOf(const CleanerItem& item) const
{
    return m_rows.rowOf(item.id);
}

void CleanerDetailViewModel::selectChip(int row)
{
    setSelectedExtension(m_chips.index(row).data(ExtensionChips::ValueRole).toString());
}

QString CleanerDetailViewModel::name() const
{
    return m_category ? m_category->name() : QString();
}

QString CleanerDetailViewModel::description() const
{
    return m_category ? m_category->description() : QString();
}

QString CleanerDetailViewModel::iconName() const
{
    return m_category ? m_category->iconName() : QString();
}

QColor CleanerDetailViewModel::tint() const
{
    return m_category ? m_category->iconColor() : QColor();
}

QString CleanerDetailViewModel::safetyExplanation() const
{
    return m_category ? factsOf(m_category->type()).safetyExplanation : QString();
}

QString CleanerDetailViewModel::regenerationInfo() const
{
    return m_category ? factsOf(m_category->type()).regenerationInfo : QString();
}

void CleanerDetailViewModel::setShowLearnMore(bool isShown)
{
    publish(m_showLearnMore, isShown, this, &CleanerDetailViewModel::showLearnMoreChanged);
}

QString CleanerDetailViewModel::totalSizeText() const
{
    return ByteFormatter::format(m_category ? m_category->totalSize() : 0);
}

QString CleanerDetailViewModel::itemCountText() const
{
    return u"%1 items"_s.arg(itemsOf(m_category).size());
}

QString CleanerDetailViewModel::emptyText() const
{
    if (hasItems())
        return u"No items match your filter"_s;
    return m_category && m_category->isScanning() ? u"Scanning..."_s : u"Nothing was found here"_s;
}

QString CleanerDetailViewModel::selectAllLabel() const
{
    return hasItems() && m_category->areAllSelected() ? u"Deselect All"_s : u"Select All"_s;
}

QString CleanerDetailViewModel::selectAllToolTip() const
{
    const std::size_t count = itemsOf(m_category).size();
    const QString verb = hasItems() && m_category->areAllSelected() ? u"Deselects"_s : u"Selects"_s;
    return u"%1 all %2 items of this category, whatever the filter shows"_s.arg(verb).arg(count);
}

void CleanerDetailViewModel::setSearchText(const QString& text)
{
    setFilter(text, m_selectedExtension);
}

void CleanerDetailViewModel::setSelectedExtension(const QString& extension)
{
    setFilter(m_searchText, extension);
}

void CleanerDetailViewModel::setFilter(const QString& searchText, const QString& extension)
{
    if (searchText == m_searchText && extension == m_selectedExtension)
        return;
    m_searchText = searchText;
    m_selectedExtension = extension;
    m_rows.setFilter(searchText, extension);
    Q_EMIT filterChanged();
}

} // namespace brivane
