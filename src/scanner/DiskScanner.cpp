#include "scanner/DiskScanner.h"

#include "core/ByteFormatter.h"
#include "core/Log.h"
#include "platform/Clock.h"
#include "platform/PathText.h"
#include "platform/ProcessMemory.h"
#include "platform/Walk.h"
#include "scanner/TreeBuilder.h"

#include <cerrno>
#include <cstring>

namespace brivane {

using namespace std::chrono_literals;

namespace {

constexpr auto reportInterval = 500ms;
constexpr auto pausePoll = 100ms;

double seconds(std::chrono::nanoseconds duration)
{
    return std::chrono::duration<double>(duration).count();
}

void logOutcome(const FileTree& tree, std::int64_t filesScanned, double elapsed)
{
    Log::scanner.info("Scan complete: %ld files, %s, %ss", filesScanned,
                      ByteFormatter::format(tree.root()->size()),
                      QString::asprintf("%.1f", elapsed));
    Log::perf.info(
        "Scan rate: %ld files/s",
        static_cast<std::int64_t>(static_cast<double>(filesScanned) / std::max(elapsed, 0.001)));
    Log::perf.info("NodeMap capacity: %ld, entries: %ld",
                   static_cast<std::int64_t>(tree.directoryCapacity()),
                   static_cast<std::int64_t>(tree.directoryCount()));
    const std::optional<std::uint64_t> resident = residentMemory();
    Log::perf.info("Memory: %s MB",
                   resident ? QString::asprintf("%.1f", static_cast<double>(*resident) / 1048576)
                            : QStringLiteral("N/A"));
}

} // namespace

DiskScanner::DiskScanner(Clock& clock)
    : m_clock(clock)
{
}

FileNodePtr DiskScanner::scan(const QString& path, const Progress& report)
{
    m_isCancelled.setValue(false);
    m_pauseFlag.setValue(false);
    const auto start = m_clock.monotonicNow();
    Log::scanner.info("Scan started: %s", path);
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
    const auto giveUp = [&]() -> ScanError {
        builder.settle();
        Log::scanner.notice("Scan cancelled at %ld files", progress.filesScanned);
        return ScanError::cancelled();
    };

    Walk walk(bytes, {.cancelled = m_isCancelled.raw()});
    auto lastReport = start;
    while (const WalkEntry* entry = walk.next()) {
        waitWhilePaused();
        if (m_isCancelled.value())
            throw giveUp();
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
    if (m_isCancelled.value())
        throw giveUp();

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

void DiskScanner::waitWhilePaused()
{
    if (!m_pauseFlag.value())
        return;
    std::unique_lock lock(m_pauseMutex);
    while (m_pauseFlag.value() && !m_isCancelled.value())
        m_pauseEnds.wait_for(lock, pausePoll);
}

} // namespace brivane
