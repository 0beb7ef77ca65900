#include "removal/QuarantineViewModel.h"

#include "components/ColorPalette.h"
#include "core/ByteCountFormatter.h"
#include "core/Composition.h"
#include "core/Publish.h"
#include "platform/Pasteboard.h"
#include "platform/Workspace.h"
#include "removal/QuarantineProvider.h"

#include <algorithm>

namespace brivane {

using namespace Qt::StringLiterals;

QuarantineViewModel::QuarantineViewModel(Host& host, QuarantineService& service, QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_service(service)
    , m_rows(*service.itemModel(), host.locations, host.clock)
    , m_toast(host.clock, service.lastResult())
{
    const QuarantineItemModel* items = service.itemModel();
    connect(items, &QAbstractItemModel::rowsInserted, this, &QuarantineViewModel::itemsCameOrWent);
    connect(items, &QAbstractItemModel::rowsRemoved, this, &QuarantineViewModel::itemsCameOrWent);
    connect(&service, &QuarantineService::totalSizeChanged, this,
            &QuarantineViewModel::itemsChanged);
    connect(&service, &QuarantineService::progressChanged, this,
            &QuarantineViewModel::progressChanged);
    connect(&service, &QuarantineService::readOnlyReasonChanged, this,
            &QuarantineViewModel::readOnlyReasonChanged);
    connect(&service, &QuarantineService::lastResultChanged, this,
            [this] { m_toast.setMessage(m_service.lastResult()); });
}

QCoro::Task<std::unique_ptr<QuarantineViewModel>>
QuarantineViewModel::make(Composition& composition)
{
    Host& host = composition.host();
    QCoro::Task<QuarantineService*> opening = composition.get<QuarantineProvider>().open();
    QuarantineService* service = co_await opening;
    std::unique_ptr<QuarantineViewModel> viewModel;
    if (service)
        viewModel = std::make_unique<QuarantineViewModel>(host, *service);
    co_return viewModel;
}

void QuarantineViewModel::enter()
{
    setSearchText({});
    setSortOrder(static_cast<int>(QuarantineSortOrder::dateDesc));
    setSelectedItems({});
    setHovered(m_hoveredItem, false);
    setShowPurgeConfirm(false);
    setShowRestoreAllConfirm(false);
    m_toast.dismiss();
    tryAgain();
}

void QuarantineViewModel::itemsCameOrWent()
{
    Q_EMIT itemsChanged();
    if (hasSelection())
        Q_EMIT selectedItemsChanged();
    if (itemCount() > 0)
        return;
    // There is nothing left to ask about.
    setShowPurgeConfirm(false);
    setShowRestoreAllConfirm(false);
}

void QuarantineViewModel::toggle(const QuarantineItem& item)
{
    QSet<QUuid> selected = m_rows.selectedItems();
    if (!selected.remove(item.id))
        selected.insert(item.id);
    setSelectedItems(selected);
}

void QuarantineViewModel::toggleAllListed()
{
    QSet<QUuid> listed;
    const QList<QuarantineItem> items = m_rows.filteredItems();
    for (const QuarantineItem& item : items)
        listed.insert(item.id);
    QSet<QUuid> selected = m_rows.selectedItems();
    if (selected.contains(listed))
        selected.subtract(listed);
    else
        selected.unite(listed);
    setSelectedItems(selected);
}

void QuarantineViewModel::setHovered(const QString& itemId, bool isHovered)
{
    if (isHovered == (itemId == m_hoveredItem))
        return;
    m_hoveredItem = isHovered ? itemId : QString();
    Q_EMIT hoveredItemChanged();
}

int QuarantineViewModel::rowOf(const QuarantineItem& item) const
{
    return m_rows.rowOf(item);
}

void QuarantineViewModel::restore(const QuarantineItem& item)
{
    perform(&m_service, &QuarantineService::restore, {item});
}

void QuarantineViewModel::permanentlyDelete(const QuarantineItem& item)
{
    perform(&m_service, &QuarantineService::permanentlyDelete, {item});
}

void QuarantineViewModel::restoreSelected()
{
    perform(&m_service, &QuarantineService::restore, takeSelected());
}

void QuarantineViewModel::deleteSelected()
{
    perform(&m_service, &QuarantineService::permanentlyDelete, takeSelected());
}

void QuarantineViewModel::restoreChosen(const QuarantineItem& current)
{
    if (selectedCount() > 0)
        restoreSelected();
    else
        restore(current);
}

void QuarantineViewModel::deleteChosen(const QuarantineItem& current)
{
    if (selectedCount() > 0)
        deleteSelected();
    else
        permanentlyDelete(current);
}

void QuarantineViewModel::confirmPurge()
{
    setShowPurgeConfirm(false);
    m_service.purgeAll();
}

void QuarantineViewModel::confirmRestoreAll()
{
    setShowRestoreAllConfirm(false);
    m_service.restoreAll();
}

QList<QuarantineItem> QuarantineViewModel::takeSelected()
{
    QList<QuarantineItem> chosen;
    std::ranges::copy_if(
        m_service.items(), std::back_inserter(chosen),
        [&](const QuarantineItem& item) { return m_rows.selectedItems().contains(item.id); });
    setSelectedItems({});
    return chosen;
}

QCoro::Task<> QuarantineViewModel::perform(QPointer<QuarantineService> service, Operation operation,
                                           QList<QuarantineItem> items)
{
    for (const QuarantineItem& item : items) {
        if (!service)
            co_return;
        QuarantineService& here = *service;
        QCoro::Task<bool> task = (here.*operation)(item);
        co_await task;
    }
}

void QuarantineViewModel::revealOriginalFolder(const QuarantineItem& item)
{
    const qsizetype slash = item.originalPath.lastIndexOf(u'/');
    m_host.workspace.reveal(slash > 0 ? item.originalPath.first(slash) : u"/"_s);
}

void QuarantineViewModel::copyOriginalPath(const QuarantineItem& item)
{
    m_host.pasteboard.setPath(item.originalPath);
}

QString QuarantineViewModel::totalSizeText() const
{
    return ByteCountFormatter::string(m_service.totalSize());
}

QString QuarantineViewModel::purgeMessage() const
{
    return u"%1 items (%2) will be permanently removed. This cannot be undone."_s.arg(itemCount())
        .arg(totalSizeText());
}

QString QuarantineViewModel::restoreAllMessage() const
{
    return u"%1 items will be restored to their original locations."_s.arg(itemCount());
}

void QuarantineViewModel::setSearchText(const QString& text)
{
    if (text == searchText())
        return;
    m_rows.setSearchText(text);
    Q_EMIT searchTextChanged();
}

QVariantList QuarantineViewModel::sortOrders()
{
    QVariantList orders;
    for (const auto& [order, label] : quarantineSortOrders)
        orders += QVariantMap{{u"value"_s, static_cast<int>(order)},
                              {u"label"_s, QStringView(label).toString()}};
    return orders;
}

void QuarantineViewModel::setSortOrder(int order)
{
    if (order == sortOrder())
        return;
    m_rows.setSortOrder(static_cast<QuarantineSortOrder>(order));
    Q_EMIT sortOrderChanged();
}

int QuarantineViewModel::selectedCount() const
{
    return static_cast<int>(
        std::ranges::count_if(m_service.items(), [&](const QuarantineItem& item) {
            return m_rows.selectedItems().contains(item.id);
        }));
}

void QuarantineViewModel::setSelectedItems(const QSet<QUuid>& items)
{
    if (items == m_rows.selectedItems())
        return;
    m_rows.setSelectedItems(items);
    Q_EMIT selectedItemsChanged();
}

void QuarantineViewModel::setShowPurgeConfirm(bool isShown)
{
    publish(m_showPurgeConfirm, isShown, this, &QuarantineViewModel::showPurgeConfirmChanged);
}

void QuarantineViewModel::setShowRestoreAllConfirm(bool isShown)
{
    publish(m_showRestoreAllConfirm, isShown, this,
            &QuarantineViewModel::showRestoreAllConfirmChanged);
}

QuarantineProgress QuarantineViewModel::progress() const
{
    return m_service.progress().value_or(QuarantineProgress());
}

QColor QuarantineViewModel::progressTint() const
{
    return progress().label == "Deleting"_L1 ? ColorPalette::danger() : ColorPalette::blue();
}

} // namespace brivane
