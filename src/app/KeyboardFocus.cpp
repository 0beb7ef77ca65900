#include "app/KeyboardFocus.h"

#include <QEvent>
#include <QQuickItem>
#include <QQuickWindow>

namespace brivane {

KeyboardFocus::KeyboardFocus(QQuickWindow& window)
    : QObject(&window)
    , m_window(window)
{
    window.installEventFilter(this);
    connect(&window, &QQuickWindow::activeFocusItemChanged, this, &KeyboardFocus::follow);
}

bool KeyboardFocus::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride: // comes for each key, also for those that are caught as
                                   // shortcuts
        m_isByKeyboard = true;
        break;
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
        m_isByKeyboard = false;
        break;
    default:
        break;
    }
    return false;
}

void KeyboardFocus::follow()
{
    QQuickItem* item = m_window.activeFocusItem();
    // Popups that close in an orderly way are about to give it back themselves.
    if (item == m_window.contentItem())
        QMetaObject::invokeMethod(this, &KeyboardFocus::giveBack, Qt::QueuedConnection);
    if (m_isByKeyboard && item && item->property("visualFocus") == false)
        item->setProperty("focusReason", QVariant::fromValue(Qt::ShortcutFocusReason));
}

void KeyboardFocus::giveBack()
{
    if (m_window.activeFocusItem() != m_window.contentItem())
        return;
    for (QQuickItem* item : m_window.contentItem()->childItems()) {
        if (item->isFocusScope() && item->isVisible() && item->isEnabled())
            return item->forceActiveFocus(m_isByKeyboard ? Qt::ShortcutFocusReason
                                                         : Qt::OtherFocusReason);
    }
}

} // namespace brivane
