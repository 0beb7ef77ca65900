#include "scanner/ScanViewModel.h"

#include "core/Composition.h"
#include "core/NotificationNames.h"
#include "core/Publish.h"
#include "platform/PathText.h"
#include "scanner/ScanCommands.h"

#include <QCoroFuture>
#include <QPointer>

namespace brivane {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

ScanViewModel::ScanViewModel(Host& host, QObject* parent)
    : TreeBrowser(parent)
    , m_host(host)
    , m_volumes(host)
    , m_walks(host)
    , m_privilegedScanner(host)
    , m_deleteService(host)
    , m_actions(host, m_deleteService, this)
    , m_stats(*this, host.locations, host.clock, this)
{
    connect(&m_volumes, &VolumeSelection::selectedChanged, this,
            &ScanViewModel::selectedVolumeChanged);
    host.notifications.subscribe(NotificationNames::diskSpaceChanged, this,
                                 [this] { refreshVolumes(); });
    connect(&m_deleteService, &DeleteService::pendingItemsChanged, folderModel(),
            &FolderModel::noteMarks);
    connect(&m_walks, &WalkRunner::reported, this, &ScanViewModel::receive);
    connect(&m_walks, &WalkRunner::ended, this, &ScanViewModel::endWalk);
    connect(&m_walks, &WalkRunner::resolved, this, [this](const QString& folder) {
        m_scannedVolume = madeUpVolume(folder);
        m_volumes.select(m_scannedVolume);
    });
}

std::unique_ptr<ScanViewModel> ScanViewModel::make(Composition& composition)
{
    auto viewModel = std::make_unique<ScanViewModel>(composition.host());
    new ScanCommands(*viewModel, composition);
    return viewModel;
}

ScanViewModel::~ScanViewModel()
{
    stopScan();
}

void ScanViewModel::scanFolder(const QString& path)
{
    startWalk({.path = path, .isDropped = true});
}

void ScanViewModel::scanFolderUrl(const QUrl& url)
{
    const QString host = url.host();
    const bool isHere =
        host.isEmpty() || host == "localhost"_L1 || host == QSysInfo::machineHostName().toLower();
    // Percent signs keep the bytes of a name, which a conversion to text might not.
    if (url.isLocalFile() && isHere)
        scanFolder(PathText::fromBytes(
            QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1())));
}

void ScanViewModel::showVolumes()
{
    if (m_scanState == Completed || m_scanState == Error)
        setScanState(Idle);
}

void ScanViewModel::startScan(const QString& path)
{
    startWalk({.path = path, .needsVolume = !m_volumes.selected()});
}

void ScanViewModel::startWalk(const WalkRunner::Order& order)
{
    ++m_scanRequest;
    m_privilegedScanner.cancel();
    m_scanStart = m_host.clock.monotonicNow();
    m_scannedVolume = m_volumes.selected();
    m_walks.start(order);
    setPaused(false);
    // Before the state, or the screen of the scan would be made for the old tree.
    setSelectedNode({});
    setFocusedNode({});
    setRootNode({});
    setErrorMessage({});
    startProgress();
    setScanState(Scanning);
}

void ScanViewModel::startProgress()
{
    ScanProgress progress;
    progress.startTime = m_host.clock.now();
    setProgress(progress);
}

void ScanViewModel::rescan()
{
    if (m_volumes.selected())
        startScan(m_volumes.selected()->mountPoint);
}

void ScanViewModel::scanAsAdmin(const QString& path)
{
    if (m_scanState == ScanningAdmin)
        return;
    ++m_scanRequest;
    m_walks.abandon();
    m_scanStart = m_host.clock.monotonicNow();
    m_scannedVolume = m_volumes.selected();
    setPaused(false);
    if (!m_isAdminScan) {
        m_isAdminScan = true;
        Q_EMIT isAdminScanChanged();
    }
    setErrorMessage({});
    startProgress();
    setScanState(ScanningAdmin);
    runAdminScan(path);
}

