#include "sandbox/demo/Tour.h"

#include "app/BrivaneApp.h"
#include "app/ShellViewModel.h"
#include "cleaning/CleaningSessionState.h"
#include "core/ActivityTracker.h"
#include "sandbox/HoldableClock.h"
#include "sandbox/MakingScreen.h"
#include "sandbox/demo/DemoMachine.h"
#include "scanner/FileTree.h"
#include "scanner/ScanViewModel.h"

#include <QCoreApplication>
#include <QCoroTimer>
#include <QCursor>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaEnum>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QQuickWindow>
#include <QScreen>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace brivane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int polls = 500;
constexpr auto pollInterval = 20ms;
constexpr auto promptTime = 1500ms; // until the administrator agrees
constexpr auto settlingTime = 60ms;
constexpr auto tipTime = 600ms; // until a tip shows

/// The child of `node` with this name; null if there is none.
FileNode* childOf(const FileNode& node, QStringView name)
{
    for (FileNode* child : node.children()) {
        if (child->name() == name)
            return child;
    }
    return nullptr;
}

/// The middles of the visible items with this name, from the top down.
std::vector<QPoint> placesOf(const QQuickItem& root, const QString& name)
{
    std::vector<QPoint> places;
    QList<QQuickItem*> open = root.childItems();
    while (!open.isEmpty()) {
        QQuickItem* item = open.takeLast();
        if (!item->isVisible())
            continue;
        if (item->objectName() == name)
            places.push_back(item->mapToScene(item->boundingRect().center()).toPoint());
        open += item->childItems();
    }
    std::ranges::sort(places, {}, &QPoint::y);
    return places;
}

} // namespace

Tour::Tour(DemoMachine& machine, HoldableClock& clock, QString pictures, QString suffix)
    : m_machine(machine)
    , m_clock(clock)
    , m_pictures(std::move(pictures))
    , m_suffix(std::move(suffix))
{
}

QCoro::Task<bool> Tour::run()
{
    // Without a display the pointer rests in a corner of the window, and hovers there.
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight() +
                    QPoint(5000, 5000));
    BrivaneApp app(m_machine.host());
    m_window = app.open();
    if (!m_window)
        co_return false;
    if (!app.isOnboarded()) {
        takePicture(u"onboarding"_s);
        app.setOnboarded(true);
    }

    ScanViewModel& scan = *app.shell()->scanViewModel();
    app.shell()->setAppMode(AppMode::scanner);
    const auto isListed = [&] { return scan.volumes().size() == 2; };
    co_await waitFor(u"volumes"_s, isListed);
    takePicture(u"scanner-volumes"_s);

    const QString disk = m_machine.volumes().startupDisk();
    co_await showScan(scan);
    co_await showRows(scan);
    co_await showCharts(scan);
    co_await showAdminScan(scan);
    co_await showQuarantine(*app.shell());
    co_await showShell(*app.shell());

    scan.showVolumes();
    scan.startScan(m_machine.machine().path(u"/Volumes/Backup"));
    const auto hasFailed = [&] { return scan.scanState() == ScanViewModel::Error; };
    co_await waitFor(u"failed scan"_s, hasFailed);
    takePicture(u"scanner-error"_s);
    co_await showGallery();
    co_return m_isWell;
}

QCoro::Task<> Tour::showScan(ScanViewModel& scan)
{
    const QString disk = m_machine.volumes().startupDisk();
    m_clock.holdAfter(100);
    scan.startScan(disk);
    takePicture(u"scanner-initializing"_s);
    m_clock.release();
    const auto isFinished = [&] { return scan.scanState() == ScanViewModel::Completed; };
    co_await waitFor(u"first scan"_s, isFinished);

    m_clock.holdAfter(6000);
    scan.startScan(disk);
    const auto hasReported = [&] { return scan.progress().filesScanned > 4500; };
    co_await waitFor(u"report"_s, hasReported);
    takePicture(u"scanner-scanning"_s);
    point(u"treemapToggle"_s, 0, Qt::LeftButton);
    takePicture(u"scanner-scanning-treemap"_s);
    scan.togglePause();
    takePicture(u"scanner-paused"_s);
    scan.togglePause();
    m_clock.release();
    co_await waitFor(u"second scan"_s, isFinished);
    takePicture(u"scanner-completed"_s);
    point(u"treemapToggle"_s, 0, Qt::LeftButton);
    takePicture(u"scanner-completed-treemap"_s);
}

