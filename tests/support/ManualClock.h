#pragma once

#include "platform/Clock.h"

#include <QTimeZone>

#include <algorithm>
#include <coroutine>
#include <functional>
#include <optional>
#include <vector>

namespace brivane::testing {

/// A clock that stands still until the test turns it, which wakes the sleepers whose time has come
/// in the order of their times. One thread. It starts at 2026-01-01 00:00:00 UTC, and outlives
/// those who sleep by it.
class ManualClock final : public Clock {
public:
    [[nodiscard]] QDateTime now() const override { return m_start.addMSecs(m_elapsed.count()); }
    [[nodiscard]] std::chrono::nanoseconds monotonicNow() const override { return m_elapsed; }

    [[nodiscard]] QCoro::Task<> sleep(std::chrono::milliseconds duration,
                                      std::stop_token stop = {}) override
    {
        Sleeper sleeper{m_elapsed + duration, std::move(stop), {}, {}};
        Nap nap{*this, sleeper};
        co_await nap;
    }

    void advance(std::chrono::milliseconds duration)
    {
        m_elapsed += duration;
        const auto byTime = [](const Sleeper* one, const Sleeper* other) {
            return one->until < other->until;
        };
        while (!m_sleepers.empty()) {
            Sleeper* first = *std::ranges::min_element(m_sleepers, byTime);
            if (first->until > m_elapsed)
                return;
            wake(first);
        }
    }

    void setNow(const QDateTime& now) { m_start = now.addMSecs(-m_elapsed.count()); }

private:
    struct Sleeper {
        std::chrono::milliseconds until;
        std::stop_token stop;
        std::coroutine_handle<> coroutine;
        std::optional<std::stop_callback<std::function<void()>>> onStop;
    };

    struct Nap {
        ManualClock& clock;
        Sleeper& sleeper;

        [[nodiscard]] bool await_ready() const
        {
            return sleeper.until <= clock.m_elapsed || sleeper.stop.stop_requested();
        }
        void await_suspend(std::coroutine_handle<> coroutine)
        {
            sleeper.coroutine = coroutine;
            clock.m_sleepers.push_back(&sleeper);
            sleeper.onStop.emplace(sleeper.stop, [on = &clock, who = &sleeper] { on->wake(who); });
        }
        void await_resume() const {}
    };

    void wake(Sleeper* sleeper)
    {
        std::erase(m_sleepers, sleeper);
        sleeper->coroutine.resume();
    }

    QDateTime m_start = QDateTime(QDate(2026, 1, 1), QTime(0, 0), Qt::UTC);
    std::chrono::milliseconds m_elapsed{0};
    std::vector<Sleeper*> m_sleepers;
};

} // namespace brivane::testing
