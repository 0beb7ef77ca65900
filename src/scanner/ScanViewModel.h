#pragma once

#include "platform/Host.h"
#include "scanner/DeleteService.h"
#include "scanner/NodeActions.h"
#include "scanner/ScanResult.h"
#include "scanner/ScanStats.h"
#include "scanner/TreeBrowser.h"
#include "scanner/VolumeSelection.h"
#include "scanner/WalkRunner.h"
#include "scanner/privileged/PrivilegedScanner.h"

#include <QCoroTask>
#include <QObject>
#include <QUrl>

namespace brivane {

class Composition;

/// Stands between the scanner's screens and the scanner: lists volumes, runs scans, hands out the
/// growing tree, and knows where in the tree the user is looking.
///
/// GUI thread. Walks run on a thread of their own, and what they report arrives through the event
/// loop. The tree changes in place while it grows, and scanTick goes up with each report. A start
/// of either kind ends the scan before it, of which nothing is shown any more. Neither a stop nor
/// the end of the view model waits for a walk.
class ScanViewModel : public brivane::TreeBrowser { // qualified, for qmllint
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application brings it")
    Q_PROPERTY(brivane::VolumeListModel* volumes READ volumeModel CONSTANT)
    Q_PROPERTY(QString selectedMountPoint READ selectedMountPoint NOTIFY selectedVolumeChanged)
    Q_PROPERTY(ScanState scanState READ scanState NOTIFY scanStateChanged)
    Q_PROPERTY(brivane::ScanStats* stats READ stats CONSTANT)
    Q_PROPERTY(brivane::NodeActions* actions READ actions CONSTANT)
    Q_PROPERTY(uint scanTick READ scanTick NOTIFY scanTickChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(bool isAdminScan READ isAdminScan NOTIFY isAdminScanChanged)
    Q_PROPERTY(bool isPaused READ isPaused NOTIFY isPausedChanged)

public:
    enum ScanState { Idle, Scanning, ScanningAdmin, Completed, Error };
    Q_ENUM(ScanState)

    explicit ScanViewModel(Host& host, QObject* parent = nullptr);
    /// With its ScanCommands.
    static std::unique_ptr<ScanViewModel> make(Composition& composition);
    /// Ends a scan that runs.
    ~ScanViewModel() override;

    /// Lists the volumes again, in the background: a volume that does not answer holds up nobody.
    /// The selected volume stays as it was; an empty selection becomes the first volume.
    Q_INVOKABLE void refreshVolumes() { m_volumes.refresh(); }
    /// Makes the volume at `mountPoint` the target of scans; nothing if it is not listed.
    Q_INVOKABLE void selectVolume(const QString& mountPoint) { m_volumes.select(mountPoint); }
    /// Scans a folder, and makes it the target of scans, as a volume of its own, once it is known:
    /// a link is resolved, since the walk itself does not follow any. A file stands for its folder,
    /// and is selected in it at the end, unless something else is by then.
    Q_INVOKABLE void scanFolder(const QString& path);
    /// The same for what a folder dialog or a drop gives; nothing unless it is the URL of a file of
    /// this machine.
    Q_INVOKABLE void scanFolderUrl(const QUrl& url);
    /// From a finished or failed scan back to the choice of a volume; the tree stays.
    Q_INVOKABLE void showVolumes();

    /// Returns at once. The walk begins as soon as the one before has ended.
    Q_INVOKABLE void startScan(const QString& path);
    /// startScan() of the selected volume; nothing while none is selected.
    Q_INVOKABLE void rescan();
    /// Adds to the tree, as administrator, what it does not hold yet; it stays on screen meanwhile.
    /// Without a tree it makes one. Returns at once; does nothing while such a scan runs. Where the
    /// user or the machine refuses, the state is what it was with that tree, and the reason is in
    /// the log.
    Q_INVOKABLE void scanAsAdmin(const QString& path);
    /// scanAsAdmin() of the selected volume; nothing while none is selected.
    Q_INVOKABLE void rescanAsAdmin();
    /// Ends the scan without waiting for the walk; the tree stays as far as it came.
    Q_INVOKABLE void stopScan();
    Q_INVOKABLE void togglePause();

    /// Blocks until no walk runs. For tests and benchmarks.
    void waitForWalk() { m_walks.waitForDone(); }

    [[nodiscard]] const QList<DiskInfo>& volumes() const { return m_volumes.model()->volumes(); }
    [[nodiscard]] VolumeListModel* volumeModel() { return m_volumes.model(); }
    [[nodiscard]] ScanStats* stats() { return &m_stats; }
    [[nodiscard]] DeleteService& deleteService() { return m_deleteService; }
    [[nodiscard]] NodeActions* actions() { return &m_actions; }
    [[nodiscard]] const std::optional<DiskInfo>& selectedVolume() const
    {
        return m_volumes.selected();
    }
    [[nodiscard]] QString selectedMountPoint() const { return m_volumes.selectedMountPoint(); }
    [[nodiscard]] ScanState scanState() const { return m_scanState; }
    [[nodiscard]] const std::optional<ScanResult>& scanResult() const { return m_scanResult; }
    [[nodiscard]] const ScanProgress& progress() const { return m_progress; }
    [[nodiscard]] uint scanTick() const { return m_scanTick; }
    [[nodiscard]] QString errorMessage() const { return m_errorMessage.value_or(QString()); }
    /// A scan as administrator has been started once.
    [[nodiscard]] bool isAdminScan() const { return m_isAdminScan; }
    [[nodiscard]] bool isPaused() const { return m_isPaused; }

    /// The record for a path that no volume is known for.
    static DiskInfo madeUpVolume(const QString& path);
    /// What `disk` has in use beyond `treeSize`; 0 when its figures do not tell.
    static std::uint64_t hiddenSpace(const DiskInfo& disk, std::uint64_t treeSize);

Q_SIGNALS:
    void selectedVolumeChanged();
    void scanStateChanged();
    void scanResultChanged();
    void progressChanged();
    void scanTickChanged();
    void errorMessageChanged();
    void isAdminScanChanged();
    void isPausedChanged();

private:
    QCoro::Task<> runAdminScan(QString path);
    void startWalk(const WalkRunner::Order& order);
    void startProgress();
    void receive(const ScanProgress& progress);
    void endWalk(const WalkRunner::Outcome& outcome);
    void finish(const WalkRunner::Outcome& outcome);
    void fail(const QString& message);

    void setScanState(ScanState state);
    void setProgress(const ScanProgress& progress);
    void setErrorMessage(const std::optional<QString>& message);
    void setPaused(bool paused);

    Host& m_host;
    VolumeSelection m_volumes;
    WalkRunner m_walks;
    PrivilegedScanner m_privilegedScanner;
    DeleteService m_deleteService;
    NodeActions m_actions;
    ScanStats m_stats;
    unsigned m_scanRequest = 0; ///< counts starts and stops: whom a late end belongs to
    std::chrono::nanoseconds m_scanStart{};
    std::optional<DiskInfo> m_scannedVolume; ///< the one selected at the start

    ScanState m_scanState = Idle;
    std::optional<ScanResult> m_scanResult;
    ScanProgress m_progress;
    uint m_scanTick = 0;
    std::optional<QString> m_errorMessage;
    bool m_isAdminScan = false;
    bool m_isPaused = false;
};

} // namespace brivane
