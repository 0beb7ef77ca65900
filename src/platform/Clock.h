#pragma once

#include <QCoroTask>
#include <QDateTime>

#include <chrono>

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

    /// Ends after `duration`, on the calling thread, which needs an event loop.
    [[nodiscard]] virtual QCoro::Task<> sleep(std::chrono::milliseconds duration) = 0;
};

/// The machine's clocks.
class SystemClock final : public Clock {
public:
    [[nodiscard]] QDateTime now() const override;
    [[nodiscard]] std::chrono::nanoseconds monotonicNow() const override;
    [[nodiscard]] QCoro::Task<> sleep(std::chrono::milliseconds duration) override;
};

} // namespace brivane
