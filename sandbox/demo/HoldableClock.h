#pragma once

#include "platform/Clock.h"

#include <condition_variable>
#include <mutex>

namespace brivane {

/// The machine's time, but for durations: each look at them takes a fifth of a millisecond, and a
/// walk, which looks at every entry, can be stopped at one of them. So a picture of a scan under
/// way shows the same on every machine, however fast. Any thread.
class HoldableClock final : public Clock {
public:
    [[nodiscard]] QDateTime now() const override { return m_system.now(); }

    [[nodiscard]] std::chrono::nanoseconds monotonicNow() const override
    {
        std::unique_lock lock(m_mutex);
        ++m_looks;
        m_isReleased.wait(lock, [this] { return m_looks != m_holdAt; });
        return m_looks * std::chrono::microseconds(200);
    }

    [[nodiscard]] QCoro::Task<> sleep(std::chrono::milliseconds duration) override
    {
        return m_system.sleep(duration);
    }

    /// Whoever looks for the `looks`-th time from now waits until release().
    void holdAfter(long looks)
    {
        const std::lock_guard lock(m_mutex);
        m_holdAt = m_looks + looks;
    }

    void release()
    {
        const std::lock_guard lock(m_mutex);
        m_holdAt = -1;
        m_isReleased.notify_all();
    }

private:
    SystemClock m_system;
    mutable std::mutex m_mutex; ///< guards what follows
    mutable std::condition_variable m_isReleased;
    mutable long m_looks = 0;
    long m_holdAt = -1;
};

} // namespace brivane
