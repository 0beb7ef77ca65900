#pragma once

#include "platform/Clock.h"

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace brivane {

/// The machine's time, but for durations: each look at them takes one step, and a walk, which looks
/// at every entry, can be stopped at one of them. So a scan under way shows the same on every
/// machine, however fast. Any thread.
class HoldableClock final : public Clock {
public:
    explicit HoldableClock(std::chrono::nanoseconds step = std::chrono::microseconds(200))
        : m_step(step)
    {
    }

    [[nodiscard]] QDateTime now() const override
    {
        return m_system.now().addMSecs(-m_behind.load().count());
    }
    /// Makes the date that long ago.
    void setBehind(std::chrono::milliseconds time) { m_behind = time; }

    [[nodiscard]] std::chrono::nanoseconds monotonicNow() const override
    {
        std::unique_lock lock(m_mutex);
        const long look = ++m_looks;
        m_goesOn.wait(lock, [&] { return look != m_holdAt; });
        return look * m_step;
    }

    [[nodiscard]] QCoro::Task<> sleep(std::chrono::milliseconds duration,
                                      std::stop_token stop = {}) override
    {
        return m_system.sleep(duration, std::move(stop));
    }

    /// As if somebody had looked for so long.
    void letPass(std::chrono::nanoseconds time)
    {
        const std::lock_guard lock(m_mutex);
        m_looks += static_cast<long>(time / m_step);
    }

    /// Whoever looks for the `looks`-th time from now waits until release() or the next call. One
    /// who waits already goes on.
    void holdAfter(long looks)
    {
        const std::lock_guard lock(m_mutex);
        m_holdAt = m_looks + looks;
        m_goesOn.notify_all();
    }

    void release()
    {
        const std::lock_guard lock(m_mutex);
        m_holdAt = -1;
        m_goesOn.notify_all();
    }

    /// Whether somebody has looked as often as to be held, and waits.
    [[nodiscard]] bool isHolding() const
    {
        const std::lock_guard lock(m_mutex);
        return m_holdAt >= 0 && m_looks >= m_holdAt;
    }

private:
    const std::chrono::nanoseconds m_step;
    SystemClock m_system;
    std::atomic<std::chrono::milliseconds> m_behind{std::chrono::milliseconds(0)};
    mutable std::mutex m_mutex; ///< guards what follows
    mutable std::condition_variable m_goesOn;
    mutable long m_looks = 0;
    long m_holdAt = -1;
};

} // namespace brivane
