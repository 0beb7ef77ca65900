#include "app/BrivaneApp.h"

#include "app/KeyboardFocus.h"
#include "app/KeyboardShortcutHandler.h"
#include "app/MenuCommands.h"
#include "app/ModulePlugins.h"
#include "components/Fonts.h"
#include "core/AppSettings.h"
#include "core/Composition.h"
#include "core/FullDiskAccess.h"
#include "platform/Host.h"

#include <QGuiApplication>
#include <QIcon>
#include <QQuickWindow>

namespace brivane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString onboardingKey = u"onboardingCompleted"_s;

} // namespace

BrivaneApp::BrivaneApp(Composition& composition)
    : m_composition(composition)
    , m_hasFullDiskAccess(checkFullDiskAccess(composition.host().locations))
    , m_onboardingCompleted(composition.host().defaults.boolean(onboardingKey).value_or(false))
{
    // A day may have begun whenever somebody comes back to the window, or looks at it for long.
    AppSettings& settings = composition.get<AppSettings>();
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, &settings, &AppSettings::noteTime);
    connect(&m_hour, &QTimer::timeout, &settings, &AppSettings::noteTime);
    m_hour.setTimerType(Qt::VeryCoarseTimer);
    m_hour.start(1h);
}

BrivaneApp::~BrivaneApp() = default;

void BrivaneApp::prepareProcess()
{
    QGuiApplication::setApplicationName(u"Brivane"_s);
    QGuiApplication::setDesktopFileName(u"com.brivane.app"_s);
    QGuiApplication::setWindowIcon(QIcon::fromTheme(u"com.brivane.app"_s));
    registerFonts();
}

QQuickWindow* BrivaneApp::open()
{
    m_engine = std::make_unique<QQmlApplicationEngine>();
    m_engine->addImportPath(u"qrc:/qt/qml"_s);
    m_engine->setInitialProperties({{u"app"_s, QVariant::fromValue(this)}});
    m_engine->load(QUrl(u"qrc:/qt/qml/Brivane/App/BrivaneWindow.qml"_s));
    const QList<QObject*> roots = m_engine->rootObjects();
    m_window = roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(roots.first());
    if (m_window)
        new KeyboardFocus(*m_window);
    listenToKeys();
    return m_window;
}

void BrivaneApp::listenToKeys()
{
    // The keys act on modules, which are not there during the onboarding.
    if (m_window && isOnboarded())
        new KeyboardShortcutHandler(*m_window, *shell());
}

void BrivaneApp::bringToFront(const QByteArray& token)
{
    if (!m_window)
        return;
    // Where the platform looks for it: on Wayland nobody gets the focus without. Children started
    // meanwhile do not look: they get the environment that the program was started with.
    if (!token.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", token);
    m_window->setWindowStates(m_window->windowStates() & ~Qt::WindowMinimized);
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
    qunsetenv("XDG_ACTIVATION_TOKEN");
}

void BrivaneApp::setOnboarded(bool onboarded)
{
    if (!onboarded)
        return;
    const bool before = isOnboarded();
    m_onboardingCompleted = true;
    m_composition.host().defaults.setBool(onboardingKey, true);
    if (!m_hasFullDiskAccess) {
        m_hasFullDiskAccess = true;
        Q_EMIT hasFullDiskAccessChanged();
    }
    if (before)
        return;
    Q_EMIT isOnboardedChanged();
    listenToKeys();
}

void BrivaneApp::quit()
{
    m_composition.host().notifications.post(quitNotification);
}

ShellViewModel* BrivaneApp::shell()
{
    if (!m_shell)
        m_shell = std::make_unique<ShellViewModel>(m_composition);
    return m_shell.get();
}

} // namespace brivane
