// Stand-in for /usr/bin/osascript: runs a line of the shell, as administrator if the script says
// so.
//
//   osascript -e 'do shell script "..." [with administrator privileges]'
//
// Standard output is the command's. Standard error stays empty unless the command fails; then it
// holds one message that ends in the command's status, and the own status is 1.
//
// A signal to end is passed on to the command. Both belong to one process group; when the signal
// goes to that, the command may hear it twice.

#include "platform/linux/ChildSignals.h"
#include "platform/linux/libexec/AdminScript.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace brivane;

namespace {

constexpr const char* pkexec = "/usr/bin/pkexec";

volatile sig_atomic_t child = 0;

void passOn(int signal)
{
    const int before = errno;
    // What runs as administrator by now hears no signal of this user. It ends by the pipes that are
    // closed once nobody on this side is left.
    if (child > 0 && ::kill(child, signal) != 0 && errno == EPERM)
        ::_exit(128 + signal);
    errno = before;
}

int fail(const std::string& message)
{
    std::fprintf(stderr, "%s\n", message.c_str());
    return 1;
}

/// Reads standard error of the command to its end. What is beyond a million bytes is dropped.
std::string readDiagnostics(int descriptor)
{
    std::string text;
    std::array<char, 4096> buffer = {};
    for (;;) {
        const ssize_t got = ::read(descriptor, buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return text;
        if (text.size() < 1'000'000)
            text.append(buffer.data(), static_cast<size_t>(got));
    }
}

int run(const AdminScript::ShellCommand& command)
{
    const bool isElevated = command.needsAdministrator && ::geteuid() != 0;
    std::string line = command.line;
    std::string shell = "/bin/sh";
    std::string option = "-c";
    std::string elevator = pkexec;
    const std::array<char*, 5> arguments = {elevator.data(), shell.data(), option.data(),
                                            line.data(), nullptr};
    char* const* first = isElevated ? arguments.data() : arguments.data() + 1;

    std::array<int, 2> pipe = {};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0)
        return fail(std::string("execution error: ") + std::strerror(errno) + " (1)");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipe[1], STDERR_FILENO);
    // A signal that comes before there is someone to pass it on to waits.
    sigset_t passedOn;
    sigset_t before;
    sigemptyset(&passedOn);
    sigaddset(&passedOn, SIGTERM);
    sigaddset(&passedOn, SIGINT);
    ::sigprocmask(SIG_BLOCK, &passedOn, &before);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setsigmask(&attributes, &before);
    const sigset_t standard = posix::signalsOfAChild();
    posix_spawnattr_setsigdefault(&attributes, &standard);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    pid_t pid = -1;
    const int failure = ::posix_spawn(&pid, *first, &actions, &attributes, first, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipe[1]);
    if (failure != 0)
        return fail(std::string("execution error: ") + *first + ": " + std::strerror(failure) +
                    " (127)");
    child = pid;
    std::signal(SIGTERM, passOn);
    std::signal(SIGINT, passOn);
    ::sigprocmask(SIG_SETMASK, &before, nullptr);

    const std::string diagnostics = readDiagnostics(pipe[0]);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0) {
        if (errno != EINTR)
            return fail("execution error: The command was lost. (1)");
    }
    child = 0;
    const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    if (code == 0)
        return 0;
    return fail(AdminScript::failureMessage(code, diagnostics,
                                            isElevated ? AdminScript::Elevation::Pkexec
                                                       : AdminScript::Elevation::None));
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 3 || std::strcmp(arguments[1], "-e") != 0)
        return fail(
            "usage: osascript -e 'do shell script \"...\" [with administrator privileges]'");
    const std::optional<AdminScript::ShellCommand> command = AdminScript::parse(arguments[2]);
    if (!command)
        return fail("syntax error: Only \"do shell script\" is understood here. (-2741)");
    posix::keepEndsOfChildren();
    return run(*command);
}
