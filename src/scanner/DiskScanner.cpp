#include "scanner/DiskScanner.h"

#include "core/ByteFormatter.h"
#include "core/Log.h"
#include "platform/Clock.h"
#include "platform/PathText.h"
#include "platform/ProcessMemory.h"
#include "platform/Walk.h"
#include "scanner/TreeBuilder.h"

#include <cerrno>

namespace brivane {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr auto reportInterval = 500ms;
constexpr auto pausePoll = 100ms;

double seconds(std::chrono::nanoseconds duration)
{
    return std::chrono::duration<double>(duration).count();
}

void logOutcome(const FileTree& tree, std::int64_t filesScanned, double elapsed)
{
    const auto rate =
        static_cast<long>(static_cast<double>(filesScanned) / std::max(elapsed, 0.001));
    const std::optional<std::uint64_t> resident = residentMemory();
    Log::scanner.info(u"Scan complete: %1 files, %2, %3s"_s.arg(
        QString::number(filesScanned), ByteFormatter::format(tree.root()->size()),
        QString::number(elapsed, 'f', 1)));
    Log::perf.info(u"Scan rate: %1 files/s"_s.arg(rate));
    Log::perf.info(u"NodeMap capacity: %1, entries: %2"_s.arg(tree.directoryCapacity())
                       .arg(tree.directoryCount()));
    Log::perf.info(u"Memory: %1 MB"_s.arg(
        resident ? QString::number(static_cast<double>(*resident) / 1048576, 'f', 1) : u"N/A"_s));
}

} // namespace

DiskScanner::DiskScanner(Clock& clock)
    : m_clock(clock)
{
}

FileNodePtr DiskScanner::scan(const QString& path, const Progress& report,
                              const std::stop_token& stop)
{
    m_isCancelled.setValue(false);
    m_pauseFlag.setValue(false);
    const std::stop_callback cancelOnStop(stop, [this] { cancel(); });
    const auto start = m_clock.monotonicNow();
    Log::scanner.info(u"Scan started: "_s + path);
    ScanProgress progress;
    progress.startTime = m_clock.now();

    const QByteArray bytes = PathText::toBytes(path);
    if (bytes.contains('\0'))
        throw ScanError::invalidPath(path);
    TreeBuilder builder(FileTree::create(bytes));
    progress.partialTree = builder.tree().root()->shared();
    if (bytes.isEmpty())
        throw ScanError::ftsOpenFailed(path, ENOENT);

    const auto deliver = [&] {
        if (report)
            report(progress);
    };
    const auto stopIfCancelled = [&](bool wasPaused) {
        if (!m_isCancelled.value())
            return;
        builder.settle();
        if (!wasPaused)
            Log::scanner.notice(u"Scan cancelled at %1 files"_s.arg(progress.filesScanned));
        throw ScanError::cancelled();
    };

    Walk walk(bytes, {.directoryAttributes = false, .cancelled = m_isCancelled.raw()});
    auto lastReport = start;
    while (const WalkEntry* entry = walk.next()) {
        stopIfCancelled(false);
        stopIfCancelled(waitWhilePaused());
        // A volume that is gone is not an empty one.
        if (entry->depth == 0 && entry->kind == WalkKind::NoAttributes)
            throw ScanError::ftsOpenFailed(path, entry->error);
        ++progress.filesScanned;
        if (const auto now = m_clock.monotonicNow(); now - lastReport >= reportInterval) {
            builder.settle();
            progress.currentPath = PathText::fromBytes(walk.path());
            FileTree::setFileCount(builder.tree().root(), progress.filesScanned);
            deliver();
            lastReport = now;
        }
        if (entry->kind == WalkKind::File)
            progress.bytesProcessed += entry->attributes.size;
        builder.add(*entry, walk);
    }
    stopIfCancelled(false);

    builder.finish();
    progress.isComplete = true;
    progress.currentPath.clear();
    deliver();
    logOutcome(builder.tree(), progress.filesScanned, seconds(m_clock.monotonicNow() - start));
    return progress.partialTree;
}

void DiskScanner::cancel()
{
    m_isCancelled.setValue(true);
    resume();
}

void DiskScanner::pause()
{
    m_pauseFlag.setValue(true);
}

void DiskScanner::resume()
{
    m_pauseFlag.setValue(false);
    m_pauseEnds.notify_all();
}

bool DiskScanner::waitWhilePaused()
{
    if (!m_pauseFlag.value())
        return false;
    std::unique_lock lock(m_pauseMutex);
    while (m_pauseFlag.value() && !m_isCancelled.value())
        m_pauseEnds.wait_for(lock, pausePoll);
    return true;
}

} // namespace brivane
