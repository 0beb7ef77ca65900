#include "scanner/privileged/PrivilegedScanner.h"

#include "core/DataCollector.h"
#include "core/Log.h"
#include "core/Publish.h"
#include "core/ShellRunner.h"
#include "platform/LiesIn.h"
#include "platform/PathText.h"
#include "scanner/privileged/HelperFiles.h"
#include "scanner/privileged/LineQueue.h"
#include "scanner/privileged/TreeMerger.h"

#include <QCoroFuture>
#include <QPointer>
#include <QPromise>

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

constexpr int endingMilliseconds = 1500;

QString shellQuoted(QString text)
{
    text.replace(u'\'', u"'\\''"_s);
    return u'\'' + text + u'\'';
}

QString withoutEndSlashes(QString path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

/// The tree that entries of `path` belong to. Nodes know their path by their place, so entries from
/// elsewhere cannot be put into the tree that there is.
FileNodePtr rootFor(const QString& path, const FileNodePtr& existingRoot)
{
    if (existingRoot) {
        if (liesIn(path, existingRoot->path()))
            return existingRoot;
    }
    return FileTree::create(PathText::toBytes(path))->root()->shared();
}

} // namespace

/// What became of a command.
struct PrivilegedScanner::CommandEnd {
    bool isSkipped = false;    ///< cancelled before it was started
    int launchErrorNumber = 0; ///< not 0 when it could not be started
    bool isSuccess = false;
    QByteArray error{};

    void throwIfNotStarted(const QString& executable) const
    {
        if (isSkipped)
            throw AdminScanError::cancelled();
        if (launchErrorNumber != 0)
            throw LaunchError(executable, launchErrorNumber);
    }
};

/// One scan. Outlives the scanner where someone still waits for it.
struct PrivilegedScanner::Run {
    /// A command that runs: how it ends is told once, by whoever knows first.
    class Command {
    public:
        Command() { m_promise.start(); }
        [[nodiscard]] QFuture<CommandEnd> future() const { return m_promise.future(); }

        void finish(const CommandEnd& end)
        {
            if (m_hasEnded.exchange(true))
                return;
            m_promise.addResult(end);
            m_promise.finish();
            m_end.release();
        }
        void waitForEnd(int milliseconds) { m_end.tryAcquire(1, milliseconds); }

        DataCollector error;

    private:
        std::atomic<bool> m_hasEnded = false;
        QPromise<CommandEnd> m_promise;
        QSemaphore m_end;
    };

    Run(Host& host, const QString& scannedPath, const FileNodePtr& existingRoot)
        : locations(host.locations)
        , path(withoutEndSlashes(scannedPath))
        , root(rootFor(path, existingRoot))
        , files(host.locations, host.fileSystem)
    {
    }

    // For the worker.
    void readOutput();
    /// How many entries were added; negative when the scan was cancelled before.
    qint64 merge();
    void clear();
    /// Nothing of what the helper prints is wanted any more.
    void drop();

    const Locations locations;
    const QString path;
    const FileNodePtr root;
    HelperFiles files;                  ///< the worker's
    std::unique_ptr<TreeMerger> merger; ///< the worker's
    LineQueue lines;
    bool isCancelled = false;            ///< the GUI thread's
    std::atomic<bool> isDropped = false; ///< the helper's output, or the whole scan
    std::shared_ptr<Process> process;    ///< the GUI thread's; null unless a command runs
    std::shared_ptr<Command> command;    ///< likewise
};

void PrivilegedScanner::Run::readOutput()
{
    // A walk of this tree that was stopped may not have ended yet.
    FileTree::BuildingRight right = root->tree().waitToBuild(&isDropped);
    if (!right.tree())
        return;
    merger = std::make_unique<TreeMerger>(std::move(right));
    AdminHelperScript::EntryDecoder decoder;
    lines.forEachLine([&](std::string_view line) {
        if (const AdminHelperScript::ScanEntry* entry = decoder.decode(line))
            merger->take(*entry);
    });
}

qint64 PrivilegedScanner::Run::merge()
{
    if (isDropped)
        return -1;
    merger->merge();
    return merger->takenCount();
}

void PrivilegedScanner::Run::clear()
{
    merger.reset();
    files.remove();
}

void PrivilegedScanner::Run::drop()
{
    isDropped = true;
    lines.cancel();
}

PrivilegedScanner::PrivilegedScanner(Host& host, QObject* parent)
    : QObject(parent)
    , m_host(host)
{
}

PrivilegedScanner::~PrivilegedScanner()
{
    if (!m_run)
        return;
    m_run->isCancelled = true;
    m_run->drop();
    m_worker.waitForDone();
    if (m_run->process) {
        m_run->process->terminate();
        m_run->command->waitForEnd(endingMilliseconds);
        m_run->process.reset();
        m_run->command->finish({});
    }
    m_run->clear();
}

QCoro::Task<FileNodePtr> PrivilegedScanner::scanAsAdmin(QString path, FileNodePtr existingRoot)
{
    if (m_isRunning)
        throw AdminScanError::alreadyRunning();
    const QPointer<PrivilegedScanner> self(this);
    const auto run = std::make_shared<Run>(m_host, path, existingRoot);
    existingRoot.reset();
    m_run = run;
    setRunning(true);
    setFilesFound(0);
    setProgress(u"Preparing admin scan..."_s);
    Log::scanner.info(u"Admin scan started: "_s + path);
    const auto start = m_host.clock.monotonicNow();

    FileNodePtr root;
    std::exception_ptr failure;
    try {
        root = co_await perform(run);
        if (self)
            logOutcome(start);
    } catch (...) {
        failure = std::current_exception();
    }
    if (self) {
        const QFuture<void> cleared = m_worker.run([run] { run->clear(); });
        co_await cleared;
    }
    if (self) {
        m_run.reset();
        setRunning(false);
    }
    if (failure)
        std::rethrow_exception(failure);
    co_return root;
}

