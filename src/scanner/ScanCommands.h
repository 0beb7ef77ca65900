#pragma once

#include <QObject>

namespace brivane {

class ActivityTracker;
class Composition;
class Navigation;
class ScanViewModel;

/// What the program's menu asks of the scanner, and what the sidebar is told of it.
///
/// "scanStartupDisk" shows the scanner and scans the disk that the machine started from, in place
/// of a scan that runs; "rescan" scans the selected volume; "navigateUp" and "navigateRoot" move
/// through the tree while it is on screen. A scan that runs, but for one as administrator, is in
/// the tracker. GUI thread.
class ScanCommands : public QObject {
    Q_OBJECT

public:
    /// Belongs to `scan`; what `composition` gives has to outlive it.
    ScanCommands(ScanViewModel& scan, Composition& composition);
    ~ScanCommands() override;

private:
    void scanStartupDisk();
    void followState();

    ScanViewModel& m_scan;
    Navigation& m_navigation;
    ActivityTracker& m_tracker;
    const QString m_startupDisk;
};

} // namespace brivane
