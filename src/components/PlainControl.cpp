#include "components/PlainControl.h"

#include <QFocusEvent>

#include <algorithm>

namespace brivane {

PlainControl::PlainControl(QQuickItem* parent)
    : QQuickItem(parent)
{
}

PlainControl::~PlainControl()
{
    if (m_content)
        disconnect(m_content, nullptr, this, nullptr);
}

void PlainControl::setBackground(QQuickItem* item)
{
    if (item == m_background)
        return;
    m_background = item;
    if (item) {
        item->setParentItem(this);
        item->setZ(-1);
    }
    arrange();
    Q_EMIT partsChanged();
}

void PlainControl::setContentItem(QQuickItem* item)
{
    if (item == m_content)
        return;
    if (m_content)
        disconnect(m_content, nullptr, this, nullptr);
    m_content = item;
    if (item) {
        item->setParentItem(this);
        connect(item, &QQuickItem::implicitWidthChanged, this,
                &PlainControl::implicitContentChanged);
        connect(item, &QQuickItem::implicitHeightChanged, this,
                &PlainControl::implicitContentChanged);
    }
    arrange();
    Q_EMIT partsChanged();
    Q_EMIT implicitContentChanged();
}

void PlainControl::setLeftPadding(qreal width)
{
    if (width == m_padding.left())
        return;
    m_padding.setLeft(width);
    arrange();
    Q_EMIT leftPaddingChanged();
}

void PlainControl::setRightPadding(qreal width)
{
    if (width == m_padding.right())
        return;
    m_padding.setRight(width);
    arrange();
    Q_EMIT rightPaddingChanged();
}

void PlainControl::setTopPadding(qreal height)
{
    if (height == m_padding.top())
        return;
    m_padding.setTop(height);
    arrange();
    Q_EMIT topPaddingChanged();
}

void PlainControl::setBottomPadding(qreal height)
{
    if (height == m_padding.bottom())
        return;
    m_padding.setBottom(height);
    arrange();
    Q_EMIT bottomPaddingChanged();
}

qreal PlainControl::implicitContentWidth() const
{
    return m_content ? m_content->implicitWidth() : 0;
}

qreal PlainControl::implicitContentHeight() const
{
    return m_content ? m_content->implicitHeight() : 0;
}

void PlainControl::setFocusReason(Qt::FocusReason reason)
{
    if (reason == m_focusReason)
        return;
    m_focusReason = reason;
    Q_EMIT focusReasonChanged();
}

bool PlainControl::hasVisualFocus() const
{
    return hasActiveFocus() &&
           (m_focusReason == Qt::TabFocusReason || m_focusReason == Qt::BacktabFocusReason ||
            m_focusReason == Qt::ShortcutFocusReason);
}

void PlainControl::geometryChange(const QRectF& geometry, const QRectF& before)
{
    QQuickItem::geometryChange(geometry, before);
    if (geometry.size() != before.size())
        arrange();
}

void PlainControl::itemChange(ItemChange change, const ItemChangeData& data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemActiveFocusHasChanged)
        Q_EMIT focusReasonChanged(); // of which it depends whether the focus is to be seen
}

void PlainControl::focusInEvent(QFocusEvent* event)
{
    QQuickItem::focusInEvent(event);
    setFocusReason(event->reason());
}

void PlainControl::focusOutEvent(QFocusEvent* event)
{
    QQuickItem::focusOutEvent(event);
    setFocusReason(event->reason());
}

void PlainControl::arrange()
{
    if (m_background)
        m_background->setSize(size());
    if (m_content) {
        const QRectF room = QRectF({}, size()).marginsRemoved(m_padding);
        m_content->setPosition(room.topLeft());
        m_content->setSize({std::max(0.0, room.width()), std::max(0.0, room.height())});
    }
}

} // namespace brivane
