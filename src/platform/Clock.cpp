#include "platform/Clock.h"

#include <QTimer>

#include <coroutine>
#include <optional>

namespace brivane {

namespace {

/// What wakes a sleeper: a timer, or a stop that is requested.
struct Wakers {
    QTimer timer;
    std::stop_token stop;
    std::optional<std::stop_callback<std::coroutine_handle<>>> onStop;
};

/// Suspends until one of the wakers fires.
struct Nap {
    Wakers& wakers;

    [[nodiscard]] bool await_ready() const { return wakers.stop.stop_requested(); }
    void await_suspend(std::coroutine_handle<> sleeper)
    {
        // Whichever comes first ends the sleep, and with it the wakers.
        QObject::connect(&wakers.timer, &QTimer::timeout, sleeper);
        wakers.timer.start();
        wakers.onStop.emplace(wakers.stop, sleeper);
    }
    void await_resume() const {}
};

} // namespace

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTimeUtc();
}

std::chrono::nanoseconds SystemClock::monotonicNow() const
{
    return std::chrono::steady_clock::now().time_since_epoch();
}

QCoro::Task<> SystemClock::sleep(std::chrono::milliseconds duration, std::stop_token stop)
{
    Wakers wakers;
    wakers.stop = std::move(stop);
    wakers.timer.setSingleShot(true);
    wakers.timer.setTimerType(Qt::PreciseTimer);
    wakers.timer.setInterval(duration);
    Nap nap{wakers};
    co_await nap;
}

} // namespace brivane
