#pragma once

#include <chrono>
#include <optional>

// How many threads of a walk read at the same time.
//
// As long as what is read comes from memory, threads beyond the cores only take turns at them and
// at the queue. Where it comes from a disk each thread sleeps for most of the time, a disk of today
// answers many questions at once, and fifteen threads get a third more out of it than three. Which
// of the two it is, nobody knows beforehand, and it changes on the way: half of a tree may be
// cached. So a walk starts with as many threads as there are cores and each watches itself: one
// that finds that it sleeps calls for another, one that finds that it works sends one away. From
// one thread to all of them is a matter of a few looks.
namespace brivane::walking {

/// What one thread finds of itself. Belongs to that thread.
class WalkPace {
public:
    enum class Finding {
        Waits, ///< it sleeps for most of the time that reading takes: one more would help
        Works, ///< it is busy: there need not be more
    };

    /// The thread begins to read a directory.
    void begin();
    /// It has read it. A finding comes every few milliseconds, and not when it is neither.
    [[nodiscard]] std::optional<Finding> end();

private:
    struct Usage {
        std::chrono::microseconds processor{0};
        long sleeps = 0;    ///< how often it had to wait
        long preempted = 0; ///< how often others took the processor from it

        static Usage ofThread();
    };

    std::chrono::steady_clock::time_point m_begin;
    std::chrono::nanoseconds m_reading{0}; ///< since the last look
    std::optional<Usage> m_before;         ///< at the last look
};

} // namespace brivane::walking
