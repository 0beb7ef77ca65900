#pragma once

#include <QFuture>
#include <QPromise>
#include <QString>

#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <stop_token>
#include <type_traits>
#include <utility>

namespace brivane {

/// A thread of one's own with a name, a queue and a cancel: where the long work of a service runs.
///
/// Jobs run one after the other, in the order in which they were given. Each of them runs, also
/// after a cancel, so that whoever waits for its result gets one; a job that takes long asks its
/// stop token. Any thread may give jobs. The thread starts with the first job; where the machine
/// has none to give, jobs run at once on the thread that gives them.
class Worker {
public:
    /// `name` is what tools show the thread as; they cut it off after 15 bytes.
    explicit Worker(QString name);
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    /// Cancels, and waits for all jobs, unless it was left. Not from one of them.
    ~Worker();

    /// Runs `job`, which takes nothing or a std::stop_token, and gives what it gives or throws.
    template<typename Job>
    auto run(Job job);

    /// Asks the job that runs and those that wait to stop; not those that come later.
    void cancel();
    /// Waits until there is no job.
    void waitForDone();
    /// Waits so long at most, and leaves the thread to itself then: for work that may hang in the
    /// kernel. Its jobs may use nothing that ends with the caller. Ends the use of this worker;
    /// whether all was done.
    bool leave(std::chrono::milliseconds patience);

private:
    class Queue;

    void give(std::function<void(std::stop_token)> job);

    const std::shared_ptr<Queue> m_queue;
    bool m_isLeft = false;
};

template<typename Job>
auto Worker::run(Job job)
{
    constexpr bool takesStop = std::is_invocable_v<Job&, std::stop_token>;
    const auto perform = [](Job& what, [[maybe_unused]] const std::stop_token& stop) {
        if constexpr (takesStop)
            return what(stop);
        else
            return what();
    };
    using Value = std::invoke_result_t<decltype(perform), Job&, const std::stop_token&>;
    // Shared, since a std::function can be copied and a promise cannot.
    auto promise = std::make_shared<QPromise<Value>>();
    const QFuture<Value> future = promise->future();
    promise->start();
    give([promise, perform,
          job = std::make_shared<Job>(std::move(job))](const std::stop_token& stop) mutable {
        try {
            if constexpr (std::is_void_v<Value>)
                perform(*job, stop);
            else
                promise->addResult(perform(*job, stop));
        } catch (...) {
            promise->setException(std::current_exception());
        }
        // What the job held is gone before anyone hears that it is done.
        job.reset();
        promise->finish();
    });
    return future;
}

} // namespace brivane
