#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <vector>

// How late the GUI thread is, for benchmarks with an event loop.
namespace brivane {

using Milliseconds = double;

/// How late the GUI thread's timer fired, and how much the thread itself did meanwhile: the rest it
/// was waiting for a processor, on a machine that others keep busy.
class Lateness : public QObject {
public:
    Lateness()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            const Milliseconds since = static_cast<double>(m_clock.nsecsElapsed()) / 1e6;
            m_clock.start();
            m_all.push_back(std::max(0.0, since - interval));
            const Milliseconds worked = processorTime();
            m_longestWork = std::max(m_longestWork, worked - m_worked);
            m_worked = worked;
        });
        m_clock.start();
        m_timer.start(interval);
    }

    void report(const char* what)
    {
        if (m_all.empty())
            m_all.push_back(static_cast<double>(m_clock.nsecsElapsed()) / 1e6);
        std::ranges::sort(m_all);
        const auto at = [this](double share) {
            return m_all[static_cast<std::size_t>(share * static_cast<double>(m_all.size() - 1))];
        };
        std::printf(
            "%-22s timer late: median %.1f ms, 99 %% %.1f ms, worst %.1f ms (%zu times), at "
            "most %.1f ms of work in one\n",
            what, at(0.5), at(0.99), at(1), m_all.size(), m_longestWork);
        startAfresh();
    }

    void startAfresh()
    {
        m_all.clear();
        m_longestWork = 0;
        m_worked = processorTime();
        m_clock.start();
    }

private:
    /// Of this thread.
    static Milliseconds processorTime()
    {
        timespec time = {};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    }

    static constexpr int interval = 10;
    QTimer m_timer;
    QElapsedTimer m_clock;
    std::vector<Milliseconds> m_all;
    Milliseconds m_worked = processorTime(); ///< at the last time
    Milliseconds m_longestWork = 0;
};

/// Runs an event loop until `isDone`, which is asked once in a millisecond. (A real loop: what is
/// to be deleted later would stay with QCoreApplication::processEvents().)
inline void runUntil(const std::function<bool()>& isDone)
{
    QEventLoop loop;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, &loop, [&] {
        if (isDone())
            loop.quit();
    });
    tick.start(1);
    loop.exec();
}

} // namespace brivane
