#include "app/ShellViewModel.h"
#include "core/AppSettings.h"
#include "removal/QuarantineService.h"
#include "sandbox/HoldableClock.h"
#include "sandbox/demo/DemoMachine.h"
#include "sandbox/demo/Tour.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

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

} // namespace

QCoro::Task<> Tour::fillQuarantine(QuarantineService& quarantine)
{
    const SandboxMachine& machine = m_machine.machine();
    machine.file(u"~/Library/Caches/com.lumen.editor/previews/a.tile",
                 SandboxMachine::Size{77'400'000});
    for (const Removed& thing : removed) {
        if (thing.bytes > 0)
            machine.file(thing.path, SandboxMachine::Size{thing.bytes});
        m_clock.setBehind(std::chrono::hours(24 * thing.daysAgo));
        const QStringList paths{machine.path(thing.path)};
        const QString category = thing.category.toString();
        co_await quarantine.quarantine(paths, category);
    }
    m_clock.setBehind({});
    // Not handed over, and not to be lost either.
    machine.file(u"~/.Brivane_Quarantine/5D0A41C7_Budget 2023.numbers",
                 SandboxMachine::Size{1'480'300});
}

QCoro::Task<> Tour::showQuarantine(ShellViewModel& shell)
{
    // Another program has it first.
    auto other =
        std::make_unique<QuarantineService>(m_machine.host(), AppSettings::shared(),
                                            m_machine.machine().path(u"~/.Brivane_Quarantine"));
    co_await fillQuarantine(*other);
    shell.setAppMode(AppMode::quarantine);
    const auto isOpen = [&] { return shell.quarantine() != nullptr; };
    co_await waitFor(u"quarantine"_s, isOpen);
    point(QString(), 0, Qt::NoButton);
    takePicture(u"quarantine-read-only"_s);
    other.reset();
    point(u"tryAgain"_s, 0, Qt::LeftButton);
    const auto isWritable = [&] { return !shell.quarantine()->isReadOnly(); };
    co_await waitFor(u"quarantine of one's own"_s, isWritable);
    point(QString(), 0, Qt::NoButton);
    takePicture(u"quarantine-full"_s);
    point(u"quarantineRow"_s, 2, Qt::NoButton);
    takePicture(u"quarantine-hovered"_s);
    point(u"quarantineRow"_s, 2, Qt::RightButton);
    takePicture(u"quarantine-menu"_s);
    QTest::keyClick(m_window, Qt::Key_Escape);
    QTest::keyClick(m_window, Qt::Key_Down);
    point(QString(), 0, Qt::NoButton);
    takePicture(u"quarantine-keyboard"_s);
    for (const int row : {0, 3, 4})
        point(u"quarantineRow"_s, row, Qt::LeftButton);
    point(QString(), 0, Qt::NoButton);
    takePicture(u"quarantine-ticked"_s);
    QTest::keyClick(m_window, Qt::Key_F, Qt::ControlModifier);
    for (const char letter : {'d', 'u', 'p', 'l'})
        QTest::keyClick(m_window, letter);
    takePicture(u"quarantine-filtered"_s);
    QTest::keyClick(m_window, 'x');
    takePicture(u"quarantine-filtered-empty"_s);
    QTest::keyClick(m_window, Qt::Key_Escape);
    shell.quarantine()->enter();
    point(u"pill2"_s, 0, Qt::LeftButton);
    takePicture(u"quarantine-by-size"_s);
    point(u"restoreAll"_s, 0, Qt::LeftButton);
    takePicture(u"quarantine-restore-all"_s);
    QTest::keyClick(m_window, Qt::Key_Escape);
    settle();

    point(u"quarantineRow"_s, 9, Qt::NoButton);
    point(u"restoreRow"_s, 0, Qt::LeftButton);
    const auto isSaid = [&] { return !shell.quarantine()->toast()->visibleMessage().isEmpty(); };
    co_await waitFor(u"toast"_s, isSaid);
    point(QString(), 0, Qt::NoButton);
    takePicture(u"quarantine-toast"_s);
    shell.quarantine()->toast()->dismiss();

    point(u"purgeAll"_s, 0, Qt::LeftButton);
    takePicture(u"quarantine-purge"_s);
    QuarantineViewModel& quarantine = *shell.quarantine();
    const auto connection =
        QObject::connect(&quarantine, &QuarantineViewModel::progressChanged, m_window, [&] {
            if (quarantine.progress().completed == 4)
                capture(*m_window, u"quarantine-progress"_s);
        });
    point(u"confirmAccept"_s, 0, Qt::LeftButton);
    const auto isEmptied = [&] { return quarantine.itemCount() == 0 && !quarantine.hasProgress(); };
    co_await waitFor(u"emptied quarantine"_s, isEmptied);
    QObject::disconnect(connection);
    takePicture(u"quarantine-purged"_s);
    quarantine.toast()->dismiss();
    takePicture(u"quarantine-empty"_s);
    shell.setAppMode(AppMode::scanner);
}

} // namespace brivane
