#include "app/MenuCommands.h"
#include "app/Module.h"
#include "core/ActivityTracker.h"
#include "core/CleaningSessionState.h"
#include "core/NotificationNames.h"
#include "removal/QuarantineViewModel.h"
#include "tests/support/AppWindow.h"

#include <QMetaEnum>

using namespace Qt::StringLiterals;
using namespace brivane;
using namespace brivane::testing;

namespace {

QStringList warnings;
QtMessageHandler previousHandler = nullptr;

void collect(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type != QtDebugMsg && type != QtInfoMsg)
        warnings += message;
    previousHandler(type, context, message);
}

} // namespace

TEST(Shell, OnboardingEndsForGood)
{
    const AppMachine machine(Access::Missing);
    {
        AppWindow app(machine);
        int quits = 0;
        app.host().notifications.subscribe(quitNotification, &app.app(), [&] { ++quits; });
        app.press(Qt::Key_Q, Qt::ControlModifier);
        EXPECT_EQ(quits, 1);
        EXPECT_TRUE(app.item(u"onboardingPage"_s));
        EXPECT_FALSE(app.item(u"mainView"_s));
        app.app().setOnboarded(false);
        EXPECT_FALSE(app.app().isOnboarded());
        app.press(Qt::Key_Space);
        EXPECT_TRUE(app.shows(u"mainView"_s));
        EXPECT_FALSE(app.item(u"onboardingPage"_s));
        app.press(Qt::Key_1, Qt::ControlModifier);
        AppWindow::step();
        EXPECT_EQ(app.shell().appMode(), AppMode::scanner) << "the keys came too late";
        app.press(Qt::Key_Q, Qt::ControlModifier);
        EXPECT_EQ(quits, 2);
    }
    AppWindow again(machine);
    EXPECT_TRUE(again.item(u"mainView"_s));
    AppWindow granted{AppMachine()};
    EXPECT_TRUE(granted.item(u"mainView"_s)) << "although access is there";
}

TEST(Shell, EveryModuleShowsItsScreenWithoutAWarning)
{
    warnings.clear();
    previousHandler = qInstallMessageHandler(collect);
    {
        AppWindow app{AppMachine()};
        ShellViewModel& shell = app.shell();
        for (const AppMode::Mode mode : AppMode::allModes()) {
            ASSERT_TRUE(app.click(u"mode-"_s + AppMode::title(mode))) << mode;
            EXPECT_EQ(shell.appMode(), mode);
            const auto row = std::ranges::find(modules(), mode, &Module::mode);
            const bool isThere = row != modules().end() && !row->screen.isEmpty();
            QQuickItem* module = app.item(u"module"_s);
            EXPECT_TRUE(waitUntil([&] {
                const QString file = module->property("source").toUrl().path();
                return file.endsWith(isThere ? row->screen : "App/MissingModule.qml"_L1) &&
                       !advanceScreen(app.window());
            })) << mode;
            const QString missing = u"This module is not part of this version yet."_s;
            EXPECT_EQ(findText(app.window(), missing) != nullptr, !isThere) << mode;
        }
    }
    qInstallMessageHandler(previousHandler);
    EXPECT_EQ(warnings, QStringList());
}

TEST(Shell, NoKeyReachesAScreenThatWasLeftWhileTheNextOneOpens)
{
    AppWindow app{AppMachine()};
    app.shell().setAppMode(AppMode::scanner);
    ASSERT_TRUE(app.shows(u"scannerContentView"_s));
    app.shell().setAppMode(AppMode::quarantine);
    ASSERT_TRUE(app.shell().screen().isEmpty());
    EXPECT_FALSE(findItem(app.window(), u"scannerContentView"_s));
    ASSERT_TRUE(app.shows(u"quarantineView"_s));
    EXPECT_TRUE(app.item(u"module"_s)->hasActiveFocus());
}

