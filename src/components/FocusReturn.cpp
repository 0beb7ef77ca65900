#include "components/FocusReturn.h"

#include <QVariant>

namespace brivane {

namespace {

bool canHaveFocus(const QQuickItem* item)
{
    return item && item->isVisible() && item->isEnabled();
}

QQuickItem* nextStop(QQuickItem* item)
{
    QQuickItem* next = item->nextItemInFocusChain();
    return next != item && canHaveFocus(next) ? next : nullptr;
}

} // namespace

void FocusReturn::remember(const QQuickItem* anchor)
{
    m_places.clear();
    m_window = anchor ? anchor->window() : nullptr;
    if (!m_window)
        return;
    for (QQuickItem* item = m_window->activeFocusItem(); item; item = item->parentItem())
        m_places += item;
    // Only controls know why they have it, and show it if it came by a key.
    const QVariant reason =
        m_places.isEmpty() ? QVariant() : m_places.first()->property("focusReason");
    m_reason =
        reason.isValid() ? static_cast<Qt::FocusReason>(reason.toInt()) : Qt::PopupFocusReason;
}

void FocusReturn::giveBack()
{
    if (!isLost())
        return;
    if (QQuickItem* item = heir())
        item->forceActiveFocus(m_reason);
}

bool FocusReturn::isLost() const
{
    if (!m_window || m_places.isEmpty())
        return false;
    QQuickItem* active = m_window->activeFocusItem();
    return !canHaveFocus(active) || m_places.indexOf(active) > 0;
}

QQuickItem* FocusReturn::heir() const
{
    QQuickItem* item = m_places.first();
    if (canHaveFocus(item))
        return item;
    // A list outlives its rows.
    for (QQuickItem* place : m_places) {
        if (canHaveFocus(place) && place->activeFocusOnTab())
            return place;
    }
    if (QQuickItem* next = item ? nextStop(item) : nullptr)
        return next;
    for (QQuickItem* place : m_places) {
        if (!canHaveFocus(place))
            continue;
        if (place->isFocusScope() && canHaveFocus(place->scopedFocusItem()))
            return place;
        if (QQuickItem* next = nextStop(place))
            return next;
    }
    return nullptr;
}

} // namespace brivane