void PrivilegedScanner::logOutcome(std::chrono::nanoseconds start) const
{
    const std::chrono::duration<double> elapsed = m_host.clock.monotonicNow() - start;
    const double rate = static_cast<double>(m_filesFound) / std::max(elapsed.count(), 0.001);
    Log::scanner.info(u"Admin scan complete: %1 files, %2s"_s.arg(
        QString::number(m_filesFound), QString::number(elapsed.count(), 'f', 1)));
    Log::perf.info(u"Admin scan rate: %1 files/s"_s.arg(static_cast<qint64>(rate)));
}

QCoro::Task<FileNodePtr> PrivilegedScanner::perform(std::shared_ptr<Run> run)
{
    const QPointer<PrivilegedScanner> self(this);
    co_await prepare(run);

    setProgress(u"Requesting administrator privileges..."_s);
    const QString executable = u"/usr/bin/osascript"_s;
    const QString line = shellQuoted(run->files.binary()) + u' ' + shellQuoted(run->path);
    const QStringList arguments = {u"-e"_s, ShellRunner::adminScript(line)};
    QCoro::Task<CommandEnd> running = runCommand(run, executable, arguments);
    // Stands in line behind the start of the command.
    const QFuture<void> reading = m_worker.run([run] { run->readOutput(); });
    const CommandEnd end = co_await running;
    if (end.isSuccess && !run->isCancelled)
        run->lines.close();
    else
        run->drop();
    co_await reading;

    end.throwIfNotStarted(executable);
    if (!self)
        throw AdminScanError::cancelled();
    if (!end.isSuccess) {
        const QString message =
            end.error.isValidUtf8() ? QString::fromUtf8(end.error) : u"Unknown error"_s;
        if (message.contains(u"User canceled") || message.contains(u"-128"))
            throw AdminScanError::userCancelled();
        Log::scanner.error(u"Admin scan failed: "_s + message);
        throw AdminScanError::scriptFailed(message);
    }
    if (run->isCancelled)
        throw AdminScanError::cancelled();

    setProgress(u"Building file tree..."_s);
    const QFuture<qint64> merging = m_worker.run([run] { return run->merge(); });
    const qint64 count = co_await merging;
    if (count < 0)
        throw AdminScanError::cancelled();
    if (self)
        setFilesFound(count);
    co_return run->root;
}

QCoro::Task<> PrivilegedScanner::prepare(std::shared_ptr<Run> run)
{
    const QPointer<PrivilegedScanner> self(this);
    const auto throwIfCancelled = [self, run] {
        if (!self || run->isCancelled)
            throw AdminScanError::cancelled();
    };
    const QFuture<Result<>> writing = m_worker.run([run] { return run->files.write(); });
    const Result<> written = co_await writing;
    throwIfCancelled();
    if (!written)
        throw std::runtime_error(written.error().text(run->locations).toStdString());

    setProgress(u"Compiling scanner..."_s);
    const QString executable = u"/usr/bin/swiftc"_s;
    const QStringList arguments = {u"-O"_s, u"-o"_s, run->files.binary(), run->files.source()};
    const CommandEnd end = co_await runCommand(run, executable, arguments);
    throwIfCancelled();
    end.throwIfNotStarted(executable);
    const QFuture<bool> judging = m_worker.run([run] { return run->files.isBinaryTrustworthy(); });
    const bool isTrustworthy = co_await judging;
    throwIfCancelled();
    if (!end.isSuccess || !isTrustworthy)
        throw AdminScanError::compileFailed();
}

QCoro::Task<PrivilegedScanner::CommandEnd>
PrivilegedScanner::runCommand(std::shared_ptr<Run> run, QString executable, QStringList arguments)
{
    const auto command = std::make_shared<Run::Command>();
    auto process = std::make_shared<Process>(run->locations.path(executable), arguments);
    process->setOutputHandler([run](QByteArrayView bytes) { run->lines.append(bytes); });
    process->setErrorHandler([command](QByteArrayView bytes) { command->error.append(bytes); });
    process->setTerminationHandler([command](ProcessEnd end) {
        command->finish({.isSuccess = end.isSuccess(), .error = command->error.data()});
    });
    run->command = command;
    run->process = process;
    m_worker.run([run, command, process = std::move(process)] {
        if (run->isDropped)
            return command->finish({.isSkipped = true});
        try {
            process->start();
        } catch (const LaunchError& failure) {
            command->finish({.launchErrorNumber = failure.errorNumber()});
        }
        if (run->isDropped)
            process->terminate();
    });
    const QFuture<CommandEnd> future = command->future();
    const CommandEnd end = co_await future;
    run->process.reset();
    run->command.reset();
    co_return end;
}

void PrivilegedScanner::cancel()
{
    if (!m_run || m_run->isCancelled)
        return;
    m_run->isCancelled = true;
    m_run->drop();
    if (m_run->process)
        m_run->process->terminate();
    Log::scanner.notice(u"Admin scan cancelled"_s);
}

void PrivilegedScanner::setRunning(bool isRunning)
{
    publish(m_isRunning, isRunning, this, &PrivilegedScanner::isRunningChanged);
}

void PrivilegedScanner::setProgress(const QString& progress)
{
    publish(m_progress, progress, this, &PrivilegedScanner::progressChanged);
}

void PrivilegedScanner::setFilesFound(qint64 count)
{
    publish(m_filesFound, count, this, &PrivilegedScanner::filesFoundChanged);
}

} // namespace brivane
