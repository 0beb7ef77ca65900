#pragma once

#include <QCoroTask>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <functional>
#include <stdexcept>

namespace brivane::testing {

/// Runs the event loop until `isDone`, for ten seconds at most. Whether it became true.
inline bool waitUntil(const std::function<bool()>& isDone)
{
    const QDeadlineTimer deadline(10'000);
    QTimer tick; // an event loop sleeps unless something wakes it
    tick.start(1);
    QEventLoop loop;
    bool isSeen = isDone(); // what has been seen may pass
    while (!isSeen && !deadline.hasExpired()) {
        loop.processEvents(QEventLoop::WaitForMoreEvents);
        isSeen = isDone();
    }
    return isSeen;
}

/// What `task` returns or throws; throws std::runtime_error when it has not ended after ten
/// seconds.
template<typename T>
T awaitTask(QCoro::Task<T> task)
{
    if (!waitUntil([&] { return task.isReady(); }))
        throw std::runtime_error("the task did not end");
    return std::move(task).operator co_await().await_resume();
}

} // namespace brivane::testing
