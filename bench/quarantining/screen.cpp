// How late the GUI thread is while the quarantine's screen opens with thousands of items, the first
// time and again, and while its list is scrolled.

#include "Lateness.h"
#include "core/AppSettings.h"
#include "platform/PathText.h"
#include "removal/QuarantineService.h"
#include "windowing/RealWindow.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>

#include <chrono>

using namespace brivane;
using namespace Qt::StringLiterals;

namespace {

void runFor(int milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    runUntil([&] { return clock.elapsed() > milliseconds; });
}

/// Fills the store before the program has looked at it.
void fill(const SandboxMachine& machine, int count)
{
    OwnedHost host(machine.locations());
    const AppSettings settings(host.host().defaults, host.host().clock, machine.locations().home());
    QuarantineService service(host.host(), settings, machine.path(u"~/.Brivane_Quarantine"));
    QStringList paths;
    for (int i = 0; i < count; ++i)
        paths += machine.file(u"~/many/%1.pdf"_s.arg(i), QByteArray("content"));
    bool isDone = false;
    const auto watch = [&]() -> QCoro::Task<> {
        const QString category = u"Bench"_s;
        co_await service.quarantine(paths, category);
        isDone = true;
    };
    const QCoro::Task<> watching = watch();
    runUntil([&] { return isDone; });
}

void enter(RealWindow& window, AppMode::Mode mode, Lateness& lateness, const char* what)
{
    runFor(500);
    lateness.startAfresh();
    window.shell().setAppMode(mode);
    runFor(1000);
    lateness.report(what);
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    constexpr int count = 5000;
    RealWindow window;
    fill(window.machine(), count);
    Lateness lateness;
    enter(window, AppMode::cleaner, lateness, "another page");
    enter(window, AppMode::quarantine, lateness, "opened first");
    enter(window, AppMode::cleaner, lateness, "left");
    enter(window, AppMode::quarantine, lateness, "opened again");

    auto* list = window.window().findChild<QQuickItem*>(u"quarantineList"_s);
    if (!list)
        return 1;
    int frames = 0;
    QObject::connect(&window.window(), &QQuickWindow::frameSwapped, &window.window(),
                     [&] { ++frames; });
    QElapsedTimer clock;
    clock.start();
    runUntil([&] {
        const double seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
        list->setProperty("contentY", seconds * 3000);
        return seconds >= 4;
    });
    std::printf("%-22s %d items, 3000 points a second: %d frames in 4 s\n", "scroll", count,
                frames);
    lateness.report("  the same");
    return 0;
}
