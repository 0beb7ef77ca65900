#pragma once

#include <QCoroTask>
#include <QDateTime>

#include <chrono>
#include <stop_token>

namespace brivane {

/// Time as the program sees it, so that a test can turn it by hand.
class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /// The date and time of day, in UTC. May jump when the machine's clock is set. Any thread.
    [[nodiscard]] virtual QDateTime now() const = 0;

    /// Time since some moment in the past, which never jumps: for durations. Any thread.
    [[nodiscard]] virtual std::chrono::nanoseconds monotonicNow() const = 0;

    /// Ends after `duration`, or at once when `stop` is requested: before the request returns. On
    /// the calling thread, which needs an event loop, and where alone `stop` may be requested.
    /// Whoever sleeps on behalf of an object stops it in that object's destructor.
    [[nodiscard]] virtual QCoro::Task<> sleep(std::chrono::milliseconds duration,
                                              std::stop_token stop = {}) = 0;
};

/// The machine's clocks.
class SystemClock final : public Clock {
public:
    [[nodiscard]] QDateTime now() const override;
    [[nodiscard]] std::chrono::nanoseconds monotonicNow() const override;
    [[nodiscard]] QCoro::Task<> sleep(std::chrono::milliseconds duration,
                                      std::stop_token stop = {}) override;
};

} // namespace brivane
