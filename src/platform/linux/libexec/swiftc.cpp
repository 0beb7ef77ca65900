// Stand-in for /usr/bin/swiftc: compiles the one program that Brivane brings along as source text,
// which here is C++, with the compiler of this machine.
//
//   swiftc -O -o BINARY SOURCE
//
// The status is the compiler's, 127 when none is installed. What the caller's environment says is
// not heard: the binary is made to be run as administrator. A signal to end reaches all processes
// that the compiler consists of, and the stand-in ends after the last of them.

#include "platform/linux/ChildSignals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <string>

#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::array compilers = {"/usr/bin/c++", "/usr/bin/g++", "/usr/bin/clang++"};

int fail(const std::string& message, int status)
{
    std::fprintf(stderr, "swiftc: %s\n", message.c_str());
    return status;
}

const char* installedCompiler()
{
    for (const char* compiler : compilers) {
        if (::access(compiler, X_OK) == 0)
            return compiler;
    }
    return nullptr;
}

/// The signals that are waited for; they stay blocked here and are unblocked in the compiler.
sigset_t awaitedSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGCHLD, SIGTERM, SIGINT, SIGHUP})
        sigaddset(&signals, signal);
    return signals;
}

/// Starts the compiler as the head of a process group of its own.
int spawn(const char* compiler, const std::string& binary, std::string source, pid_t& pid)
{
    // Its temporary files belong where the binary does: into a folder that nobody else can enter.
    std::string folder = "TMPDIR=" + binary.substr(0, binary.rfind('/') + 1);
    std::string program = compiler;
    std::array<std::string, 7> options = {"-O2", "-std=c++17", "-pipe", "-o", binary, "-x", "c++"};
    std::array<char*, options.size() + 3> arguments = {program.data()};
    for (std::size_t i = 0; i < options.size(); ++i)
        arguments[i + 1] = options[i].data();
    arguments[options.size() + 1] = source.data();
    std::string path = "PATH=/usr/bin:/bin";
    std::string language = "LC_ALL=C.UTF-8";
    const std::array<char*, 4> environment = {path.data(), language.data(), folder.data(), nullptr};

    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setsigmask(&attributes, &none);
    const sigset_t standard = brivane::posix::signalsOfAChild();
    posix_spawnattr_setsigdefault(&attributes, &standard);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK |
                                              POSIX_SPAWN_SETSIGDEF);
    const int failure =
        ::posix_spawn(&pid, compiler, nullptr, &attributes, arguments.data(), environment.data());
    posix_spawnattr_destroy(&attributes);
    return failure;
}

/// Waits until `compiler` and all that it has started are gone, and gives its status.
int waitForAll(pid_t compiler, const sigset_t& signals)
{
    int result = 1;
    for (;;) {
        const int signal = ::sigwaitinfo(&signals, nullptr);
        if (signal > 0 && signal != SIGCHLD)
            ::kill(-compiler, SIGTERM);
        for (;;) {
            int status = 0;
            const pid_t ended = ::waitpid(-1, &status, WNOHANG);
            if (ended == 0)
                break;
            if (ended < 0 && errno == ECHILD)
                return result;
            if (ended == compiler)
                result = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        }
    }
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 5 || std::strcmp(arguments[1], "-O") != 0 || std::strcmp(arguments[2], "-o") != 0)
        return fail("usage: swiftc -O -o BINARY SOURCE", 2);
    const char* compiler = installedCompiler();
    if (!compiler)
        return fail("No C++ compiler is installed.", 127);
    // What the compiler leaves behind when it is ended comes to us.
    ::prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0);
    brivane::posix::keepEndsOfChildren();
    const sigset_t signals = awaitedSignals();
    ::sigprocmask(SIG_BLOCK, &signals, nullptr);
    pid_t pid = -1;
    if (const int failure = spawn(compiler, arguments[3], arguments[4], pid); failure != 0)
        return fail(std::string(compiler) + ": " + std::strerror(failure), 126);
    return waitForAll(pid, signals);
}