QCoro::Task<> ScanViewModel::runAdminScan(QString path)
{
    const QPointer<ScanViewModel> self(this);
    const unsigned request = m_scanRequest;
    WalkRunner::Outcome outcome;
    std::optional<QString> failure;
    bool isRefused = false;
    try {
        QCoro::Task<FileNodePtr> scan = m_privilegedScanner.scanAsAdmin(path, rootNode().node());
        outcome.root = co_await scan;
    } catch (const PrivilegedScanner::AdminScanError&) {
        isRefused = true;
    } catch (const std::exception& error) {
        failure = QString::fromUtf8(error.what());
    }
    if (!self || request != m_scanRequest)
        co_return;
    if (isRefused)
        co_return setScanState(hasTree() ? Completed : Idle);
    if (failure)
        co_return fail(*failure);
    outcome.filesScanned = m_privilegedScanner.filesFound();
    if (!m_scannedVolume) {
        const QFuture<std::optional<DiskInfo>> future = m_volumes.infoFor(path);
        outcome.volume = co_await future;
        if (!self || request != m_scanRequest)
            co_return;
    }
    finish(outcome);
}

void ScanViewModel::rescanAsAdmin()
{
    if (m_volumes.selected())
        scanAsAdmin(m_volumes.selected()->mountPoint);
}

void ScanViewModel::receive(const ScanProgress& progress)
{
    // A walk that waited in line when it was paused began without knowing.
    if (m_isPaused)
        m_walks.pause();
    setProgress(progress);
    if (!progress.partialTree)
        return;
    setRootNode(progress.partialTree);
    if (!focusedNode().isValid())
        setFocusedNode(progress.partialTree);
    ++m_scanTick;
    folderModel()->refresh();
    Q_EMIT scanTickChanged();
}

void ScanViewModel::endWalk(const WalkRunner::Outcome& outcome)
{
    if (outcome.error)
        fail(outcome.error->shownDescription(m_host.locations));
    else
        finish(outcome);
}

void ScanViewModel::finish(const WalkRunner::Outcome& outcome)
{
    const std::chrono::duration<double> elapsed = m_host.clock.monotonicNow() - m_scanStart;
    ScanResult result;
    result.rootNode = outcome.root;
    if (m_scannedVolume)
        result.diskInfo = *m_scannedVolume;
    else
        result.diskInfo = outcome.volume.value_or(madeUpVolume(outcome.root->path()));
    result.totalFilesScanned = outcome.filesScanned;
    result.scanDuration = elapsed.count();
    result.hiddenSpaceBytes = hiddenSpace(result.diskInfo, outcome.root->size());
    result.scanDate = m_host.clock.now();
    setRootNode(outcome.root);
    setFocusedNode(outcome.root);
    // A scan as administrator keeps the selection, and may bring another tree.
    if (selectedNode().isValid() && &selectedNode().node()->tree() != &outcome.root->tree())
        setSelectedNode({});
    if (outcome.file && !selectedNode().isValid())
        setSelectedNode(FileNodeRef(outcome.file));
    folderModel()->refresh();
    m_deleteService.carryOver(outcome.root);
    m_scanResult = result;
    Q_EMIT scanResultChanged();
    setScanState(Completed);
}

void ScanViewModel::fail(const QString& message)
{
    setErrorMessage(message);
    setScanState(Error);
}

DiskInfo ScanViewModel::madeUpVolume(const QString& path)
{
    DiskInfo disk;
    disk.name = PathText::lastComponent(path);
    disk.mountPoint = path;
    disk.fileSystem = u"Unknown"_s;
    return disk;
}

std::uint64_t ScanViewModel::hiddenSpace(const DiskInfo& disk, std::uint64_t treeSize)
{
    if (disk.totalSize <= disk.freeSize)
        return 0;
    const std::uint64_t used = disk.totalSize - disk.freeSize;
    return used >= treeSize ? used - treeSize : 0;
}

void ScanViewModel::stopScan()
{
    ++m_scanRequest;
    m_walks.stop();
    m_privilegedScanner.cancel();
    if (m_scanState == Scanning || m_scanState == ScanningAdmin)
        setScanState(Idle);
    setPaused(false);
}

void ScanViewModel::togglePause()
{
    if (m_isPaused) {
        setPaused(false);
        m_walks.resume();
    } else {
        setPaused(true);
        m_walks.pause();
    }
}

void ScanViewModel::setScanState(ScanState state)
{
    publish(m_scanState, state, this, &ScanViewModel::scanStateChanged);
}

void ScanViewModel::setProgress(const ScanProgress& progress)
{
    m_progress = progress;
    Q_EMIT progressChanged();
}

void ScanViewModel::setErrorMessage(const std::optional<QString>& message)
{
    publish(m_errorMessage, message, this, &ScanViewModel::errorMessageChanged);
}

void ScanViewModel::setPaused(bool paused)
{
    publish(m_isPaused, paused, this, &ScanViewModel::isPausedChanged);
}

} // namespace brivane
