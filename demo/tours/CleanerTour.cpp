// Smart Clean: the welcome, a scan, what it found, the questions, a removal and what became of it.

#include "app/ShellViewModel.h"
#include "cleaner/CleanerViewModel.h"
#include "core/Composition.h"
#include "demo/DemoMachine.h"
#include "demo/Tour.h"

#include <QQuickItem>
#include <QQuickWindow>

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

/// Selects what the lists start without, so that there is something of each kind to remove.
void select(CleanerService& service, CleanerCategory::CategoryType type, qsizetype count)
{
    for (const auto& category : service.categories()) {
        if (category->type() != type)
            continue;
        const std::vector<CleanerItem> items = category->items();
        for (const CleanerItem& item : items) {
            if (count-- > 0)
                category->setItemSelected(item.id, true);
        }
    }
}

QCoro::Task<> showScan(Tour& tour, CleanerViewModel& cleaner)
{
    tour.point(QString(), 0, Qt::NoButton);
    tour.takePicture(u"cleaner-welcome"_s);
    const auto isHalfway = [&] {
        const auto& categories = tour.composition().get<CleanerService>().categories();
        return categories.size() > 6 && !categories[6]->isScanning();
    };
    bool isTaken = false;
    const auto connection =
        QObject::connect(&cleaner, &CleanerViewModel::totalsChanged, &tour.window(), [&] {
            if (!isTaken && isHalfway()) {
                isTaken = true;
                tour.capture(tour.window(), u"cleaner-scanning"_s);
            }
        });
    tour.point(u"emptyPageButton"_s, 0, Qt::LeftButton);
    const auto isScanned = [&] { return !cleaner.isScanning() && !cleaner.isWelcome(); };
    co_await tour.waitFor(u"junk"_s, isScanned);
    QObject::disconnect(connection);
    tour.point(QString(), 0, Qt::NoButton);
    tour.takePicture(u"cleaner-results"_s);
}

void showDetail(Tour& tour, CleanerViewModel& cleaner)
{
    cleaner.selectCategory(u"applicationCaches"_s);
    tour.takePicture(u"cleaner-category"_s);
    tour.point(u"learnMore"_s, 0, Qt::LeftButton);
    tour.point(QString(), 0, Qt::NoButton);
    tour.takePicture(u"cleaner-explanation"_s);
    cleaner.detail()->setShowLearnMore(false);
    cleaner.selectCategory(u"unusedDiskImages"_s);
    tour.settle();
    tour.point(u"chip1"_s, 0, Qt::LeftButton);
    tour.point(QString(), 0, Qt::NoButton);
    tour.takePicture(u"cleaner-chip"_s);
    tour.press(Qt::Key_F, Qt::ControlModifier);
    cleaner.detail()->setSelectedExtension({});
    tour.type("disk");
    tour.takePicture(u"cleaner-filtered"_s);
    tour.type("zzz");
    tour.takePicture(u"cleaner-filtered-empty"_s);
    tour.press(Qt::Key_Escape);
    tour.press(Qt::Key_Escape);
    tour.press(Qt::Key_Down);
    tour.press(Qt::Key_Space);
    tour.takePicture(u"cleaner-keyboard-items"_s);
    tour.press(Qt::Key_Left);
    tour.press(Qt::Key_Down);
    tour.takePicture(u"cleaner-keyboard-categories"_s);
    tour.point(u"cleanerItemRow"_s, 1, Qt::RightButton);
    tour.takePicture(u"cleaner-menu"_s);
    tour.press(Qt::Key_Escape);
    const QSize size = tour.window().size();
    tour.window().resize(tour.window().minimumSize());
    tour.takePicture(u"cleaner-low-window"_s);
    tour.window().resize(size);
    tour.settle();
}

