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
    connect(&window, &QQuickWindow::activeFocusItemChanged, this, &KeyboardFocus::show);
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

void KeyboardFocus::show()
{
    QQuickItem* item = m_window.activeFocusItem();
    if (m_isByKeyboard && item && item->property("visualFocus") == false)
        item->setProperty("focusReason", QVariant::fromValue(Qt::ShortcutFocusReason));
}

} // namespace brivane
