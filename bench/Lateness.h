#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

// How late the GUI thread is, for benchmarks with an event loop.
namespace brivane {

using Milliseconds = double;

/// How late the GUI thread's timer fired.
class Lateness : public QObject {
public:
    Lateness()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            const Milliseconds since = static_cast<double>(m_clock.nsecsElapsed()) / 1e6;
            m_clock.start();
            m_all.push_back(std::max(0.0, since - interval));
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
        std::printf("%-22s timer late: median %.1f ms, 99 %% %.1f ms, worst %.1f ms (%zu times)\n",
                    what, at(0.5), at(0.99), at(1), m_all.size());
        startAfresh();
    }

    void startAfresh()
    {
        m_all.clear();
        m_clock.start();
    }

private:
    static constexpr int interval = 10;
    QTimer m_timer;
    QElapsedTimer m_clock;
    std::vector<Milliseconds> m_all;
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
