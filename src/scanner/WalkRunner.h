#pragma once

#include "platform/Host.h"
#include "platform/Worker.h"
#include "scanner/DiskScanner.h"
#include "scanner/VolumeEnumerator.h"

#include <QObject>

#include <optional>

namespace brivane {

/// Runs the view model's walks in the background, one at a time.
///
/// GUI thread. A walk that is started ends those before it, and waits until they have ended; of
/// them nothing is heard any more. What a walk has to tell arrives through the event loop, in the
/// order in which it happened. The runner goes without waiting for a walk that hangs: what a walk
/// works with is its own, but for the machine's clock and volumes.
class WalkRunner : public QObject {
    Q_OBJECT

public:
    struct Order {
        QString path;
        /// `path` came from outside: a link is resolved, and for a file, or a link that leads
        /// nowhere, its folder is walked.
        bool isDropped = false;
        bool needsVolume = false; ///< the outcome shall tell the volume
    };
    struct Outcome {
        FileNodePtr root; ///< null when there is an error
        FileNodePtr file; ///< what was dropped, if it was a file
        std::optional<DiskInfo> volume;
        qint64 filesScanned = 0;
        std::optional<DiskScanner::ScanError> error;
    };

    explicit WalkRunner(Host& host, QObject* parent = nullptr);
    ~WalkRunner() override;

    void start(const Order& order);
    /// Ends the walk that was started last, without waiting. A report that it has made already may
    /// still arrive, its end does not.
    void stop();
    /// The same, and no report arrives either.
    void abandon();
    void pause();
    void resume();

    /// Blocks until no walk runs. For tests and benchmarks.
    void waitForDone() { m_worker.waitForDone(); }

Q_SIGNALS:
    /// The folder that is walked for what was dropped.
    void resolved(const QString& folder);
    void reported(const brivane::ScanProgress& progress);
    void ended(const brivane::WalkRunner::Outcome& outcome);

private:
    struct Walk;
    class Mailbox;

    static void perform(Walk& walk, const VolumeEnumerator& enumerator,
                        const std::function<void(std::function<void(WalkRunner&)>)>& tell);

    Clock& m_clock;
    const VolumeEnumerator m_enumerator;
    const std::shared_ptr<Mailbox> m_mailbox;
    std::shared_ptr<Walk> m_walk; ///< the last one that was started
    Worker m_worker{QStringLiteral("disk walk")};
};

} // namespace brivane
