// The charts: at rest, under the pointer, with the keyboard, and of folders of one to many.

#include "demo/tours/FolderTour.h"
#include "scanner/ScanViewModel.h"

#include <QCoroTimer>
#include <QQuickItem>
#include <QQuickWindow>

namespace brivane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto tipTime = 600ms; // until a tip shows

} // namespace

QCoro::Task<> showCharts(Tour& tour, ScanViewModel& scan)
{
    const auto isPictured = [&] {
        return scan.folderModel()->directory() == scan.focusedNode().node() &&
               scan.folderModel()->rowCount() > 0;
    };
    for (const QString& chart : {u"treemap"_s, u"sunburst"_s}) {
        const QString item = chart == u"treemap"_s ? u"treemapView"_s : u"sunburstChart"_s;
        enterFolder(scan, {});
        tour.point(chart + u"Toggle"_s, 0, Qt::LeftButton);
        tour.point(QString(), 0, Qt::NoButton);
        tour.takePicture(u"chart-%1"_s.arg(chart));
        // Beside the middle, which is a hole in one of them.
        tour.point(item, 0, Qt::NoButton, QPoint(60, 90));
        const std::chrono::milliseconds rest = tipTime;
        co_await QCoro::sleepFor(rest);
        tour.takePicture(u"chart-%1-hovered"_s.arg(chart));
        auto* view = tour.window().findChild<QQuickItem*>(item);
        view->forceActiveFocus(Qt::TabFocusReason);
        tour.press(Qt::Key_Right);
        tour.takePicture(u"chart-%1-keyboard"_s.arg(chart));
        tour.point(QString(), 0, Qt::NoButton);
        const std::pair<int, QStringList> folders[] = {
            {1, {u"Music"_s}},
            {40, {u"Documents"_s, u"Receipts"_s}},
            {41, {u"Documents"_s, u"Invoices"_s}},
            {5000, {u"Library"_s, u"Mail"_s, u"Messages"_s}},
        };
        for (const auto& [count, path] : folders) {
            enterFolder(scan, path);
            co_await tour.waitFor(u"folder"_s, isPictured);
            tour.takePicture(u"chart-%1-of-%2"_s.arg(chart).arg(count));
        }
    }
}

} // namespace brivane
