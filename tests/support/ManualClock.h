#pragma once

#include "platform/Clock.h"

#include <QCoroFuture>
#include <QPromise>
#include <QTimeZone>

#include <algorithm>
#include <memory>
#include <vector>

namespace brivane::testing {

/// A clock that stands still until the test turns it. Sleepers whose time has come are woken
/// through the event loop. One thread. It starts at 2026-01-01 00:00:00 UTC.
class ManualClock final : public Clock {
public:
    [[nodiscard]] QDateTime now() const override { return m_start.addMSecs(m_elapsed.count()); }
    [[nodiscard]] std::chrono::nanoseconds monotonicNow() const override { return m_elapsed; }

    [[nodiscard]] QCoro::Task<> sleep(std::chrono::milliseconds duration) override
    {
        if (duration.count() <= 0)
            co_return;
        auto promise = std::make_shared<QPromise<void>>();
        QFuture<void> future = promise->future();
        promise->start();
        m_sleepers.push_back({m_elapsed + duration, std::move(promise)});
        co_await future;
    }

    void advance(std::chrono::milliseconds duration)
    {
        m_elapsed += duration;
        const auto due = std::stable_partition(
            m_sleepers.begin(), m_sleepers.end(),
            [&](const Sleeper& sleeper) { return sleeper.until > m_elapsed; });
        for (auto sleeper = due; sleeper != m_sleepers.end(); ++sleeper)
            sleeper->promise->finish();
        m_sleepers.erase(due, m_sleepers.end());
    }

    void setNow(const QDateTime& now) { m_start = now.addMSecs(-m_elapsed.count()); }
    [[nodiscard]] size_t sleepers() const { return m_sleepers.size(); }

private:
    struct Sleeper {
        std::chrono::milliseconds until;
        std::shared_ptr<QPromise<void>> promise;
    };

    QDateTime m_start = QDateTime(QDate(2026, 1, 1), QTime(0, 0), Qt::UTC);
    std::chrono::milliseconds m_elapsed{0};
    std::vector<Sleeper> m_sleepers;
};

} // namespace brivane::testing