QCoro::Task<> Tour::showRows(ScanViewModel& scan)
{
    enter(scan, {});
    takePicture(u"scanner-folder"_s);
    point(u"folderTreeRow"_s, 3, Qt::NoButton);
    takePicture(u"scanner-row-hovered"_s);
    point(u"folderTreeRow"_s, 4, Qt::RightButton);
    takePicture(u"scanner-row-menu"_s);
    QTest::keyClick(m_window, Qt::Key_Escape);
    enter(scan, {u"Downloads"_s});
    point(u"folderTreeRow"_s, 2, Qt::LeftButton);
    for (const int row : {0, 1, 4}) {
        point(u"folderTreeRow"_s, row, Qt::NoButton);
        point(u"stageRow"_s, 0, Qt::LeftButton);
    }
    point(QString(), 0, Qt::NoButton);
    takePicture(u"scanner-staged"_s);
    point(u"stagedButton"_s, 0, Qt::LeftButton);
    takePicture(u"scanner-staged-list"_s);
    point(u"popupAction"_s, 0, Qt::LeftButton);
    enter(scan, {u"Library"_s, u"Application Support"_s});
    takePicture(u"scanner-unreadable-folder"_s);
    point(u"issuesButton"_s, 0, Qt::LeftButton);
    takePicture(u"scanner-unreadable-list"_s);
    QTest::keyClick(m_window, Qt::Key_Escape);
    co_return;
}

void Tour::enter(ScanViewModel& scan, const QStringList& path)
{
    scan.drillToRoot();
    for (const QString& name : QStringList{u"Users"_s, u"robin"_s} + path) {
        if (FileNode* folder = childOf(*scan.focusedNode().node(), name))
            scan.drillDown(FileNodeRef(folder->shared()));
    }
}

QCoro::Task<> Tour::showCharts(ScanViewModel& scan)
{
    const auto isPictured = [&] {
        return scan.folderModel()->directory() == scan.focusedNode().node() &&
               scan.folderModel()->rowCount() > 0;
    };
    for (const QString& chart : {u"treemap"_s, u"sunburst"_s}) {
        const QString item = chart == u"treemap"_s ? u"treemapView"_s : u"sunburstChart"_s;
        enter(scan, {});
        point(chart + u"Toggle"_s, 0, Qt::LeftButton);
        point(QString(), 0, Qt::NoButton);
        takePicture(u"chart-%1"_s.arg(chart));
        // Beside the middle, which is a hole in one of them.
        point(item, 0, Qt::NoButton, QPoint(60, 90));
        const std::chrono::milliseconds rest = tipTime;
        co_await QCoro::sleepFor(rest);
        takePicture(u"chart-%1-hovered"_s.arg(chart));
        auto* view = m_window->findChild<QQuickItem*>(item);
        view->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(m_window, Qt::Key_Right);
        takePicture(u"chart-%1-keyboard"_s.arg(chart));
        point(QString(), 0, Qt::NoButton);
        const std::pair<int, QStringList> folders[] = {
            {1, {u"Music"_s}},
            {40, {u"Documents"_s, u"Receipts"_s}},
            {41, {u"Documents"_s, u"Invoices"_s}},
            {5000, {u"Library"_s, u"Mail"_s, u"Messages"_s}},
        };
        for (const auto& [count, path] : folders) {
            enter(scan, path);
            co_await waitFor(u"folder"_s, isPictured);
            takePicture(u"chart-%1-of-%2"_s.arg(chart).arg(count));
        }
    }
}

QCoro::Task<> Tour::showAdminScan(ScanViewModel& scan)
{
    const QString sealed = m_machine.machine().path(u"~/Library/Application Support/Sealed Vault");
    const QJsonObject vault{{u"path"_s, sealed + u"/vault.db"_s},
                            {u"name"_s, u"vault.db"_s},
                            {u"size"_s, 200'000'000},
                            {u"isDir"_s, false},
                            {u"parentPath"_s, sealed}};
    CommandAnswer answer;
    answer.output = QJsonDocument(vault).toJson(QJsonDocument::Compact) + '\n';
    answer.delay = promptTime;
    SandboxCommand prompt = m_machine.machine().command(u"/usr/bin/osascript");
    prompt.answer(answer);
    m_machine.machine().command(u"/usr/bin/swiftc");
    enter(scan, {});
    scan.scanAsAdmin(m_machine.volumes().startupDisk());
    takePicture(u"scanner-admin"_s);
    const auto isFinished = [&] { return scan.scanState() == ScanViewModel::Completed; };
    co_await waitFor(u"scan as administrator"_s, isFinished);
    prompt.forgetAnswers();
    takePicture(u"scanner-admin-completed"_s);
}

