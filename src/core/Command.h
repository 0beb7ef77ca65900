#pragma once

#include "core/LineQueue.h"
#include "platform/Process.h"

#include <QFuture>

#include <chrono>
#include <functional>
#include <memory>
#include <stop_token>

namespace brivane {

/// What became of a command. The first two say that it never ran.
struct CommandEnd {
    bool isSkipped = false;    ///< stopped before it was started, or nobody waits any more
    int launchErrorNumber = 0; ///< as in errno; not 0 when it could not be started
    bool isTooLong = false;    ///< ended, since its output went beyond the limit
    ProcessEnd process{};
    QByteArray output{}; ///< empty when something else takes it
    QByteArray error{};  ///< the first `errorLimit` bytes

    /// Whether it ran, and exited with 0.
    [[nodiscard]] bool isSuccess() const;
    /// Throws LaunchError, with `executable` in its text, if it could not be started.
    void throwIfNotStarted(const QString& executable) const;
};

/// One command of the system, for a coroutine to start, await and stop.
///
///     Command command(path, arguments);
///     const QFuture<CommandEnd> ending = command.start(stop);
///     const CommandEnd end = co_await ending; // on the thread that awaits, by its event loop
///
/// Arguments reach it byte for byte (PathText). It may be made and used on any thread, by one at a
/// time. Starting reads the executable from the disk, so it is done elsewhere, by a thread of its
/// own, since it may hang on a volume that is gone. How it ends is told once, whatever happens:
/// also when no thread can be had, and when the Command is destroyed before.
class Command {
public:
    /// How much output is kept. No command that is read as a whole prints so much in earnest; one
    /// that does is stopped before it takes the memory of the machine.
    static constexpr qsizetype outputLimit = 64 << 20;
    static constexpr qsizetype errorLimit = 1 << 20;

    /// `path` is one of this system's (Locations::path()).
    Command(const QString& path, const QStringList& arguments);
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    /// Ends it with all of its process group, by force in the end; does not wait for that.
    ~Command();

    // What takes the output as it comes, instead of CommandEnd::output; without a limit then. Set
    // before start().

    /// `handler` is called on the thread that serves all processes: it hands on and returns.
    void setOutputHandler(std::function<void(QByteArrayView)> handler);
    /// Lines for a thread of the caller's choice, which takes them from `lines`; closed at the end,
    /// however that comes about.
    void sendLinesTo(std::shared_ptr<LineQueue> lines);
    /// Standard error comes with the output, in its order; CommandEnd::error stays empty.
    void mergeErrorIntoOutput();

    /// Once. A stop, whenever it is asked for, asks the whole process group to end (SIGTERM), and
    /// kills it if it has not after two seconds; the end is told when it has.
    QFuture<CommandEnd> start(const std::stop_token& stop = {});

    /// Whether it has ended, or does within `patience`. Not for a thread that must not wait.
    bool waitForEnd(std::chrono::milliseconds patience);

private:
    class State;

    const std::shared_ptr<State> m_state;
};

} // namespace brivane
