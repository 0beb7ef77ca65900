#include "platform/linux/WalkPace.h"

#include <utility>

#include <sys/resource.h>

namespace brivane::walking {

using namespace std::chrono_literals;

namespace {

/// Long enough for a look to cost nothing beside it, and short beside what a disk needs for a tree.
constexpr auto betweenLooks = 4ms;

std::chrono::microseconds duration(const timeval& time)
{
    return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
}

} // namespace

WalkPace::Usage WalkPace::Usage::ofThread()
{
    struct rusage usage = {};
    ::getrusage(RUSAGE_THREAD, &usage);
    return {duration(usage.ru_utime) + duration(usage.ru_stime), usage.ru_nvcsw, usage.ru_nivcsw};
}

void WalkPace::begin()
{
    if (!m_before)
        m_before = Usage::ofThread();
    m_begin = std::chrono::steady_clock::now();
}

std::optional<WalkPace::Finding> WalkPace::end()
{
    m_reading += std::chrono::steady_clock::now() - m_begin;
    if (m_reading < betweenLooks)
        return {};
    const auto reading = std::exchange(m_reading, 0ns);
    const Usage now = Usage::ofThread();
    const Usage before = *std::exchange(m_before, now);
    const auto processor = now.processor - before.processor;
    const long sleeps = now.sleeps - before.sleeps;
    // On a busy machine a thread gets little of the processor without ever asking a disk.
    if (processor < reading / 2 && sleeps > 0 && sleeps >= now.preempted - before.preempted)
        return Finding::Waits;
    if (processor > reading * 3 / 4)
        return Finding::Works;
    return {};
}

} // namespace brivane::walking