QCoro::Task<> Tour::showGallery()
{
    QQuickView view;
    view.engine()->addImportPath(u"qrc:/qt/qml"_s);
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.resize(1200, 750);
    view.setSource(QUrl(u"qrc:/qt/qml/Brivane/Components/Gallery.qml"_s));
    view.show();
    takePicture(view, u"gallery"_s);
    auto* flickable = view.rootObject()->findChild<QQuickItem*>(u"galleryFlickable"_s);
    flickable->setProperty("contentY",
                           flickable->property("contentHeight").toReal() - flickable->height());
    takePicture(view, u"gallery-end"_s);
    co_return;
}

void Tour::point(const QString& name, int number, Qt::MouseButton button, const QPoint& offset)
{
    // An empty name: away from everything.
    QPoint place = QPoint(m_window->width(), m_window->height()) - QPoint(2, 2);
    if (!name.isEmpty()) {
        const std::vector<QPoint> places = placesOf(*m_window->contentItem(), name);
        if (static_cast<std::size_t>(number) >= places.size()) {
            std::fprintf(stderr, "The tour found no %s\n", qPrintable(name));
            m_isWell = false;
            return;
        }
        place = places[static_cast<std::size_t>(number)] + offset;
    }
    QTest::mouseMove(m_window, place);
    if (button != Qt::NoButton)
        QTest::mouseClick(m_window, button, {}, place);
    settle();
}

QCoro::Task<> Tour::showShell(ShellViewModel& shell)
{
    const auto names = QMetaEnum::fromType<AppMode::Mode>();
    for (const AppMode::Mode mode : AppMode::allModes()) {
        shell.setAppMode(mode);
        if (mode != AppMode::scanner)
            takePicture(u"module-"_s + QString::fromLatin1(names.valueToKey(mode)));
    }
    shell.setAppMode(AppMode::dashboard);
    shell.setHovered(AppMode::uninstaller, true);
    ActivityTracker::shared().setActive(ActivityTracker::smartClean);
    takePicture(u"shell-hover-and-activity"_s);
    shell.setHovered(AppMode::uninstaller, false);
    ActivityTracker::shared().setInactive(ActivityTracker::smartClean);

    auto* sidebar = m_window->findChild<QQuickItem*>(u"sidebarFlickable"_s);
    sidebar->setProperty("contentY",
                         sidebar->property("contentHeight").toReal() - sidebar->height());
    takePicture(u"shell-scan-info"_s);

    auto* menu = m_window->findChild<QObject*>(u"shellMenu"_s);
    QMetaObject::invokeMethod(menu, "open");
    takePicture(u"shell-menu"_s);
    QMetaObject::invokeMethod(menu, "close");

    CleaningSessionState::shared().setSessionActive(true);
    takePicture(u"shell-cleaning-session"_s);
    CleaningSessionState::shared().setSessionActive(false);

    const QSize size = m_window->size();
    m_window->resize(m_window->minimumSize());
    const auto isLow = [&] { return m_window->contentItem()->height() < size.height(); };
    co_await waitFor(u"low window"_s, isLow);
    takePicture(u"shell-low-window"_s);
    shell.setAppMode(AppMode::scanner);
    takePicture(u"scanner-low-window"_s);
    m_window->resize(size);
    const auto isHigh = [&] { return m_window->contentItem()->height() == size.height(); };
    co_await waitFor(u"window as before"_s, isHigh);
    shell.setAppMode(AppMode::scanner);
}

void Tour::settle()
{
    // What has changed is laid out in the next frames, which come by the event loop.
    QDeadlineTimer settled(settlingTime);
    while (!settled.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        if (m_window && isMakingScreen(*m_window))
            settled.setRemainingTime(settlingTime);
    }
}

void Tour::takePicture(QQuickWindow& window, const QString& name)
{
    settle();
    capture(window, name);
}

void Tour::capture(QQuickWindow& window, const QString& name)
{
    const QString file = m_pictures + u'/' + name + m_suffix + u".png"_s;
    window.grabWindow(); // what is new settles in its first frame
    if (!window.grabWindow().save(file)) {
        std::fprintf(stderr, "%s could not be written\n", qPrintable(file));
        m_isWell = false;
    }
}

QCoro::Task<> Tour::waitFor(QString state, std::function<bool()> isReached)
{
    for (int poll = 0; poll < polls; ++poll) {
        if (isReached())
            co_return;
        const std::chrono::milliseconds interval = pollInterval;
        co_await QCoro::sleepFor(interval);
    }
    std::fprintf(stderr, "The tour waited in vain for: %s\n", qPrintable(state));
    m_isWell = false;
}

} // namespace brivane
