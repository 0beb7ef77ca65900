// What the real window costs while nothing happens in it.

#include "Lateness.h"
#include "RealWindow.h"
#include "platform/PathText.h"

#include <QAbstractEventDispatcher>
#include <QGuiApplication>
#include <QQuickWindow>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <sys/resource.h>

using namespace brivane;

namespace {

/// Seconds that all threads of this process have worked.
double processorTime()
{
    rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Runs the event loop without a timer that would keep it awake.
void runFor(int seconds)
{
    QEventLoop loop;
    QTimer::singleShot(seconds * 1000, &loop, &QEventLoop::quit);
    loop.exec();
}

void measure(RealWindow& window, int seconds, const char* what)
{
    runFor(3); // what has just changed comes to rest
    int frames = 0;
    int wakeUps = 0;
    QObject counter;
    QObject::connect(&window.window(), &QQuickWindow::frameSwapped, &counter, [&] { ++frames; });
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake,
                     &counter, [&] { ++wakeUps; });
    const double before = processorTime();
    runFor(seconds);
    const double worked = processorTime() - before;
    std::printf("%-22s %.3f s of processor time in %d s, %.2f %% of a core; "
                "%d frames, awake %d times\n",
                what, worked, seconds, 100 * worked / seconds, frames, wakeUps);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_idle PATH [SECONDS]\n");
        return 2;
    }
    const QString path = PathText::fromBytes(argv[1]);
    const int seconds = argc > 2 ? std::max(1, std::atoi(argv[2])) : 60;
    RealWindow window;
    ScanViewModel& scan = window.scan();
    measure(window, seconds, "dashboard, no scan yet");
    window.shell().setAppMode(AppMode::scanner);
    measure(window, seconds, "choice of a volume");
    scan.startScan(path);
    runUntil([&] { return scan.scanState() != ScanViewModel::Scanning; });
    if (scan.scanState() != ScanViewModel::Completed) {
        std::fprintf(stderr, "bench_idle: %s could not be scanned\n", argv[1]);
        return 1;
    }
    measure(window, seconds, "finished scan");
    window.shell().setAppMode(AppMode::dashboard);
    measure(window, seconds, "dashboard, scan kept");
    return 0;
}
