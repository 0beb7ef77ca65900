#pragma once

#include "scanner/AtomicFlag.h"
#include "scanner/FileNode.h"
#include "scanner/ScanProgress.h"

#include <QString>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <stop_token>

namespace brivane {

class Locations;

class Clock;

/// Turns a path into a tree of FileNode in one walk.
///
/// scan() takes as long as the walk and runs on the thread that calls it, which is the only writer
/// of the tree until it returns; cancel(), pause() and resume() may be called from any thread.
/// One walk runs at a time. A walk that has ended leaves the scanner ready for the next.
///
/// During the walk a directory shows at each report what has been found below it so far. When the
/// walk leaves it, its size and its file count are exact. Both cost the walk a constant time for an
/// entry, however deep it lies: what a directory gains is passed on to its parent when the walk
/// leaves it, and up the whole line of open directories only before someone looks.
class DiskScanner {
public:
    /// Why there is no tree.
    class ScanError : public std::runtime_error {
    public:
        enum class Case { invalidPath, ftsOpenFailed, permissionDenied, cancelled };

        static ScanError invalidPath(const QString& path);
        static ScanError ftsOpenFailed(const QString& path, int error);
        static ScanError permissionDenied(const QString& path);
        static ScanError cancelled();

        [[nodiscard]] Case which() const { return m_case; }
        /// With the path as the system has it.
        [[nodiscard]] QString errorDescription() const { return m_before + m_path + m_after; }
        /// For the user of the machine that `locations` tells of.
        [[nodiscard]] QString shownDescription(const Locations& locations) const;

    private:
        ScanError(Case which, const QString& before, const QString& path = {},
                  const QString& after = {});

        Case m_case;
        QString m_before; ///< what is said before the path, all of it if there is none
        QString m_path;
        QString m_after;
    };

    /// Called on the walking thread, at most twice a second and once at the end.
    using Progress = std::function<void(const ScanProgress&)>;

    explicit DiskScanner(Clock& clock);

    /// Walks `path` and gives the root of its tree, children sorted by size. Clears an earlier
    /// pause or cancel; `stop` cancels this walk alone, also before it has begun. Throws ScanError,
    /// also for a path that does not exist; the tree of earlier reports stays valid then.
    FileNodePtr scan(const QString& path, const Progress& progress = {},
                     const std::stop_token& stop = {});

    void cancel();
    void pause();
    void resume();

private:
    /// Whether there was a pause.
    bool waitWhilePaused();

    Clock& m_clock;
    AtomicFlag m_isCancelled;
    AtomicFlag m_pauseFlag;
    std::mutex m_pauseMutex; ///< for the wait alone
    std::condition_variable m_pauseEnds;
};

} // namespace brivane
