#pragma once

#include <QCoroTask>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <exception>
#include <functional>
#include <optional>
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
    std::optional<T> value;
    std::exception_ptr failure;
    const auto watch = [](QCoro::Task<T> watched, std::optional<T>& result,
                          std::exception_ptr& error) -> QCoro::Task<> {
        try {
            result = co_await watched;
        } catch (...) {
            error = std::current_exception();
        }
    };
    const QCoro::Task<> watching = watch(std::move(task), value, failure);
    if (!waitUntil([&] { return value.has_value() || failure != nullptr; }))
        throw std::runtime_error("the task did not end");
    if (failure)
        std::rethrow_exception(failure);
    return *value;
}

} // namespace brivane::testing
