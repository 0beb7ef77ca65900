#include "app/TrayIcon.h"

#include "core/AppSettings.h"

#include <QCoreApplication>
#include <QIcon>

namespace brivane {

using namespace Qt::StringLiterals;

TrayIcon::TrayIcon(const AppSettings& settings, const std::function<void()>& open)
    : m_settings(settings)
{
    m_menu.addAction(tr("Open Brivane"), this, open);
    m_menu.addSeparator();
    m_menu.addAction(tr("Quit"), this, &QCoreApplication::quit);
    m_icon.setIcon(
        QIcon::fromTheme(u"com.brivane.app"_s, QIcon(u":/brivane/com.brivane.app.svg"_s)));
    m_icon.setToolTip(u"Brivane"_s);
    m_icon.setContextMenu(&m_menu);
    connect(&m_icon, &QSystemTrayIcon::activated, this,
            [open](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger)
                    open();
            });
    connect(&settings, &AppSettings::showMenuBarWidgetChanged, this, &TrayIcon::follow);
    follow();
}

void TrayIcon::follow()
{
    m_icon.setVisible(m_settings.showMenuBarWidget() && QSystemTrayIcon::isSystemTrayAvailable());
}

} // namespace brivane
