#include "scanner/ScanViewModel.h"

#include "core/NotificationNames.h"
#include "platform/PathText.h"

#include <QCoroFuture>
#include <QPointer>
#include <QtConcurrentRun>

#include <cstdlib>

namespace brivane {

using namespace Qt::StringLiterals;

/// Stands for one started scan; it outlives the interest in it.
struct ScanViewModel::ScanTask {
    std::atomic<bool> isCancelled{false};
};

/// What the walking thread brings back.
struct ScanViewModel::Outcome {
    FileNodePtr root;
    std::optional<DiskInfo> volume; ///< when no volume was selected
    std::optional<DiskScanner::ScanError> error;
};

ScanViewModel::ScanViewModel(Host& host, QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_enumerator(host.volumes)
    , m_scanner(host.clock)
    , m_privilegedScanner(host)
    , m_deleteService(host)
    , m_actions(host, m_deleteService, this)
    , m_volumeModel(host.locations.path(u"/"))
    , m_stats(*this, host.clock, this)
{
    m_walkThread.setMaxThreadCount(1);
    refreshVolumes();
    host.notifications.subscribe(NotificationNames::diskSpaceChanged, this,
                                 [this] { refreshVolumes(); });
    connect(&m_deleteService, &DeleteService::pendingItemsChanged, &m_folderModel,
            &FolderModel::noteMarks);
}

ScanViewModel::~ScanViewModel()
{
    stopScan();
    m_walkThread.waitForDone();
}

void ScanViewModel::refreshVolumes()
{
    listVolumes();
}

QCoro::Task<> ScanViewModel::listVolumes()
{
    const QPointer<ScanViewModel> self(this);
    const unsigned request = ++m_volumeRequest;
    const QFuture<QList<DiskInfo>> future =
        QtConcurrent::run([enumerator = m_enumerator] { return enumerator.enumerateVolumes(); });
    const QList<DiskInfo> found = co_await future;
    if (!self || request != m_volumeRequest)
        co_return;
    m_volumeModel.setVolumes(found);
    Q_EMIT volumesChanged();
    if (!m_selectedVolume && !found.isEmpty())
        setSelectedVolume(found.first());
}

void ScanViewModel::selectVolume(const QString& mountPoint)
{
    for (const DiskInfo& volume : volumes()) {
        if (volume.mountPoint == mountPoint)
            return setSelectedVolume(volume);
    }
}

void ScanViewModel::scanFolder(const QString& path)
{
    QString folder = path;
    if (char* resolved = ::realpath(PathText::toBytes(path).constData(), nullptr)) {
        folder = PathText::fromBytes(resolved);
        std::free(resolved);
    }
    setSelectedVolume(madeUpVolume(folder));
    startScan(folder);
}

void ScanViewModel::scanFolderUrl(const QUrl& url)
{
    // Percent signs keep the bytes of a name, which a conversion to text might not.
    if (url.isLocalFile())
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
    setScanState(Scanning);
    startProgress();
    setErrorMessage({});
    setRootNode({});
    setFocusedNode({});
    setSelectedNode({});
    m_scanTask = std::make_shared<ScanTask>();
    runScan(path, m_scanTask);
}

void ScanViewModel::startProgress()
{
    ScanProgress progress;
    progress.startTime = m_host.clock.now();
    setProgress(progress);
}

void ScanViewModel::rescan()
{
    if (m_selectedVolume)
        startScan(m_selectedVolume->mountPoint);
}

void ScanViewModel::scanAsAdmin(const QString& path)
{
    setScanState(ScanningAdmin);
    if (!m_isAdminScan) {
        m_isAdminScan = true;
        Q_EMIT isAdminScanChanged();
    }
    startProgress();
    setErrorMessage({});
    m_scanTask = std::make_shared<ScanTask>();
    runAdminScan(path, m_scanTask);
}

QCoro::Task<> ScanViewModel::runAdminScan(QString path, std::shared_ptr<ScanTask> task)
{
    const QPointer<ScanViewModel> self(this);
    const auto start = m_host.clock.monotonicNow();
    Outcome outcome;
    std::optional<QString> failure;
    bool isRefused = false;
    try {
        QCoro::Task<FileNodePtr> scan = m_privilegedScanner.scanAsAdmin(path, m_rootNode.node());
        outcome.root = co_await scan;
    } catch (const PrivilegedScanner::AdminScanError&) {
        isRefused = true;
    } catch (const std::exception& error) {
        failure = QString::fromUtf8(error.what());
    }
    if (!self || task->isCancelled)
        co_return;
    if (isRefused)
        co_return setScanState(hasTree() ? Completed : Idle);
    if (failure)
        co_return fail(*failure);
    if (!m_selectedVolume) {
        const QFuture<std::optional<DiskInfo>> future = QtConcurrent::run(
            [path, enumerator = m_enumerator] { return enumerator.getVolumeInfo(path); });
        outcome.volume = co_await future;
        if (!self || task->isCancelled)
            co_return;
    }
    const std::chrono::duration<double> elapsed = m_host.clock.monotonicNow() - start;
    finish(outcome, m_privilegedScanner.filesFound(), elapsed.count());
}

void ScanViewModel::rescanAsAdmin()
{
    if (m_selectedVolume)
        scanAsAdmin(m_selectedVolume->mountPoint);
}

QCoro::Task<> ScanViewModel::runScan(QString path, std::shared_ptr<ScanTask> task)
{
    const QPointer<ScanViewModel> self(this);
    const auto start = m_host.clock.monotonicNow();
    const bool needsVolume = !m_selectedVolume;
    const QFuture<Outcome> future = QtConcurrent::run(
        &m_walkThread, [this, path, task, needsVolume] { return walk(path, task, needsVolume); });
    const Outcome outcome = co_await future;
    if (!self || task->isCancelled)
        co_return;
    const std::chrono::duration<double> elapsed = m_host.clock.monotonicNow() - start;
    if (outcome.error && outcome.error->which() == DiskScanner::ScanError::Case::cancelled)
        setScanState(Idle);
    else if (outcome.error)
        fail(outcome.error->errorDescription());
    else
        finish(outcome, m_progress.filesScanned, elapsed.count());
}

ScanViewModel::Outcome ScanViewModel::walk(const QString& path,
                                           const std::shared_ptr<ScanTask>& task, bool needsVolume)
{
    // Runs on the walking thread; the destructor waits for it, so `this` stays.
    const auto report = [this, task](const ScanProgress& progress) {
        // A stop may come before the walk has begun, and then the scanner does not know of it.
        if (task->isCancelled)
            m_scanner.cancel();
        QMetaObject::invokeMethod(this, [this, progress] { receive(progress); });
    };
    Outcome outcome;
    try {
        if (task->isCancelled)
            throw DiskScanner::ScanError::cancelled();
        outcome.root = m_scanner.scan(path, report);
        if (needsVolume)
            outcome.volume = m_enumerator.getVolumeInfo(path);
    } catch (const DiskScanner::ScanError& error) {
        outcome.error = error;
    }
    return outcome;
}

void ScanViewModel::receive(const ScanProgress& progress)
{
    setProgress(progress);
    if (!progress.partialTree)
        return;
    setRootNode(progress.partialTree);
    if (!m_focusedNode.isValid())
        setFocusedNode(progress.partialTree);
    ++m_scanTick;
    m_folderModel.refresh();
    Q_EMIT scanTickChanged();
}

void ScanViewModel::finish(const Outcome& outcome, qint64 filesScanned, double seconds)
{
    ScanResult result;
    result.rootNode = outcome.root;
    if (m_selectedVolume)
        result.diskInfo = *m_selectedVolume;
    else
        result.diskInfo = outcome.volume.value_or(madeUpVolume(outcome.root->path()));
    result.totalFilesScanned = filesScanned;
    result.scanDuration = seconds;
    result.hiddenSpaceBytes = hiddenSpace(result.diskInfo, outcome.root->size());
    result.scanDate = m_host.clock.now();
    setRootNode(outcome.root);
    setFocusedNode(outcome.root);
    m_folderModel.refresh();
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
    if (m_scanTask)
        m_scanTask->isCancelled = true;
    m_scanTask.reset();
    m_scanner.cancel();
    m_privilegedScanner.cancel();
    if (m_scanState == Scanning || m_scanState == ScanningAdmin)
        setScanState(Idle);
    setPaused(false);
}

void ScanViewModel::togglePause()
{
    if (m_isPaused) {
        setPaused(false);
        m_scanner.resume();
    } else {
        setPaused(true);
        m_scanner.pause();
    }
}

void ScanViewModel::setHovered(const FileNodeRef& node, bool isHovered)
{
    if (isHovered)
        setHoveredNode(node);
    else if (m_hoveredNode == node)
        setHoveredNode({});
}

void ScanViewModel::drillDown(const FileNodeRef& node)
{
    if (!node.isDirectory())
        return;
    setFocusedNode(node.node());
    setSelectedNode({});
}

void ScanViewModel::drillUp()
{
    if (!m_focusedNode.isValid())
        return;
    const FileNode* focused = m_focusedNode.node().get();
    const FileNodePtr target = focused->parent() ? focused->parent()->shared() : m_rootNode.node();
    if (!target || target.get() == focused)
        return;
    setFocusedNode(target);
    setSelectedNode({});
}

void ScanViewModel::drillToRoot()
{
    if (m_focusedNode == m_rootNode)
        return;
    setFocusedNode(m_rootNode.node());
    setSelectedNode({});
}

QString ScanViewModel::selectedMountPoint() const
{
    return m_selectedVolume ? m_selectedVolume->mountPoint : QString();
}

void ScanViewModel::setSelectedVolume(const std::optional<DiskInfo>& volume)
{
    if (m_selectedVolume == volume)
        return;
    m_selectedVolume = volume;
    Q_EMIT selectedVolumeChanged();
}

void ScanViewModel::setHoveredNode(const FileNodeRef& node)
{
    if (m_hoveredNode == node)
        return;
    m_hoveredNode = node;
    Q_EMIT hoveredNodeChanged();
}

void ScanViewModel::setSelectedNode(const FileNodeRef& node)
{
    if (m_selectedNode == node)
        return;
    m_selectedNode = node;
    Q_EMIT selectedNodeChanged();
}

void ScanViewModel::setScanState(ScanState state)
{
    if (m_scanState == state)
        return;
    m_scanState = state;
    Q_EMIT scanStateChanged();
}

void ScanViewModel::setRootNode(const FileNodePtr& node)
{
    if (m_rootNode.node() == node)
        return;
    m_rootNode = FileNodeRef(node);
    Q_EMIT rootNodeChanged();
}

void ScanViewModel::setFocusedNode(const FileNodePtr& node)
{
    if (m_focusedNode.node() == node)
        return;
    m_focusedNode = FileNodeRef(node);
    m_folderModel.setDirectory(node);
    Q_EMIT focusedNodeChanged();
}

void ScanViewModel::setProgress(const ScanProgress& progress)
{
    m_progress = progress;
    Q_EMIT progressChanged();
}

void ScanViewModel::setErrorMessage(const std::optional<QString>& message)
{
    if (m_errorMessage == message)
        return;
    m_errorMessage = message;
    Q_EMIT errorMessageChanged();
}

void ScanViewModel::setPaused(bool paused)
{
    if (m_isPaused == paused)
        return;
    m_isPaused = paused;
    Q_EMIT isPausedChanged();
}

} // namespace brivane
