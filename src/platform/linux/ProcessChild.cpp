#include "platform/linux/ProcessChild.h"

#include "platform/PathText.h"
#include "platform/linux/ChildSignals.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <string>
#include <utility>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern "C" { // glibc 2.36 forgot to say so itself
#include <sys/pidfd.h>
}

namespace brivane {

namespace {

constexpr int secondsBeforeKill = 2;

/// A pipe whose ends are none of the standard descriptors, should one of those be closed here.
struct Pipe {
    FileDescriptor reading;
    FileDescriptor writing;

    /// The errno of the failure, 0 for success.
    int open()
    {
        std::array<int, 2> ends = {};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0)
            return errno;
        reading = FileDescriptor(ends[0]);
        writing = FileDescriptor(ends[1]);
        for (FileDescriptor* end : {&reading, &writing}) {
            if (end->get() > STDERR_FILENO)
                continue;
            FileDescriptor higher(::fcntl(end->get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
            if (!higher.isValid())
                return errno;
            *end = std::move(higher);
        }
        // Only our end: the child must find its own blocking.
        return ::fcntl(reading.get(), F_SETFL, O_NONBLOCK) == 0 ? 0 : errno;
    }
};

/// A copy of the environment. Whoever changes that, and Qt itself does on the GUI thread, moves it
/// under the eyes of threads that read it.
class Environment {
public:
    Environment()
    {
        for (char** entry = environ; entry && *entry; ++entry)
            m_texts.emplace_back(*entry);
        for (std::string& text : m_texts)
            m_pointers.push_back(text.data());
        m_pointers.push_back(nullptr);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

    [[nodiscard]] char* const* pointers() const { return m_pointers.data(); }

private:
    std::vector<std::string> m_texts;
    std::vector<char*> m_pointers;
};

/// Made before main(), while there is one thread.
const Environment environmentAtStart;

/// posix_spawn with the standard pipes, as the leader of a session of its own, default signal
/// handling and no other descriptor.
int spawnChild(const std::vector<QByteArray>& arguments, int output, int error, pid_t& pid)
{
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (const QByteArray& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.constData()));
    pointers.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, error, STDERR_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);

    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    const sigset_t standard = posix::signalsOfAChild();
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &standard);
    // A session is a group as well. In a mere group a child that turned to the terminal, be it
    // standard input, would be stopped for ever: the group in front stays ours.
    posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID);

    const int failure = ::posix_spawn(&pid, arguments.front().constData(), &actions, &attributes,
                                      pointers.data(), environmentAtStart.pointers());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return failure;
}

} // namespace

Process::Child::Child(QString path, QStringList list)
    : executable(std::move(path))
    , arguments(std::move(list))
{
}

void Process::Child::spawn()
{
    std::vector<QByteArray> bytes = {PathText::toBytes(executable)};
    for (const QString& argument : arguments)
        bytes.push_back(PathText::toBytes(argument));
    for (const QByteArray& argument : bytes) {
        if (argument.contains('\0'))
            throw LaunchError(executable, EINVAL);
    }
    Pipe output;
    Pipe error;
    if (const int failure = output.open(); failure != 0)
        throw LaunchError(executable, failure);
    if (const int failure = error.open(); failure != 0)
        throw LaunchError(executable, failure);
    posix::keepEndsOfChildren();
    pid_t pid = -1;
    const FileDescriptor& errorEnd = isErrorMerged ? output.writing : error.writing;
    if (const int failure = spawnChild(bytes, output.writing.get(), errorEnd.get(), pid);
        failure != 0)
        throw LaunchError(executable, failure);
    m_process = FileDescriptor(::pidfd_open(pid, 0));
    if (!m_process.isValid()) {
        const int failure = errno;
        ::kill(-pid, SIGKILL); // not reaped yet, so the number is still its own
        while (::waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
        }
        throw LaunchError(executable, failure);
    }
    m_output = std::move(output.reading);
    m_error = std::move(error.reading);
    m_group = pid;
    isRunning = true;
}

void Process::Child::signalGroup(int signal)
{
    const std::lock_guard lock(m_groupMutex);
    // Those of the group that have become another user are passed over.
    if (m_group > 0)
        ::kill(-m_group, signal);
}

