#pragma once

#include <QObject>

namespace brivane {

class ShellViewModel;

/// Catches the keys of the keyboard map before anything in the window sees them, and hands them to
/// the shell in a step of its own on the event loop. All other keys pass. GUI thread.
class KeyboardShortcutHandler : public QObject {
    Q_OBJECT

public:
    /// Listens to `window`, which owns this. `shell` has to outlive it.
    KeyboardShortcutHandler(QObject& window, ShellViewModel& shell);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ShellViewModel& m_shell;
};

} // namespace brivane
