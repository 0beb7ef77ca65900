#include "app/TrayIcon.h"

#include "core/AppSettings.h"
#include "platform/UserDefaults.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QIcon>
#include <QTimer>
#include <QWindow>

namespace brivane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString saidKey = u"toldOfTrayIcon"_s;

/// How long a desktop on X11 may take to bring a host; the older kind of tray, which such a desktop
/// may have instead, is waited for by Qt itself.
constexpr auto hostPatience = 10s;

} // namespace

TrayIcon::TrayIcon(const AppSettings& settings, UserDefaults& defaults, QWindow& window,
                   Actions actions)
    : m_settings(settings)
    , m_defaults(defaults)
    , m_window(window)
    , m_actions(std::move(actions))
{
    m_menu.addAction(tr("Open Brivane"), this, [this] { m_actions.open(); });
    m_menu.addSeparator();
    m_menu.addAction(tr("Quit"), this, [this] { m_actions.quit(); });
    connect(&settings, &AppSettings::showMenuBarWidgetChanged, this, &TrayIcon::follow);
    connect(&m_host, &TrayHost::isAvailableChanged, this, &TrayIcon::follow);
    if (QGuiApplication::platformName() == "xcb"_L1) {
        QTimer::singleShot(hostPatience, this, [this] {
            makeIcon();
            follow();
        });
    }
    m_window.installEventFilter(this);
    follow();
}

TrayIcon::~TrayIcon() = default;

bool TrayIcon::isShown() const
{
    return m_icon && m_icon->isVisible() &&
           (m_isOfHost ? m_host.isAvailable() : QSystemTrayIcon::isSystemTrayAvailable());
}

void TrayIcon::follow()
{
    if (m_host.isAvailable())
        makeIcon();
    if (m_icon)
        m_icon->setVisible(m_settings.showMenuBarWidget());
    // A window that is closed already must not leave a program that nobody can reach.
    if (!m_window.isVisible() && !isShown())
        m_actions.open();
}

void TrayIcon::makeIcon()
{
    if (m_icon)
        return;
    m_icon = std::make_unique<QSystemTrayIcon>(
        QIcon::fromTheme(u"com.brivane.app"_s, QIcon(u":/brivane/com.brivane.app.svg"_s)));
    // From here on Qt knows which kind of tray there is, and looks for no other.
    m_isOfHost = m_host.isAvailable() && QSystemTrayIcon::isSystemTrayAvailable();
    m_icon->setToolTip(u"Brivane"_s);
    m_icon->setContextMenu(&m_menu);
    connect(m_icon.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger)
                    m_actions.open();
            });
}

bool TrayIcon::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Close) {
        const bool goesOn = isShown();
        QGuiApplication::setQuitOnLastWindowClosed(!goesOn);
        // In a step of its own, which does not come when it is the program that ends.
        if (goesOn)
            QTimer::singleShot(0, this, &TrayIcon::sayOnce);
    }
    return QObject::eventFilter(watched, event);
}

void TrayIcon::sayOnce()
{
    if (!isShown() || m_defaults.boolean(saidKey).value_or(false))
        return;
    m_defaults.setBool(saidKey, true);
    m_icon->showMessage(u"Brivane"_s, tr("Brivane goes on in the tray. Quit ends it."),
                        m_icon->icon());
}

} // namespace brivane
