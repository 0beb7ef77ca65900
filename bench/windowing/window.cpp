// Scans in the real window. A timer of 10 ms on the GUI thread shows what keeps it from its work.

#include "Caches.h"
#include "Lateness.h"
#include "RealWindow.h"
#include "platform/PathText.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

using namespace brivane;

namespace {

void runFor(Milliseconds duration)
{
    QElapsedTimer clock;
    clock.start();
    runUntil([&] { return static_cast<double>(clock.nsecsElapsed()) / 1e6 >= duration; });
}

void scanOnce(ScanViewModel& scan, const QString& path, Lateness& lateness, const char* what)
{
    QElapsedTimer clock;
    std::vector<Milliseconds> reports;
    const auto connection = QObject::connect(&scan, &ScanViewModel::scanTickChanged, [&] {
        reports.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    });
    clock.start();
    scan.startScan(path);
    runUntil([&] { return scan.scanState() != ScanViewModel::Scanning; });
    QObject::disconnect(connection);
    lateness.report(what);
    std::printf("%-22s %lld files in %.2f s, reports after", "",
                static_cast<long long>(scan.progress().filesScanned),
                scan.scanResult() ? scan.scanResult()->scanDuration : 0.0);
    for (const Milliseconds at : reports)
        std::printf(" %.0f", at);
    std::printf(" ms\n");
}

/// Scrolls the list of the folder on screen for four seconds, a step each frame, while the list is
/// put into order again as often as during a scan. `speed` is in points a second; 0 goes from end
/// to end and back.
void scroll(QQuickWindow& window, ScanViewModel& scan, double speed, Lateness& lateness)
{
    runFor(500); // the list of the screen before goes
    auto* list = window.findChild<QQuickItem*>(QStringLiteral("folderList"));
    if (!list)
        return;
    constexpr double duration = 4;
    const double end = list->property("contentHeight").toDouble() - list->height();
    const double turn = speed > 0 ? std::min(end, speed * duration / 2) : end;
    int frames = 0;
    const auto connection =
        QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [&] { ++frames; });
    QTimer order;
    order.callOnTimeout([&scan] { scan.folderModel()->refresh(); });
    order.start(500);
    QElapsedTimer clock;
    clock.start();
    lateness.startAfresh();
    runUntil([&] {
        const double part = static_cast<double>(clock.nsecsElapsed()) / 1e9 / duration;
        list->setProperty("contentY", turn * (part < 0.5 ? 2 * part : 2 - 2 * part));
        return part >= 1;
    });
    QObject::disconnect(connection);
    std::printf("%-22s %d rows, %.0f points a second: %d frames in 4 s\n", "scroll",
                scan.folderModel()->rowCount(), 2 * turn / duration, frames);
    lateness.report("  the same");
}

/// A million lines that the helper of a scan as administrator may print: folders of a hundred
/// files below `path`.
QByteArray listing(const QByteArray& path)
{
    QByteArray lines;
    const auto add = [&](const QByteArray& parent, const QByteArray& name, int size) {
        lines += "{\"path\":\"" + parent + '/' + name + "\",\"name\":\"" + name +
                 "\",\"size\":" + QByteArray::number(size) +
                 ",\"isDir\":" + (size == 0 ? "true" : "false") + ",\"parentPath\":\"" + parent +
                 "\"}\n";
    };
    for (int folder = 0; folder < 10'000; ++folder) {
        const QByteArray name = "a folder that was closed " + QByteArray::number(folder);
        add(path, name, 0);
        for (int file = 1; file < 100; ++file)
            add(path + '/' + name, "file " + QByteArray::number(file), file * 7);
    }
    return lines;
}

/// A scan as administrator whose helper has a million entries to tell that the tree does not have.
void scanAsAdmin(RealWindow& window, const QString& path, Lateness& lateness)
{
    window.machine().command(u"/usr/bin/swiftc");
    const QByteArray lines = listing(PathText::toBytes(path));
    window.machine().command(u"/usr/bin/osascript").answer({.output = lines});
    ScanViewModel& scan = window.scan();
    runFor(1000);
    lateness.startAfresh();
    scan.scanAsAdmin(path);
    runUntil([&] { return scan.scanState() != ScanViewModel::ScanningAdmin; });
    lateness.report("scan as administrator");
    std::printf("%-22s %lld MB of lines, afterwards %lld files below the start\n", "",
                static_cast<long long>(lines.size()) / 1'000'000,
                static_cast<long long>(scan.rootNode().node()->fileCount()));
}

/// Stops a scan at several moments and waits for its walk to end.
void stopSeveralTimes(ScanViewModel& scan, const QString& path, Lateness& lateness)
{
    Milliseconds worstStop = 0;
    for (const Milliseconds moment : {5.0, 50.0, 120.0, 250.0, 400.0}) {
        for (const bool isPaused : {false, true}) {
            scan.startScan(path);
            runFor(moment);
            if (isPaused)
                scan.togglePause();
            if (isPaused)
                runFor(30);
            QElapsedTimer clock;
            clock.start();
            scan.stopScan();
            scan.waitForWalk();
            worstStop = std::max(worstStop, static_cast<double>(clock.nsecsElapsed()) / 1e6);
        }
    }
    std::printf("%-22s worst of 10: %.1f ms until the walk had ended\n", "stop", worstStop);
    lateness.report("  the same");
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_window PATH [SCANS]\n");
        return 2;
    }
    const QString path = PathText::fromBytes(argv[1]);
    const int scans = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
    RealWindow window;
    ScanViewModel& scan = window.scan();
    window.shell().setAppMode(AppMode::scanner);
    runFor(500);

    Lateness lateness;
    runFor(1000);
    lateness.report("idle");
    if (emptyCaches()) {
        runFor(200); // the program's own pages come back
        lateness.startAfresh();
        scanOnce(scan, path, lateness, "scan, empty caches");
    }
    for (int i = 0; i < scans; ++i)
        scanOnce(scan, path, lateness, "scan, warm");
    constexpr double flick = 5000;
    scroll(window.window(), scan, flick, lateness);
    scroll(window.window(), scan, 0, lateness);
    scanAsAdmin(window, path, lateness);
    stopSeveralTimes(scan, path, lateness);
    return 0;
}
