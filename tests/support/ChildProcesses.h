#pragma once

#include <QDeadlineTimer>

#include <filesystem>
#include <iterator>
#include <thread>

#include <sys/wait.h>

namespace brivane::testing {

/// Waits until this process has no children, dead or alive, for ten seconds at most.
inline bool waitForNoChildren()
{
    const QDeadlineTimer deadline(10'000);
    siginfo_t info = {};
    while (!deadline.hasExpired()) {
        if (::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) != 0)
            return true;
        std::this_thread::yield();
    }
    return false;
}

/// How many descriptors this process has open.
inline int openDescriptors()
{
    const std::filesystem::directory_iterator entries("/proc/self/fd");
    return static_cast<int>(std::distance(begin(entries), end(entries))) - 1;
}

} // namespace brivane::testing
