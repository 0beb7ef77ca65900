#include "core/Command.h"

#include "core/DataCollector.h"
#include "platform/ThreadName.h"

#include <QPromise>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;

namespace brivane {

bool CommandEnd::isSuccess() const
{
    return !isSkipped && launchErrorNumber == 0 && !isTooLong && process.isSuccess();
}

void CommandEnd::throwIfNotStarted(const QString& executable) const
{
    if (launchErrorNumber != 0)
        throw LaunchError(executable, launchErrorNumber);
}

/// The command while it runs. Kept alive by the handlers of its process, which go when that has
/// ended, and by the thread that starts it.
class Command::State : public std::enable_shared_from_this<State> {
public:
    State(const QString& path, const QStringList& arguments)
        : m_process(std::make_unique<Process>(path, arguments))
    {
        m_promise.start();
    }

    QFuture<CommandEnd> start(const std::stop_token& stop)
    {
        setHandlers();
        m_stop = stop;
        m_isStarting = true;
        m_stopCallback.emplace(stop, [weak = weak_from_this()] {
            if (const std::shared_ptr<State> state = weak.lock())
                state->terminate();
        });
        try {
            std::thread([state = shared_from_this()] {
                nameThisThread(u"starts"_s);
                state->launch();
            }).detach();
        } catch (const std::system_error& failure) { // no thread, and so no process either
            {
                const std::lock_guard lock(m_mutex);
                m_isStarting = false;
            }
            finish({.launchErrorNumber = failure.code().value()});
        }
        return m_promise.future();
    }

    void mergeErrorIntoOutput() { m_process->mergeErrorIntoOutput(); }

    /// Nobody is there any more to hear of it.
    void abandon()
    {
        std::unique_ptr<Process> process;
        {
            const std::lock_guard lock(m_mutex);
            m_isAbandoned = true;
            if (!m_isStarting)
                process = std::move(m_process);
        }
        process.reset(); // waits for a handler that runs, and so without the lock
        finish({.isSkipped = true});
    }

    bool waitForEnd(std::chrono::milliseconds patience)
    {
        std::unique_lock lock(m_mutex);
        return m_ends.wait_for(lock, patience, [this] { return m_hasEnded; });
    }

    std::function<void(QByteArrayView)> outputHandler;
    std::shared_ptr<LineQueue> lines;

private:
    void setHandlers()
    {
        const auto self = shared_from_this();
        m_process->setOutputHandler([self](QByteArrayView bytes) { self->take(bytes); });
        m_process->setErrorHandler([self](QByteArrayView bytes) { self->m_error.append(bytes); });
        m_process->setTerminationHandler([self](ProcessEnd end) {
            self->finish({.isTooLong = self->m_isTooLong.load(),
                          .process = end,
                          .output = self->m_output.data(),
                          .error = self->m_error.data()});
        });
    }

    void take(QByteArrayView bytes)
    {
        if (outputHandler) {
            outputHandler(bytes);
        } else if (lines) {
            lines->append(bytes);
        } else if (!m_output.append(bytes) && !m_isTooLong.exchange(true)) {
            terminate();
        }
    }

    /// On the thread that starts it.
    void launch()
    {
        if (m_stop.stop_requested())
            finish({.isSkipped = true});
        int failure = 0;
        if (!hasEnded()) {
            try {
                m_process->start();
            } catch (const LaunchError& error) {
                failure = error.errorNumber();
            }
        }
        std::unique_ptr<Process> abandoned;
        {
            const std::lock_guard lock(m_mutex);
            m_isStarting = false;
            if (m_isAbandoned)
                abandoned = std::move(m_process);
            else if (m_stop.stop_requested() || m_isTooLong)
                m_process->terminate();
        }
        abandoned.reset();
        if (failure != 0)
            finish({.launchErrorNumber = failure});
    }

    void terminate()
    {
        const std::lock_guard lock(m_mutex);
        if (!m_isStarting && m_process) // else whoever starts or ends it sees to that
            m_process->terminate();
    }

    bool hasEnded()
    {
        const std::lock_guard lock(m_mutex);
        return m_hasEnded;
    }

    void finish(const CommandEnd& end)
    {
        {
            const std::lock_guard lock(m_mutex);
            if (std::exchange(m_hasEnded, true))
                return;
        }
        if (lines)
            lines->close();
        m_promise.addResult(end);
        m_promise.finish();
        m_ends.notify_all();
    }

    std::mutex m_mutex;
    std::condition_variable m_ends;
    std::unique_ptr<Process> m_process; ///< its owner changes under m_mutex
    bool m_isStarting = false;          ///< guarded by m_mutex; the process is its thread's
    bool m_isAbandoned = false;         ///< guarded by m_mutex
    bool m_hasEnded = false;            ///< guarded by m_mutex
    std::atomic<bool> m_isTooLong = false;
    DataCollector m_output{outputLimit};
    DataCollector m_error{errorLimit};
    QPromise<CommandEnd> m_promise;
    std::stop_token m_stop;
    std::optional<std::stop_callback<std::function<void()>>> m_stopCallback;
};

Command::Command(const QString& path, const QStringList& arguments)
    : m_state(std::make_shared<State>(path, arguments))
{
}

Command::~Command()
{
    m_state->abandon();
}

void Command::setOutputHandler(std::function<void(QByteArrayView)> handler)
{
    m_state->outputHandler = std::move(handler);
}

void Command::sendLinesTo(std::shared_ptr<LineQueue> lines)
{
    m_state->lines = std::move(lines);
}

void Command::mergeErrorIntoOutput()
{
    m_state->mergeErrorIntoOutput();
}

QFuture<CommandEnd> Command::start(const std::stop_token& stop)
{
    return m_state->start(stop);
}

bool Command::waitForEnd(std::chrono::milliseconds patience)
{
    return m_state->waitForEnd(patience);
}

} // namespace brivane
