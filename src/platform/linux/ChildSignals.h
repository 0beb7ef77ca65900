#pragma once

#include <csignal>

// What a launcher may leave of signals to a program and, by way of it, to its children: a signal
// that is ignored stays ignored in all that is started.
namespace brivane::posix {

/// Sees to it that this process hears how its children end. While SIGCHLD is ignored the kernel
/// throws that away: who waits gets ECHILD, and no signal comes. A handler that somebody has set
/// stays. Any thread.
inline void keepEndsOfChildren()
{
    struct sigaction action = {};
    if (::sigaction(SIGCHLD, nullptr, &action) != 0)
        return;
    const bool isIgnored = action.sa_handler == SIG_IGN;
    if (!isIgnored && (action.sa_flags & SA_NOCLDWAIT) == 0)
        return;
    if (isIgnored)
        action.sa_handler = SIG_DFL;
    action.sa_flags &= ~SA_NOCLDWAIT;
    ::sigaction(SIGCHLD, &action, nullptr);
}

/// The signals that a child is to have at their default, for posix_spawnattr_setsigdefault: all but
/// SIGHUP, which nohup ignores for whatever follows.
inline sigset_t signalsOfAChild()
{
    sigset_t signals;
    sigfillset(&signals);
    sigdelset(&signals, SIGHUP);
    return signals;
}

} // namespace brivane::posix
