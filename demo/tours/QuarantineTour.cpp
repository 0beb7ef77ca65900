// The quarantine: read-only, with things of every kind, asked, at work, done and empty.

#include "app/ShellViewModel.h"
#include "core/AppSettings.h"
#include "core/Composition.h"
#include "demo/DemoMachine.h"
#include "demo/Tour.h"
#include "removal/QuarantineService.h"
#include "removal/QuarantineViewModel.h"
#include "sandbox/HoldableClock.h"

#include <QQuickItem>
#include <QQuickWindow>

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

struct Removed {
    QStringView path;
    qint64 bytes;
    QStringView category;
    int daysAgo;
};

constexpr Removed removed[] = {
    {u"~/Downloads/Atlas 4.2 offline maps.zip", 1'840'250'000, u"Downloads", 6},
    {u"~/Downloads/Lumen-3.1.dmg", 412'300'500, u"Downloads", 6},
    {u"~/Downloads/Printer drivers.pkg", 96'770'120, u"Downloads", 5},
    {u"~/Documents/Contracts/Lease agreement (signed).pdf", 2'310'400, u"Duplicates", 5},
    {u"~/Movies/Rough cuts/Harbour at dawn - take 7.mov", 8'204'115'000, u"Large Files", 4},
    {u"~/Music/Recordings/Rehearsal 2021-11-03.wav", 318'554'112, u"Duplicates", 3},
    {u"~/Pictures/Lake/IMG_2041 copy.heic", 3'120'884, u"Similar Photos", 2},
    {u"~/Library/Logs/Lumen/render.log", 48'221, u"User Logs", 1},
    {u"~/Library/Caches/com.lumen.editor/previews", 0, u"User Caches", 0},
    {u"~/Library/LaunchAgents/com.lumen.updater.plist", 1'204, u"Startup Items", 0},
};

QCoro::Task<> fillQuarantine(Tour& tour, QuarantineService& quarantine)
{
    const SandboxMachine& machine = tour.machine().machine();
    machine.file(u"~/Library/Caches/com.lumen.editor/previews/a.tile",
                 SandboxMachine::Size{77'400'000});
    for (const Removed& thing : removed) {
        if (thing.bytes > 0)
            machine.file(thing.path, SandboxMachine::Size{thing.bytes});
        tour.clock().setBehind(std::chrono::hours(24 * thing.daysAgo));
        const QStringList paths{machine.path(thing.path)};
        const QString category = thing.category.toString();
        co_await quarantine.quarantine(paths, category);
    }
    tour.clock().setBehind({});
    // Not handed over, and not to be lost either.
    machine.file(u"~/.Brivane_Quarantine/5D0A41C7_Budget 2023.numbers",
                 SandboxMachine::Size{1'480'300});
}

QCoro::Task<> showQuarantine(Tour& tour)
{
    ShellViewModel& shell = tour.shell();
    // Another program has it first.
    auto other = std::make_unique<QuarantineService>(
        tour.machine().host(), tour.composition().get<AppSettings>(),
        tour.machine().machine().path(u"~/.Brivane_Quarantine"));
    co_await fillQuarantine(tour, *other);
    shell.setAppMode(AppMode::quarantine);
    const auto isOpen = [&] {
        return shell.viewModel<QuarantineViewModel>(AppMode::quarantine) != nullptr;
    };
    co_await tour.waitFor(u"quarantine"_s, isOpen);
    // The list was looked at while it filled, and while the days went by.
    shell.viewModel<QuarantineViewModel>(AppMode::quarantine)->enter();
    const auto isListed = [&] {
        return shell.viewModel<QuarantineViewModel>(AppMode::quarantine)->itemCount() >=
               static_cast<int>(std::size(removed));
    };
    co_await tour.waitFor(u"full quarantine"_s, isListed);
    shell.viewModel<QuarantineViewModel>(AppMode::quarantine)->refreshDays();
    tour.point(QString(), 0, Qt::NoButton);
    tour.takePicture(u"quarantine-read-only"_s);
    other.reset();
    tour.point(u"tryAgain"_s, 0, Qt::LeftButton);
    const auto isWritable = [&] {
        return !shell.viewModel<QuarantineViewModel>(AppMode::quarantine)->isReadOnly();
    };
    co_await tour.waitFor(u"quarantine of one's own"_s, isWritable);
    tour.point(QString(), 0, Qt::NoButton);
    tour.takePicture(u"quarantine-full"_s);
    tour.point(u"quarantineRow"_s, 2, Qt::NoButton);
    tour.takePicture(u"quarantine-hovered"_s);
    tour.point(u"quarantineRow"_s, 2, Qt::RightButton);
    tour.takePicture(u"quarantine-menu"_s);
    tour.press(Qt::Key_Escape);
    tour.press(Qt::Key_Down);
    tour.point(QString(), 0, Qt::NoButton);
    tour.takePicture(u"quarantine-keyboard"_s);
    for (const int row : {0, 3, 4})
        tour.point(u"quarantineRow"_s, row, Qt::LeftButton);
    tour.point(QString(), 0, Qt::NoButton);
    tour.takePicture(u"quarantine-ticked"_s);
    tour.press(Qt::Key_F, Qt::ControlModifier);
    tour.type("dupl");
    tour.takePicture(u"quarantine-filtered"_s);
    tour.type("x");
    tour.takePicture(u"quarantine-filtered-empty"_s);
    tour.press(Qt::Key_Escape);
    shell.viewModel<QuarantineViewModel>(AppMode::quarantine)->enter();
    tour.point(u"pill2"_s, 0, Qt::LeftButton);
    tour.takePicture(u"quarantine-by-size"_s);
    tour.point(u"restoreAll"_s, 0, Qt::LeftButton);
    tour.takePicture(u"quarantine-restore-all"_s);
    tour.press(Qt::Key_Escape);
    tour.settle();

    tour.point(u"quarantineRow"_s, 9, Qt::NoButton);
    tour.point(u"restoreRow"_s, 0, Qt::LeftButton);
    const auto isSaid = [&] {
        return !shell.viewModel<QuarantineViewModel>(AppMode::quarantine)
                    ->toast()
                    ->visibleMessage()
                    .isEmpty();
    };
    co_await tour.waitFor(u"toast"_s, isSaid);
    tour.point(QString(), 0, Qt::NoButton);
    tour.takePicture(u"quarantine-toast"_s);
    shell.viewModel<QuarantineViewModel>(AppMode::quarantine)->toast()->dismiss();

    tour.point(u"purgeAll"_s, 0, Qt::LeftButton);
    tour.takePicture(u"quarantine-purge"_s);
    QuarantineViewModel& quarantine = *shell.viewModel<QuarantineViewModel>(AppMode::quarantine);
    const auto connection =
        QObject::connect(&quarantine, &QuarantineViewModel::progressChanged, &tour.window(), [&] {
            if (quarantine.progress().completed == 4)
                tour.capture(tour.window(), u"quarantine-progress"_s);
        });
    tour.point(u"confirmAccept"_s, 0, Qt::LeftButton);
    const auto isEmptied = [&] { return quarantine.itemCount() == 0 && !quarantine.hasProgress(); };
    co_await tour.waitFor(u"emptied quarantine"_s, isEmptied);
    QObject::disconnect(connection);
    tour.takePicture(u"quarantine-purged"_s);
    quarantine.toast()->dismiss();
    tour.takePicture(u"quarantine-empty"_s);
}

const Tour::Chapter chapter(AppMode::quarantine, &showQuarantine, Tour::Chapter::Place::First);

} // namespace

} // namespace brivane
