#include "sandbox/demo/Tour.h"

#include "app/BrivaneApp.h"
#include "app/ShellViewModel.h"
#include "cleaning/CleaningSessionState.h"
#include "core/ActivityTracker.h"
#include "sandbox/HoldableClock.h"
#include "sandbox/demo/DemoMachine.h"
#include "scanner/FileTree.h"
#include "scanner/ScanViewModel.h"

#include <QCoreApplication>
#include <QCoroTimer>
#include <QCursor>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QImage>
#include <QMetaEnum>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>

#include <cstdio>

namespace brivane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int polls = 500;
constexpr auto pollInterval = 20ms;
constexpr auto settlingTime = 60ms;

/// The child of `node` with this name; null if there is none.
FileNode* childOf(const FileNode& node, QStringView name)
{
    for (FileNode* child : node.children()) {
        if (child->name() == name)
            return child;
    }
    return nullptr;
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
    scan.togglePause();
    takePicture(u"scanner-paused"_s);
    scan.togglePause();
    m_clock.release();
    co_await waitFor(u"second scan"_s, isFinished);
    takePicture(u"scanner-completed"_s);

    const FileNodePtr root = scan.rootNode().node();
    if (FileNode* users = childOf(*root, u"Users")) {
        scan.drillDown(FileNodeRef(users->shared()));
        scan.drillDown(FileNodeRef(users->children().front()->shared()));
        takePicture(u"scanner-folder"_s);
    }

    co_await showShell(*app.shell());

    scan.showVolumes();
    scan.startScan(QString());
    const auto hasFailed = [&] { return scan.scanState() == ScanViewModel::Error; };
    co_await waitFor(u"failed scan"_s, hasFailed);
    takePicture(u"scanner-error"_s);
    co_return m_isWell;
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
    m_window->resize(size);
    const auto isHigh = [&] { return m_window->contentItem()->height() == size.height(); };
    co_await waitFor(u"window as before"_s, isHigh);
    shell.setAppMode(AppMode::scanner);
}

void Tour::takePicture(const QString& name)
{
    // What has changed is laid out in the next frames, which come by the event loop.
    const QDeadlineTimer settled(settlingTime);
    while (!settled.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    const QString file = m_pictures + u'/' + name + m_suffix + u".png"_s;
    m_window->grabWindow(); // what is new settles in its first frame
    if (!m_window->grabWindow().save(file)) {
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
