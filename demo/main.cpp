// The program on the demo machine. `--tour FOLDER` writes pictures of its screens and ends.

#include "app/BrivaneApp.h"
#include "app/MenuCommands.h"
#include "components/Motion.h"
#include "core/Composition.h"
#include "demo/DemoMachine.h"
#include "demo/Tour.h"
#include "sandbox/HoldableClock.h"
#include "sandbox/Permissions.h"

#include <QGuiApplication>
#include <QTimer>

#include <cstdio>

using namespace brivane;
using namespace Qt::StringLiterals;

namespace {

QCoro::Task<> takeTour(DemoMachine& machine, HoldableClock& clock, QString folder)
{
    // Twice the density has to be asked for before the start: QT_SCALE_FACTOR=2.
    const QString suffix = qGuiApp->devicePixelRatio() > 1 ? u"@2x"_s : QString();
    Tour tour(machine, clock, folder, suffix);
    const bool isWell = co_await tour.run();
    QGuiApplication::exit(isWell ? 0 : 1);
}

} // namespace

int main(int argc, char** argv)
{
    obeyPermissions();
    QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    const bool isTour = arguments.size() == 3 && arguments[1] == "--tour"_L1;
    if (arguments.size() > 1 && !isTour) {
        std::fprintf(stderr, "usage: brivane-demo [--tour FOLDER]\n");
        return 2;
    }
    BrivaneApp::prepareProcess();
    if (isTour) {
        Motion::instance().setEnabled(false);
        auto owned = std::make_unique<HoldableClock>();
        HoldableClock& clock = *owned;
        DemoMachine machine(std::move(owned));
        QTimer::singleShot(0, [&] { takeTour(machine, clock, arguments[2]); });
        return QGuiApplication::exec();
    }
    DemoMachine machine;
    machine.host().notifications.subscribe(quitNotification, &application, &QCoreApplication::quit);
    Composition composition(machine.host());
    BrivaneApp app(composition);
    if (!app.open())
        return 1;
    return QGuiApplication::exec();
}
