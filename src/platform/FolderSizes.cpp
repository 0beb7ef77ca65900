#include "platform/FolderSizes.h"

#include "platform/LiesIn.h"
#include "platform/Parallel.h"
#include "platform/PathText.h"

#include <QPromise>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <mutex>
#include <string_view>
#include <thread>
#include <unordered_set>
#include <utility>

namespace brivane {

namespace {

/// Behind each of several walks, as many as one takes for itself on a small machine: while one
/// waits for the disk another works, and the last large tree of many has no fewer than alone.
constexpr unsigned fewestWorkers = 3;

/// The paths that are left out, by their names first: the path of an entry is put together for
/// those few alone that have one of the names.
class Excluded {
public:
    explicit Excluded(const QStringList& paths)
    {
        m_paths.reserve(static_cast<std::size_t>(paths.size()));
        for (const QString& path : paths) {
            m_paths.push_back(PathText::toBytes(path));
            const QByteArray name = PathText::toBytes(PathText::lastComponent(path));
            m_names.insert(name.toStdString());
        }
    }

    [[nodiscard]] bool holds(const QByteArray& path) const
    {
        return std::ranges::any_of(
            m_paths, [&](const QByteArray& excluded) { return liesIn(path, excluded); });
    }
    /// Whether `entry`, which `walk` has just given and whose folder is not left out, is.
    [[nodiscard]] bool has(const WalkEntry& entry, const Walk& walk) const
    {
        return !m_names.empty() && m_names.contains(std::string(entry.name)) && holds(walk.path());
    }

private:
    std::vector<QByteArray> m_paths;
    std::unordered_set<std::string> m_names;
};

void add(FolderSize& size, const WalkEntry& entry, const FolderSizeOptions& options)
{
    switch (entry.kind) {
    case WalkKind::SymbolicLink:
        if (!options.includeLinks)
            return;
        [[fallthrough]];
    case WalkKind::File:
        size.bytes += entry.attributes.size;
        ++size.files;
        return;
    case WalkKind::UnreadableDirectory:
    case WalkKind::NoAttributes:
        // What vanished between its listing and the look at it is not there.
        if (entry.error != ENOENT)
            ++size.unreadable;
        return;
    default:
        return;
    }
}

FolderSize sizeOf(const QByteArray& path, const FolderSizeOptions& options,
                  const Excluded& excluded, const WalkOptions& walkOptions)
{
    FolderSize size;
    if (excluded.holds(path))
        return size;
    Walk walk(path, walkOptions);
    const WalkEntry* entry = walk.next();
    if (entry != nullptr)
        size.start = entry->kind;
    // What is not there is no part of anything that could not be read.
    if (entry == nullptr || entry->kind == WalkKind::NoAttributes)
        return size;
    for (; entry != nullptr; entry = walk.next()) {
        if (entry->depth == 0 || entry->kind == WalkKind::DirectoryEnd ||
            !excluded.has(*entry, walk))
            add(size, *entry, options);
        else if (entry->kind == WalkKind::Directory)
            walk.skipSubtree();
    }
    return size;
}

} // namespace

QFuture<FolderSize> FolderSizes::measure(QStringList paths, FolderSizeOptions options)
{
    auto promise = std::make_shared<QPromise<FolderSize>>();
    promise->start();
    m_worker.run([promise, paths = std::move(paths),
                  options = std::move(options)](const std::stop_token& stop) {
        measureNow(paths, options, stop, [&](std::size_t index, const FolderSize& size) {
            promise->addResult(size, static_cast<int>(index));
        });
        promise->finish();
    });
    return promise->future();
}

std::vector<FolderSize> FolderSizes::measureNow(const QStringList& paths,
                                                const FolderSizeOptions& options,
                                                const std::stop_token& stop, const Found& found)
{
    std::atomic<bool> isStopped = false;
    const std::stop_callback onStop(stop, [&isStopped] { isStopped = true; });
    const Excluded excluded(options.excluded);
    const auto count = static_cast<std::size_t>(paths.size());
    const std::size_t cores = std::max(std::thread::hardware_concurrency(), 1U);
    std::vector<FolderSize> sizes(count);
    std::atomic<std::size_t> begun = 0;
    std::mutex telling;

    forEachInParallel(count, [&](std::size_t index) {
        // A walk has workers of its own once its tree is large. Where fewer are left than there are
        // cores, each gets its share of these; one walk alone decides for itself.
        const std::size_t atOnce = std::min(cores, count - begun++);
        const WalkOptions walkOptions{
            .includeHidden = options.includeHidden,
            .cancelled = &isStopped,
            .workers =
                atOnce == 1 ? 0U : std::max(fewestWorkers, static_cast<unsigned>(cores / atOnce)),
        };
        FolderSize& size = sizes[index];
        const QByteArray path = PathText::toBytes(paths[static_cast<qsizetype>(index)]);
        size = sizeOf(path, options, excluded, walkOptions);
        size.isStopped = isStopped;
        if (found) {
            const std::lock_guard lock(telling);
            found(index, size);
        }
    });
    return sizes;
}

} // namespace brivane
