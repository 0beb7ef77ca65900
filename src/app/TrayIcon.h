#pragma once

#include "app/TrayHost.h"

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>

#include <functional>
#include <memory>

class QWindow;

namespace brivane {

class AppSettings;
class UserDefaults;

/// The program's icon in the tray of the desktop, while the settings want it and where there is a
/// tray, also one that comes late. While it is there the program goes on when its window is closed,
/// and says so the first time. Needs a QApplication, and takes a moment: to be made after the
/// window is on screen. GUI thread.
class TrayIcon : public QObject {
    Q_OBJECT

public:
    /// What the icon's menu does.
    struct Actions {
        std::function<void()> open; ///< brings the window to the front
        std::function<void()> quit;
    };

    /// Follows the closing of `window`. All of them have to outlive this.
    TrayIcon(const AppSettings& settings, UserDefaults& defaults, QWindow& window, Actions actions);
    ~TrayIcon() override;

    /// Whether there is an icon to come back by.
    [[nodiscard]] bool isShown() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();
    void makeIcon();
    void sayOnce();

    const AppSettings& m_settings;
    UserDefaults& m_defaults;
    QWindow& m_window;
    const Actions m_actions;
    TrayHost m_host;
    QMenu m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon; ///< null until it is known what shows it
    /// m_host shows the icon. One that was made before there was a host is never shown by it.
    bool m_isOfHost = false;
};

} // namespace brivane