QCoro::Task<> showRemoval(Tour& tour, CleanerViewModel& cleaner)
{
    CleanerService& service = tour.composition().get<CleanerService>();
    select(service, CleanerCategory::CategoryType::downloads, 3);
    select(service, CleanerCategory::CategoryType::applicationLeftovers, 99);
    tour.point(u"removeSelected"_s, 0, Qt::LeftButton);
    // The applications that run are looked for meanwhile.
    const auto areNamed = [&] { return !cleaner.runningAffectedApps().isEmpty(); };
    co_await tour.waitFor(u"running applications"_s, areNamed);
    tour.point(QString(), 0, Qt::NoButton);
    tour.takePicture(u"cleaner-confirm"_s);
    bool isTaken = false;
    const auto connection =
        QObject::connect(&service, &CleanerService::progressChanged, &tour.window(), [&] {
            const auto& progress = service.progress();
            if (!isTaken && progress && progress->completed > progress->total / 3) {
                isTaken = true;
                tour.capture(tour.window(), u"cleaner-progress"_s);
            }
        });
    tour.point(u"moveToQuarantine"_s, 0, Qt::LeftButton);
    const auto isDone = [&] { return cleaner.showResult() && cleaner.result()->hasDiskSpace(); };
    co_await tour.waitFor(u"result"_s, isDone);
    QObject::disconnect(connection);
    tour.point(QString(), 0, Qt::NoButton);
    tour.takePicture(u"cleaner-result-failed"_s);
    tour.point(u"showFailures"_s, 0, Qt::LeftButton);
    tour.point(QString(), 0, Qt::NoButton);
    tour.takePicture(u"cleaner-failures"_s);
    tour.press(Qt::Key_Escape);
    tour.settle();
    tour.takePicture(u"cleaner-afterwards"_s);
}

QCoro::Task<> removeTheRest(Tour& tour, CleanerViewModel& cleaner)
{
    CleanerService& service = tour.composition().get<CleanerService>();
    for (const auto& category : service.categories()) {
        const bool holdsRejected =
            category->type() == CleanerCategory::CategoryType::applicationLeftovers ||
            category->type() == CleanerCategory::CategoryType::largeFiles;
        if (holdsRejected) {
            const std::vector<CleanerItem> items = category->items();
            for (const CleanerItem& item : items)
                category->setItemSelected(item.id, false);
        } else if (!category->areAllSelected()) {
            category->toggleAll();
        }
    }
    tour.point(u"removeSelected"_s, 0, Qt::LeftButton);
    tour.takePicture(u"cleaner-confirm-rest"_s);
    tour.point(u"deletePermanently"_s, 0, Qt::LeftButton);
    const auto isDone = [&] { return cleaner.showResult() && cleaner.result()->hasDiskSpace(); };
    co_await tour.waitFor(u"result for good"_s, isDone);
    tour.point(QString(), 0, Qt::NoButton);
    tour.takePicture(u"cleaner-result"_s);
    tour.press(Qt::Key_Escape);
    tour.settle();
    // What has to stay: the user says so.
    while (!service.categories().empty())
        service.exclude(service.categories().front()->items().front().path);
    tour.point(u"cleanerRescan"_s, 0, Qt::LeftButton);
    const auto isScanned = [&] { return !cleaner.isScanning() && cleaner.isClean(); };
    co_await tour.waitFor(u"clean machine"_s, isScanned);
    tour.takePicture(u"cleaner-nothing"_s);
}

QCoro::Task<> showCleaner(Tour& tour)
{
    const auto isMade = [&] {
        return tour.shell().viewModel<CleanerViewModel>(AppMode::cleaner) != nullptr;
    };
    co_await tour.waitFor(u"Smart Clean"_s, isMade);
    tour.settle();
    CleanerViewModel& cleaner = *tour.shell().viewModel<CleanerViewModel>(AppMode::cleaner);
    QCoro::Task<> scanning = showScan(tour, cleaner);
    co_await scanning;
    showDetail(tour, cleaner);
    QCoro::Task<> removing = showRemoval(tour, cleaner);
    co_await removing;
    QCoro::Task<> ending = removeTheRest(tour, cleaner);
    co_await ending;
}

const Tour::Chapter chapter(AppMode::cleaner, &showCleaner);

} // namespace

} // namespace brivane
