#pragma once

#include <QAbstractAnimation>

#include <functional>

namespace brivane {

/// Calls back at every frame while something moves, with the milliseconds since the last time,
/// until the callback says that everything has come to rest. GUI thread.
class ChartTicker final : public QAbstractAnimation {
public:
    explicit ChartTicker(std::function<bool(int)> advance)
        : m_advance(std::move(advance))
    {
    }

    /// Goes on if it runs already.
    void run()
    {
        if (state() == Running)
            return;
        m_last = 0;
        start();
    }

    [[nodiscard]] int duration() const override { return -1; }

protected:
    void updateCurrentTime(int time) override
    {
        const int elapsed = time - m_last;
        m_last = time;
        if (elapsed > 0 && !m_advance(elapsed))
            stop();
    }

private:
    std::function<bool(int)> m_advance;
    int m_last = 0;
};

} // namespace brivane
