#pragma once

#include "platform/FileDescriptor.h"
#include "platform/Process.h"

#include <QDeadlineTimer>

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

#include <poll.h>
#include <sys/types.h>

namespace brivane {

/// What a Process and the monitor share: the child, our ends of its pipes, the handlers.
class Process::Child {
public:
    Child(QString executable, QStringList arguments);

    const QString executable;
    const QStringList arguments;

    // Before start() the owner's, then the monitor's. Called and cleared under handlerMutex.
    std::function<void(QByteArrayView)> outputHandler;
    std::function<void(QByteArrayView)> errorHandler;
    std::function<void(ProcessEnd)> terminationHandler;
    std::mutex handlerMutex;

    std::atomic<bool> isRunning = false;
    std::atomic<bool> isTerminated = false; ///< asked to end: its pipes are not waited for
    std::atomic<bool> isAbandoned = false;  ///< its Process is gone: no handler is called any more
    bool isErrorMerged = false;             ///< set before start()
    bool isWatched = false;                 ///< the monitor has it, or had it

    /// Starts the child; throws LaunchError.
    void spawn();
    /// To the child and all of its group; does nothing once the child has been reaped. Any thread.
    void signalGroup(int signal);

    // For the monitor's thread.
    void addTo(std::vector<pollfd>& descriptors) const;
    /// Reads what has come, sees whether the child has ended, kills what does not end. True when
    /// all is over.
    [[nodiscard]] bool serve();
    /// Milliseconds until serve() has something to do without any event; -1 for never.
    [[nodiscard]] int timeout() const;

private:
    void read(FileDescriptor& pipe, const std::function<void(QByteArrayView)>& handler);
    void lookForEnd();
    void reap();
    void finish();
    [[nodiscard]] bool needsKill() const;
    [[nodiscard]] bool killInTime();

    std::mutex m_groupMutex;
    /// The number of the child and of its group, 0 unless it is that for certain: before the start,
    /// and from the reaping on. Guarded by m_groupMutex.
    pid_t m_group = 0;
    FileDescriptor m_process; ///< a pidfd: names this child even after its number is used again
    FileDescriptor m_output;
    FileDescriptor m_error;
    bool m_hasEnded = false;
    /// The termination handler has been called. When the child was asked to end it may still stay
    /// to be reaped, for those of its group who have the pipes open yet.
    bool m_isFinished = false;
    ProcessEnd m_end;
    QDeadlineTimer m_killAt{QDeadlineTimer::Forever};
};

/// The one thread that serves all children. Lives to the end of the process.
class Process::Monitor {
public:
    static Monitor& shared();

    void watch(std::shared_ptr<Child> child);
    /// Makes the thread look at all children again.
    void wake();
    [[nodiscard]] bool isCurrentThread() const;

private:
    Monitor();
    void run();

    FileDescriptor m_wake; ///< an eventfd
    std::mutex m_mutex;
    std::vector<std::shared_ptr<Child>> m_children; ///< guarded by m_mutex
    std::thread m_thread;
};

} // namespace brivane
