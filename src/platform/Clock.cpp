#include "platform/Clock.h"

#include <QCoroTimer>

namespace brivane {

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTimeUtc();
}

std::chrono::nanoseconds SystemClock::monotonicNow() const
{
    return std::chrono::steady_clock::now().time_since_epoch();
}

QCoro::Task<> SystemClock::sleep(std::chrono::milliseconds duration)
{
    QTimer timer;
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(duration);
    co_await timer;
}

} // namespace brivane