TEST(Shell, AScreenIsMadeOnceWhatItWorksOnIsThere)
{
    const AppMachine machine;
    const std::unique_ptr<OwnedHost> host = machine.start();
    const Module rows[] = {
        {AppMode::dashboard, "Removal/screens/QuarantineView.qml"_L1, &make<QuarantineViewModel>}};
    {
        Composition composition(host->host());
        const ShellViewModel gone(composition, rows);
    }
    AppWindow::step(); // what was under way ends, and finds nobody
    Composition composition(host->host());
    const ShellViewModel shell(composition, rows);
    EXPECT_TRUE(shell.screen().isEmpty()) << "it has nothing to work on";
    EXPECT_TRUE(waitUntil([&] { return !shell.screen().isEmpty(); }));
    EXPECT_TRUE(shell.screenProperties().contains(u"viewModel"_s));
}

TEST(Shell, ScanGoesOnWhileAnotherModuleIsShown)
{
    const AppMachine machine;
    AppWindow app{machine};
    ShellViewModel& shell = app.shell();
    shell.setAppMode(AppMode::scanner);
    app.clock().holdAfter(3);
    app.scan().rescan();
    shell.setAppMode(AppMode::maintenance);
    app.clock().release();
    ASSERT_TRUE(app.isScanned());
    app.picture(); // which lays out what has come
    app.item(u"volume-Macintosh HD"_s)->forceActiveFocus(Qt::TabFocusReason);
    for (const QString& card : {u"scanInfoCard"_s, u"hiddenSpaceCard"_s}) {
        app.press(Qt::Key_Down);
        const QQuickItem* stop = app.window().activeFocusItem();
        EXPECT_EQ(stop, app.item(card));
        const QQuickItem* sidebar = app.item(u"sidebarFlickable"_s);
        EXPECT_LE(stop->mapToItem(sidebar, {0, stop->height()}).y(), sidebar->height());
    }
    shell.setAppMode(AppMode::scanner);
    EXPECT_TRUE(app.item(u"completedPhaseView"_s));
}

TEST(Shell, OnlyWorkOfAModuleInTheSidebarMarksIt)
{
    const AppMachine machine;
    AppWindow app{machine};
    ShellViewModel& shell = app.shell();
    const auto busy = [&] {
        QList<AppMode::Mode> modes;
        for (const AppMode::Mode mode : AppMode::allModes()) {
            if (shell.modeHasBackgroundActivity(mode))
                modes += mode;
        }
        return modes;
    };
    ActivityTracker& tracker = app.composition().get<ActivityTracker>();
    tracker.setActive(ActivityTracker::similarPhotos);
    EXPECT_TRUE(busy().isEmpty());
    tracker.setActive(ActivityTracker::duplicates);
    EXPECT_EQ(busy(), QList{AppMode::duplicates});
    EXPECT_TRUE(app.item(u"busyDot"_s));
    tracker.setInactive(ActivityTracker::duplicates);
    EXPECT_FALSE(app.item(u"busyDot"_s));
    app.scan().rescan();
    EXPECT_EQ(busy(), QList{AppMode::scanner});
    ASSERT_TRUE(app.isScanned());
    EXPECT_TRUE(busy().isEmpty());
}

TEST(Shell, HoverOfARowThatWasLeftLaterDoesNotClearTheNext)
{
    AppWindow app{AppMachine()};
    ShellViewModel& shell = app.shell();
    shell.setHovered(AppMode::cleaner, true);
    shell.setHovered(AppMode::privacy, true);
    shell.setHovered(AppMode::cleaner, false);
    EXPECT_EQ(shell.hoveredMode(), AppMode::privacy);
}

TEST(Shell, TwoMachinesInOneProcessKnowNothingOfEachOther)
{
    AppWindow app{AppMachine()};
    AppWindow other{AppMachine()};
    const ShellViewModel& shell = other.shell();
    app.clock().holdAfter(3);
    app.scan().rescan();
    app.shell().setAppMode(AppMode::quarantine);
    app.composition().get<AppSettings>().setQuarantinePurgeDays(3);
    app.composition().get<CleaningSessionState>().setSessionActive(true);
    EXPECT_FALSE(shell.modeHasBackgroundActivity(AppMode::scanner));
    EXPECT_EQ(shell.appMode(), AppMode::dashboard);
    EXPECT_EQ(other.composition().get<AppSettings>().quarantinePurgeDays(), 7);
    EXPECT_TRUE(shell.isNavigationShown());
}
