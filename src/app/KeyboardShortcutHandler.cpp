#include "app/KeyboardShortcutHandler.h"

#include "app/KeyboardMap.h"
#include "app/ShellViewModel.h"

#include <QKeyEvent>

namespace brivane {

KeyboardShortcutHandler::KeyboardShortcutHandler(QObject& window, ShellViewModel& shell)
    : QObject(&window)
    , m_shell(shell)
{
    window.installEventFilter(this);
}

bool KeyboardShortcutHandler::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    const auto& press = static_cast<const QKeyEvent&>(*event);
    const KeyboardCommand* command = keyboardCommand(press);
    if (!command)
        return false;
    // A key that is held down means one press: no queue of scans builds up.
    if (!press.isAutoRepeat()) {
        QMetaObject::invokeMethod(
            &m_shell, [&shell = m_shell, command] { shell.perform(*command); },
            Qt::QueuedConnection);
    }
    return true;
}

} // namespace brivane
