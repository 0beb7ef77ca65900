// How long one frame of either chart takes to paint, as the software renderer does it, at both
// densities: of a folder with as many arcs as there can be, and of one with thousands of files.

#include "Lateness.h"
#include "platform/PathText.h"
#include "windowing/RealWindow.h"

#include <QGuiApplication>
#include <QPainter>
#include <QQuickPaintedItem>
#include <QQuickWindow>

#include <chrono>
#include <cstdlib>

using namespace brivane;
using namespace Qt::StringLiterals;

namespace {

/// The median of the milliseconds that painting `item` takes.
double paintingTime(QQuickPaintedItem& item, int density, int rounds)
{
    std::vector<double> times;
    QImage image((item.size() * density).toSize(), QImage::Format_ARGB32_Premultiplied);
    for (int round = 0; round < rounds; ++round) {
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.scale(density, density);
        const auto start = std::chrono::steady_clock::now();
        item.paint(&painter);
        const std::chrono::duration<double, std::milli> elapsed =
            std::chrono::steady_clock::now() - start;
        times.push_back(elapsed.count());
    }
    std::ranges::nth_element(times, times.begin() + rounds / 2);
    return times[static_cast<std::size_t>(rounds / 2)];
}

/// Lets come to rest what moves, and go what is to be deleted later.
void settle()
{
    QElapsedTimer clock;
    clock.start();
    runUntil([&] { return clock.elapsed() > 1500; });
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 41;
    const SandboxMachine machine = SandboxMachine::temporary();
    const int counts[] = {40, 400, 5000};
    for (const int count : counts) {
        for (int i = 1; i <= count; ++i)
            machine.file(u"/%1/A file with a name %2.data"_s.arg(count).arg(i),
                         SandboxMachine::Size{i * 1000LL});
    }
    RealWindow window;
    window.shell().setAppMode(AppMode::scanner);
    ScanViewModel& scan = window.scan();
    scan.scanFolder(machine.path(u"/"));
    runUntil([&] { return scan.scanState() == ScanViewModel::Completed; });
    settle();
    const std::vector<FileNode*> folders = scan.rootNode().node()->children();
    for (const QString& chart : {u"treemap"_s, u"sunburst"_s}) {
        auto* picker = window.window().findChild<QObject*>(u"chartPicker"_s);
        QMetaObject::invokeMethod(picker, "activated",
                                  Q_ARG(QVariant, QVariant(chart == u"sunburst"_s)));
        for (FileNode* folder : folders) {
            scan.drillDown(FileNodeRef(folder->shared()));
            settle();
            auto* item = window.window().findChild<QQuickPaintedItem*>(
                chart == u"treemap"_s ? u"treemapView"_s : u"sunburstChart"_s);
            if (!item)
                return 1;
            std::printf("%-8s of %4s files, %.0f by %.0f: %5.2f ms a frame, at twice the density "
                        "%5.2f ms\n",
                        qPrintable(chart), qPrintable(folder->name()), item->width(),
                        item->height(), paintingTime(*item, 1, rounds),
                        paintingTime(*item, 2, rounds));
        }
    }
    return 0;
}
