#include "scanner/privileged/PrivilegedScanner.h"

#include "core/Log.h"
#include "core/Publish.h"
#include "scanner/privileged/AdminRun.h"

#include <QCoroFuture>
#include <QPointer>

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

/// How long a program that ends waits for a command that was asked to.
constexpr std::chrono::milliseconds endingTime{1500};

void throwIfNotStarted(const CommandEnd& end, const QString& executable)
{
    if (end.isSkipped)
        throw PrivilegedScanner::AdminScanError::cancelled();
    end.throwIfNotStarted(executable);
}

} // namespace

PrivilegedScanner::PrivilegedScanner(Host& host, QObject* parent)
    : QObject(parent)
    , m_host(host)
{
}

PrivilegedScanner::~PrivilegedScanner()
{
    if (!m_run)
        return;
    m_run->cancel();
    m_worker.waitForDone();
    if (m_run->command) {
        m_run->command->waitForEnd(endingTime);
        m_run->command.reset();
    }
    m_run->clear();
}

QCoro::Task<FileNodePtr> PrivilegedScanner::scanAsAdmin(QString path, FileNodePtr existingRoot)
{
    if (m_isRunning)
        throw AdminScanError::alreadyRunning();
    const QPointer<PrivilegedScanner> self(this);
    const auto run = std::make_shared<AdminRun>(m_host, path, existingRoot);
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
        QCoro::Task<FileNodePtr> performing = perform(run);
        root = co_await performing;
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

QCoro::Task<FileNodePtr> PrivilegedScanner::perform(std::shared_ptr<AdminRun> run)
{
    const QPointer<PrivilegedScanner> self(this);
    QCoro::Task<> preparing = prepare(run);
    co_await preparing;

    setProgress(u"Requesting administrator privileges..."_s);
    const HelperCommands::CommandLine line =
        HelperCommands::runAsAdmin(run->files.binary(), run->path);
    QCoro::Task<CommandEnd> running = runCommand(run, line, run->lines);
    const QFuture<void> reading = m_worker.run([run] { run->readOutput(); });
    const CommandEnd end = co_await running;
    if (!end.isSuccess() || run->isCancelled())
        run->dropOutput();
    co_await reading;

    throwIfNotStarted(end, line.executable);
    if (!self)
        throw AdminScanError::cancelled();
    if (!end.isSuccess()) {
        const QString message =
            end.error.isValidUtf8() ? QString::fromUtf8(end.error) : u"Unknown error"_s;
        if (message.contains(u"User canceled") || message.contains(u"-128"))
            throw AdminScanError::userCancelled();
        Log::scanner.error(u"Admin scan failed: "_s + message);
        throw AdminScanError::scriptFailed(message);
    }
    if (run->isCancelled())
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

QCoro::Task<> PrivilegedScanner::prepare(std::shared_ptr<AdminRun> run)
{
    const QPointer<PrivilegedScanner> self(this);
    const auto throwIfCancelled = [self, run] {
        if (!self || run->isCancelled())
            throw AdminScanError::cancelled();
    };
    const QFuture<Result<>> writing = m_worker.run([run] { return run->files.write(); });
    const Result<> written = co_await writing;
    throwIfCancelled();
    if (!written)
        throw std::runtime_error(written.error().text(run->locations).toStdString());

    setProgress(u"Compiling scanner..."_s);
    const HelperCommands::CommandLine line =
        HelperCommands::compile(run->files.source(), run->files.binary());
    QCoro::Task<CommandEnd> compiling = runCommand(run, line, nullptr);
    const CommandEnd end = co_await compiling;
    throwIfCancelled();
    throwIfNotStarted(end, line.executable);
    const QFuture<bool> judging = m_worker.run([run] { return run->files.isBinaryTrustworthy(); });
    const bool isTrustworthy = co_await judging;
    throwIfCancelled();
    if (!end.isSuccess() || !isTrustworthy)
        throw AdminScanError::compileFailed();
}

QCoro::Task<CommandEnd> PrivilegedScanner::runCommand(std::shared_ptr<AdminRun> run,
                                                      HelperCommands::CommandLine line,
                                                      std::shared_ptr<LineQueue> lines)
{
    run->command = std::make_unique<Command>(run->locations.path(line.executable), line.arguments);
    run->command->sendLinesTo(lines);
    const QFuture<CommandEnd> ending = run->command->start(run->stop());
    const CommandEnd end = co_await ending;
    run->command.reset();
    co_return end;
}

void PrivilegedScanner::cancel()
{
    if (!m_run || m_run->isCancelled())
        return;
    m_run->cancel();
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
