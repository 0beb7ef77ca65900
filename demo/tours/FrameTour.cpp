// The window around the modules, while a finished scan is there.

#include "app/ShellViewModel.h"
#include "core/ActivityTracker.h"
#include "core/CleaningSessionState.h"
#include "core/Composition.h"
#include "demo/Tour.h"

#include <QQuickItem>
#include <QQuickWindow>

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<> showFrame(Tour& tour)
{
    ShellViewModel& shell = tour.shell();
    shell.setAppMode(AppMode::dashboard);
    shell.setHovered(AppMode::uninstaller, true);
    tour.composition().get<ActivityTracker>().setActive(ActivityTracker::smartClean);
    tour.takePicture(u"shell-hover-and-activity"_s);
    shell.setHovered(AppMode::uninstaller, false);
    tour.composition().get<ActivityTracker>().setInactive(ActivityTracker::smartClean);

    auto* sidebar = tour.window().findChild<QQuickItem*>(u"sidebarFlickable"_s);
    sidebar->setProperty("contentY",
                         sidebar->property("contentHeight").toReal() - sidebar->height());
    tour.takePicture(u"shell-scan-info"_s);

    auto* menu = tour.window().findChild<QObject*>(u"shellMenu"_s);
    QMetaObject::invokeMethod(menu, "open");
    tour.takePicture(u"shell-menu"_s);
    QMetaObject::invokeMethod(menu, "close");

    tour.composition().get<CleaningSessionState>().setSessionActive(true);
    tour.takePicture(u"shell-cleaning-session"_s);
    tour.composition().get<CleaningSessionState>().setSessionActive(false);

    const QSize size = tour.window().size();
    tour.window().resize(tour.window().minimumSize());
    const auto isLow = [&] { return tour.window().contentItem()->height() < size.height(); };
    co_await tour.waitFor(u"low window"_s, isLow);
    tour.point(QString(), 0, Qt::NoButton);
    tour.takePicture(u"shell-low-window"_s);
    shell.setAppMode(AppMode::scanner);
    tour.takePicture(u"scanner-low-window"_s);
    tour.window().resize(size);
    const auto isHigh = [&] { return tour.window().contentItem()->height() == size.height(); };
    co_await tour.waitFor(u"window as before"_s, isHigh);
    shell.setAppMode(AppMode::scanner);
}

const Tour::Chapter chapter(std::nullopt, &showFrame);

} // namespace

} // namespace brivane
