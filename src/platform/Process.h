#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <exception>
#include <functional>
#include <memory>

namespace brivane {

/// Why a process could not be started.
class LaunchError : public std::exception {
public:
    LaunchError(QString executable, int errorNumber);

    [[nodiscard]] const QString& executable() const { return m_executable; }
    [[nodiscard]] int errorNumber() const { return m_errorNumber; } ///< as in errno
    [[nodiscard]] QString errorDescription() const;
    [[nodiscard]] const char* what() const noexcept override { return m_what.constData(); }

private:
    QString m_executable;
    int m_errorNumber;
    QByteArray m_what;
};

/// How a process ended.
struct ProcessEnd {
    enum class Reason { Exit, Signal };

    Reason reason = Reason::Exit;
    int status = 0; ///< the exit status, or the number of the signal

    [[nodiscard]] bool isSuccess() const { return reason == Reason::Exit && status == 0; }
};

/// A child process with its standard output and error as pipes; working directory and standard
/// input are those of the program. Arguments reach the child byte for byte (PathText). The
/// environment is the one that the program was started with: what is changed in it later reaches no
/// child, so that it may be changed while other threads start some.
///
/// Each child leads a process group of its own, and what it starts belongs to that unless it takes
/// leave. The group has no terminal: Ctrl-C does not reach it, and asking there for a password
/// fails. All signals are at their default in the child but SIGHUP, which stays ignored if it is.
///
/// Starting one ends an ignoring of SIGCHLD in the whole program, as a launcher may leave it; no
/// end could be heard of. A handler for SIGCHLD stays.
///
/// Belongs to the operation that starts it. It may be made and used on any thread, no event loop is
/// needed, but one Process is used by one thread at a time (terminate() by any). Handlers run on a
/// thread of the class's own, one after the other, shared by all processes: they hand data on and
/// return. Once the destructor has returned none runs any more; a handler may destroy its Process.
class Process {
public:
    Process(QString executable, QStringList arguments);
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    /// A child that still runs is asked to end with all of its group, killed with it if it does not
    /// within two seconds, and reaped. Does not wait for that.
    ~Process();

    /// What takes the output as it comes; set before start(). Without a handler it is read and
    /// dropped.
    void setOutputHandler(std::function<void(QByteArrayView)> handler);
    void setErrorHandler(std::function<void(QByteArrayView)> handler);
    /// Lets standard error share the pipe of standard output, so that both come in their order; set
    /// before start(). The error handler is not called then.
    void mergeErrorIntoOutput();

    /// Set before start(). Called once, after the child has ended and both pipes have been read to
    /// their end, so after all calls of the other handlers. A pipe ends when no process has it open
    /// any more, which may be later than the child when it left processes of its own behind; after
    /// terminate() those are not waited for.
    void setTerminationHandler(std::function<void(ProcessEnd)> handler);

    /// Starts the child; at most once. Throws LaunchError, and then calls no handler.
    void start();

    /// Asks a running child and all of its group to end (SIGTERM), and kills it with the group if
    /// it does not within two seconds; does nothing to one that does not run. When the child has
    /// ended, what still holds its pipes gets two seconds more, and is killed if it belongs to the
    /// group. What has become another user hears neither.
    void terminate();

    /// From start() until the termination handler is called.
    [[nodiscard]] bool isRunning() const;

private:
    class Child;
    class Monitor;

    std::shared_ptr<Child> m_child;
};

} // namespace brivane