void Process::Child::addTo(std::vector<pollfd>& descriptors) const
{
    if (!m_hasEnded)
        descriptors.push_back({m_process.get(), POLLIN, 0});
    if (m_output.isValid())
        descriptors.push_back({m_output.get(), POLLIN, 0});
    if (m_error.isValid())
        descriptors.push_back({m_error.get(), POLLIN, 0});
}

bool Process::Child::needsKill() const
{
    return m_isFinished || ((isTerminated || isAbandoned) && !m_hasEnded);
}

int Process::Child::timeout() const
{
    if (needsKill() && m_killAt.isForever())
        return 0;
    return m_killAt.isForever() ? -1 : static_cast<int>(m_killAt.remainingTime()) + 1;
}

bool Process::Child::serve()
{
    // The end is looked for first: what the child wrote before it is then in the pipes already.
    if (!m_hasEnded)
        lookForEnd();
    const bool isLastLook = m_hasEnded && (isTerminated || isAbandoned);
    read(m_output, outputHandler);
    read(m_error, errorHandler);
    const bool isOver = m_hasEnded && !m_output.isValid() && !m_error.isValid();
    if (isOver)
        reap();
    if ((isOver || isLastLook) && !m_isFinished)
        finish();
    return isOver || killInTime();
}

bool Process::Child::killInTime()
{
    if (!needsKill())
        return false;
    if (m_killAt.hasExpired()) {
        signalGroup(SIGKILL);
        if (m_isFinished) {
            m_output.close();
            m_error.close();
            reap();
            return true;
        }
    } else if (!m_killAt.isForever()) {
        return false;
    }
    m_killAt.setRemainingTime(std::chrono::seconds(secondsBeforeKill));
    return false;
}

void Process::Child::read(FileDescriptor& pipe, const std::function<void(QByteArrayView)>& handler)
{
    // A pipe holds no more than this, so that all that a child has left in it is taken at once. One
    // for all: only the monitor's thread comes here.
    static std::array<char, 1 << 20> buffer;
    while (pipe.isValid()) {
        const ssize_t got = ::read(pipe.get(), buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0 && errno == EAGAIN)
            return;
        if (got <= 0) {
            pipe.close();
            return;
        }
        const std::lock_guard lock(handlerMutex);
        if (!isAbandoned && handler)
            handler(QByteArrayView(buffer.data(), got));
        return;
    }
}

void Process::Child::lookForEnd()
{
    // It stays to be reaped: as long as it does, its number is no other process's or group's.
    siginfo_t info = {};
    const int result =
        ::waitid(P_PIDFD, static_cast<id_t>(m_process.get()), &info, WEXITED | WNOHANG | WNOWAIT);
    if (result != 0 && errno == EINTR)
        return;
    if (result == 0 && info.si_pid == 0)
        return;
    m_hasEnded = true;
    m_killAt = QDeadlineTimer(QDeadlineTimer::Forever);
    if (result != 0) {
        m_end = {ProcessEnd::Reason::Exit, 255}; // someone else reaped it: the status is unknown
        reap();
    } else if (info.si_code == CLD_EXITED) {
        m_end = {ProcessEnd::Reason::Exit, info.si_status};
    } else {
        m_end = {ProcessEnd::Reason::Signal, info.si_status};
    }
}

void Process::Child::reap()
{
    const std::lock_guard lock(m_groupMutex);
    m_group = 0;
    while (::waitid(P_PIDFD, static_cast<id_t>(m_process.get()), nullptr, WEXITED | WNOHANG) != 0 &&
           errno == EINTR) {
    }
    m_process.close();
}

void Process::Child::finish()
{
    m_isFinished = true;
    isRunning = false;
    std::function<void(ProcessEnd)> handler;
    // What the handlers hold is let go after the lock: it may be the Process itself.
    std::function<void(QByteArrayView)> heldByOutput;
    std::function<void(QByteArrayView)> heldByError;
    {
        const std::lock_guard lock(handlerMutex);
        handler.swap(terminationHandler);
        heldByOutput.swap(outputHandler);
        heldByError.swap(errorHandler);
        if (!isAbandoned && handler)
            handler(m_end);
    }
}

} // namespace brivane
