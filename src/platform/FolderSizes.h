#pragma once

#include "platform/Walk.h"
#include "platform/Worker.h"

#include <QFuture>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <stop_token>
#include <vector>

namespace brivane {

/// What one path holds. A path that is a file holds itself; a link is not followed.
struct FolderSize {
    std::uint64_t bytes = 0;      ///< logical lengths of what counts; hard links count in full
    std::uint64_t files = 0;      ///< how many counted
    std::uint64_t unreadable = 0; ///< what could not be looked into or at: `bytes` are the least
    /// What the path is itself; NoAttributes when it is not there, or was not looked at.
    WalkKind start = WalkKind::NoAttributes;
    bool isStopped = false; ///< the figures are of what had been seen until then
};

struct FolderSizeOptions {
    bool includeHidden = true; ///< false leaves out names that begin with a dot, below the start
    bool includeLinks = false; ///< links count by the length of their text; else not at all
    /// Paths that are left out with all that lies in them, in the spelling of the paths measured.
    QStringList excluded = {};
};

/// The sizes of many folders at once, on all cores, by the one walk: regular files count, other
/// file systems are not entered. Each path is measured for itself, so what lies in two of them
/// counts in both.
///
/// The object is a service's own: measurements are begun from any thread, stand in line, and run on
/// threads that are theirs. Destroying it stops them and waits until they have.
class FolderSizes {
public:
    /// The result at index i is the size of paths[i]. They come in the order in which they are
    /// done, each at once (QFutureWatcher::resultReadyAt); after the end there is one for each.
    QFuture<FolderSize> measure(QStringList paths, FolderSizeOptions options = {});
    /// Stops what has been begun, between two entries; returns at once.
    void cancel() { m_worker.cancel(); }

    /// The same for a thread that may wait, in the order of `paths`. `found`, which does not throw,
    /// hears of each as it is done: on one thread or another, one call after the other.
    using Found = std::function<void(std::size_t index, const FolderSize& size)>;
    static std::vector<FolderSize> measureNow(const QStringList& paths,
                                              const FolderSizeOptions& options = {},
                                              const std::stop_token& stop = {},
                                              const Found& found = {});

private:
    Worker m_worker{QStringLiteral("folder sizes")};
};

} // namespace brivane
