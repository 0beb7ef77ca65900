#include "scanner/ScanCommands.h"

#include "core/ActivityTracker.h"
#include "core/Composition.h"
#include "core/Navigation.h"
#include "core/NotificationNames.h"
#include "scanner/ScanViewModel.h"

namespace brivane {

ScanCommands::ScanCommands(ScanViewModel& scan, Composition& composition)
    : QObject(&scan)
    , m_scan(scan)
    , m_navigation(composition.get<Navigation>())
    , m_tracker(composition.get<ActivityTracker>())
    , m_startupDisk(composition.host().locations.path(u"/"))
{
    NotificationCenter& notifications = composition.host().notifications;
    notifications.subscribe(NotificationNames::scanStartupDisk, this,
                            [this] { scanStartupDisk(); });
    notifications.subscribe(NotificationNames::rescan, this, [this] { m_scan.rescan(); });
    const auto move = [&](const QString& name, void (ScanViewModel::*step)()) {
        notifications.subscribe(name, this, [this, step] {
            if (m_navigation.appMode() == AppMode::scanner)
                (m_scan.*step)();
        });
    };
    move(NotificationNames::navigateUp, &ScanViewModel::drillUp);
    move(NotificationNames::navigateRoot, &ScanViewModel::drillToRoot);
    connect(&m_scan, &ScanViewModel::scanStateChanged, this, &ScanCommands::followState);
}

ScanCommands::~ScanCommands()
{
    m_tracker.setInactive(ActivityTracker::scanner);
}

void ScanCommands::scanStartupDisk()
{
    m_navigation.setAppMode(AppMode::scanner);
    m_scan.stopScan();
    m_scan.selectVolume(m_startupDisk);
    m_scan.startScan(m_startupDisk);
}

void ScanCommands::followState()
{
    if (m_scan.scanState() == ScanViewModel::Scanning)
        m_tracker.setActive(ActivityTracker::scanner);
    else
        m_tracker.setInactive(ActivityTracker::scanner);
}

} // namespace brivane
