#pragma once

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>

#include <functional>

namespace brivane {

class AppSettings;

/// The program's icon in the tray of the desktop, while the settings want it and where there is a
/// tray. Needs a QApplication, and takes a moment: to be made after the window is on screen. GUI
/// thread.
class TrayIcon : public QObject {
    Q_OBJECT

public:
    /// `open` brings the window to the front. `settings` have to outlive this.
    TrayIcon(const AppSettings& settings, const std::function<void()>& open);

private:
    void follow();

    const AppSettings& m_settings;
    QMenu m_menu;
    QSystemTrayIcon m_icon;
};

} // namespace brivane
