#include "platform/Worker.h"

#include "platform/ThreadName.h"
#include "platform/ThreadPriority.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace brivane {

/// What a worker shares with its thread, which may outlive it.
class Worker::Queue {
public:
    explicit Queue(QString name)
        : m_name(std::move(name))
    {
    }

    using Job = std::function<void(std::stop_token)>;

    static void give(const std::shared_ptr<Queue>& queue, Job job)
    {
        {
            const std::lock_guard lock(queue->m_mutex);
            queue->m_jobs.push_back({std::move(job), queue->m_stop->get_token()});
            ++queue->m_unfinished;
            // Whoever runs jobs without a thread comes to this one as well. A thread that could be
            // had by now would run it beside theirs.
            if (queue->m_isRunningHere)
                return;
            if (queue->m_thread || queue->startThread(queue)) {
                queue->m_changed.notify_all();
                return;
            }
            queue->m_isRunningHere = true;
        }
        while (queue->runNext()) {
        }
    }

    void cancel()
    {
        std::unique_ptr<std::stop_source> stopped;
        {
            const std::lock_guard lock(m_mutex);
            stopped = std::exchange(m_stop, std::make_unique<std::stop_source>());
        }
        stopped->request_stop(); // callbacks run here, and may give a job
    }

    bool waitForDone(std::optional<std::chrono::milliseconds> patience = {})
    {
        std::unique_lock lock(m_mutex);
        const auto isDone = [this] { return m_unfinished == 0; };
        if (patience)
            return m_changed.wait_for(lock, *patience, isDone);
        m_changed.wait(lock, isDone);
        return true;
    }

    /// Ends the thread once there is no job; the owner does not use the queue any more.
    void end()
    {
        std::optional<std::thread> thread;
        bool isDone = false;
        {
            const std::lock_guard lock(m_mutex);
            m_isEnding = true;
            thread.swap(m_thread);
            isDone = m_unfinished == 0;
        }
        m_changed.notify_all();
        if (!thread)
            return;
        if (isDone)
            thread->join();
        else
            thread->detach();
    }

private:
    struct Waiting {
        Job job;
        std::stop_token stop;
    };

    /// m_mutex is held.
    bool startThread(const std::shared_ptr<Queue>& queue)
    {
        try {
            m_thread.emplace([queue] {
                nameThisThread(queue->m_name);
                giveWayToPainting();
                while (queue->waitForJob())
                    queue->runNext();
            });
        } catch (const std::system_error&) {
            return false;
        }
        return true;
    }

    bool waitForJob()
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_isEnding || !m_jobs.empty(); });
        return !m_jobs.empty();
    }

    /// Whether there was one.
    bool runNext()
    {
        Waiting next;
        {
            const std::lock_guard lock(m_mutex);
            if (m_jobs.empty()) {
                m_isRunningHere = false;
                return false;
            }
            next = std::move(m_jobs.front());
            m_jobs.pop_front();
        }
        next.job(next.stop);
        next.job = nullptr; // what it holds goes before it counts as done
        {
            const std::lock_guard lock(m_mutex);
            --m_unfinished;
        }
        m_changed.notify_all();
        return true;
    }

    const QString m_name;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    // Guarded by m_mutex.
    std::deque<Waiting> m_jobs;
    std::size_t m_unfinished = 0; ///< those that wait and the one that runs
    /// Of the jobs given since the last cancel.
    std::unique_ptr<std::stop_source> m_stop = std::make_unique<std::stop_source>();
    std::optional<std::thread> m_thread;
    bool m_isRunningHere = false; ///< there is no thread, and someone is at the jobs
    bool m_isEnding = false;
};

Worker::Worker(QString name)
    : m_queue(std::make_shared<Queue>(std::move(name)))
{
}

Worker::~Worker()
{
    if (m_isLeft)
        return;
    cancel();
    waitForDone();
    m_queue->end();
}

void Worker::cancel()
{
    m_queue->cancel();
}

void Worker::waitForDone()
{
    m_queue->waitForDone();
}

bool Worker::leave(std::chrono::milliseconds patience)
{
    const bool isDone = m_queue->waitForDone(patience);
    m_isLeft = true;
    m_queue->end();
    return isDone;
}

void Worker::give(std::function<void(std::stop_token)> job)
{
    Queue::give(m_queue, std::move(job));
}

} // namespace brivane
