#include "app/ShellViewModel.h"

#include "app/KeyboardMap.h"
#include "app/ModeColors.h"
#include "app/ModuleScreens.h"
#include "cleaning/CleaningSessionState.h"
#include "core/ActivityTracker.h"
#include "core/NotificationNames.h"

#include <QPointer>

#include <utility>

namespace brivane {

ShellViewModel::ShellViewModel(Host& host, ScanViewModel& scanViewModel, ActivityTracker& tracker,
                               CleaningSessionState& cleaning, QuarantineProvider quarantine,
                               QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_scan(scanViewModel)
    , m_tracker(tracker)
    , m_cleaning(cleaning)
    , m_provideQuarantine(std::move(quarantine))
    , m_modes(*this)
{
    connect(&m_scan, &ScanViewModel::scanStateChanged, this,
            &ShellViewModel::backgroundActivityChanged);
    connect(&m_tracker, &ActivityTracker::activeProcessesChanged, this,
            &ShellViewModel::backgroundActivityChanged);
    connect(&m_cleaning, &CleaningSessionState::sessionActiveChanged, this,
            &ShellViewModel::navigationShownChanged);
    react(NotificationNames::scanStartupDisk, &ShellViewModel::scanStartupDisk);
    react(NotificationNames::rescan, &ShellViewModel::rescan);
    react(NotificationNames::navigateUp, &ShellViewModel::navigateUp);
    react(NotificationNames::navigateRoot, &ShellViewModel::navigateRoot);
}

void ShellViewModel::react(const QString& notification, void (ShellViewModel::*reaction)())
{
    m_host.notifications.subscribe(notification, this, [this, reaction] {
        if (isNavigationShown())
            (this->*reaction)();
    });
}

void ShellViewModel::setAppMode(AppMode::Mode mode)
{
    if (m_appMode == mode)
        return;
    m_appMode = mode;
    Q_EMIT appModeChanged();
    if (mode == AppMode::quarantine && !m_quarantine)
        openQuarantine();
    else
        Q_EMIT screenEntered();
}

QCoro::Task<> ShellViewModel::openQuarantine()
{
    if (std::exchange(m_isOpeningQuarantine, true))
        co_return;
    const QPointer<ShellViewModel> self(this);
    QCoro::Task<QuarantineService*> opening = m_provideQuarantine();
    QuarantineService* service = co_await opening;
    if (!self)
        co_return;
    m_quarantine = std::make_unique<QuarantineViewModel>(m_host, *service);
    if (m_appMode == AppMode::quarantine)
        Q_EMIT screenEntered();
}

void ShellViewModel::setHovered(AppMode::Mode mode, bool isHovered)
{
    if (isHovered == (m_hoveredMode == mode))
        return;
    m_hoveredMode = isHovered ? std::optional(mode) : std::nullopt;
    Q_EMIT hoveredModeChanged();
}

bool ShellViewModel::modeHasBackgroundActivity(AppMode::Mode mode) const
{
    switch (mode) {
    case AppMode::scanner:
        return m_scan.scanState() == ScanViewModel::Scanning;
    case AppMode::cleaner:
        return m_tracker.isActive(ActivityTracker::smartClean);
    case AppMode::duplicates:
        return m_tracker.isActive(ActivityTracker::duplicates);
    default:
        return false;
    }
}

bool ShellViewModel::isNavigationShown() const
{
    return !m_cleaning.isSessionActive();
}

void ShellViewModel::post(const QString& notification)
{
    m_host.notifications.post(notification);
}

void ShellViewModel::perform(const KeyboardCommand& command)
{
    if (!isNavigationShown())
        return;
    if (command.mode)
        setAppMode(*command.mode);
    else
        rescan();
}

QUrl ShellViewModel::screen() const
{
    return moduleScreen(m_appMode);
}

QColor ShellViewModel::accent() const
{
    return modeAccentColor(m_appMode);
}

void ShellViewModel::scanStartupDisk()
{
    const QString disk = m_host.locations.path(u"/");
    setAppMode(AppMode::scanner);
    m_scan.stopScan();
    m_scan.selectVolume(disk);
    m_scan.startScan(disk);
}

void ShellViewModel::rescan()
{
    m_scan.rescan();
}

void ShellViewModel::navigateUp()
{
    if (m_appMode == AppMode::scanner)
        m_scan.drillUp();
}

void ShellViewModel::navigateRoot()
{
    if (m_appMode == AppMode::scanner)
        m_scan.drillToRoot();
}

} // namespace brivane
