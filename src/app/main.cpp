#include "app/BrivaneApp.h"
#include "app/MenuCommands.h"
#include "app/SingleInstance.h"
#include "app/TrayIcon.h"
#include "core/AppSettings.h"
#include "core/Composition.h"
#include "platform/Host.h"

#include <QApplication>
#include <QQuickWindow>
#include <QScopeGuard>

#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

using namespace brivane;

namespace {

/// A launcher may have closed some of them. The next files to be opened would take their numbers,
/// and what anyone prints would end up in the lock, a socket or the preferences.
void openStandardDescriptors()
{
    int opened = STDIN_FILENO;
    while (opened >= 0 && opened <= STDERR_FILENO)
        opened = ::open("/dev/null", O_RDWR);
    if (opened > STDERR_FILENO)
        ::close(opened);
}

} // namespace

int main(int argc, char** argv)
{
    openStandardDescriptors();
    // Not a QGuiApplication, because of the tray.
    QApplication application(argc, argv);
    Host& host = Host::shared();
    SingleInstance instance(host.locations.temporaryDirectory());
    switch (instance.start()) {
    case SingleInstance::Start::First:
        break;
    case SingleInstance::Start::Handed:
        return 0;
    case SingleInstance::Start::Unanswered:
        std::fprintf(stderr, "Brivane is running already, and does not answer.\n");
        return 1;
    }

    host.defaults.readAhead();
    // Ahead of the lock of this instance, so that the next start finds all preferences. Where the
    // session ends, the event loop may not return.
    const auto save = [&host] { host.defaults.waitUntilSaved(); };
    const auto saveAtEnd = qScopeGuard(save);
    QObject::connect(&application, &QCoreApplication::aboutToQuit, save);

    BrivaneApp::prepareProcess();
    Composition& composition = Composition::shared();
    BrivaneApp app(composition);
    QQuickWindow* window = app.open();
    if (!window)
        return 1;
    QObject::connect(&instance, &SingleInstance::activationRequested, &app,
                     &BrivaneApp::bringToFront);

    host.notifications.subscribe(quitNotification, &application, &QCoreApplication::quit);

    std::unique_ptr<TrayIcon> tray;
    const auto makeTray = [&] {
        const TrayIcon::Actions actions{[&app] { app.bringToFront({}); }, &QCoreApplication::quit};
        tray = std::make_unique<TrayIcon>(composition.get<AppSettings>(), host.defaults, *window,
                                          actions);
    };
    // The first frame comes from a thread of its own, and counts for the start; the tray does not.
    QObject::connect(
        window, &QQuickWindow::frameSwapped, &app, makeTray,
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    return QApplication::exec();
}
