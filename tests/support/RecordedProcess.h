#pragma once

#include "platform/Process.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>

namespace brivane::testing {

/// A process, what it printed, and waits, each of which ends after a minute. The fields are read
/// within waits(), or after the end.
class RecordedProcess {
public:
    RecordedProcess(const QString& executable, const QStringList& arguments)
        : process(std::make_unique<Process>(executable, arguments))
    {
        process->setOutputHandler([this](QByteArrayView bytes) {
            const std::lock_guard lock(m_mutex);
            output.append(bytes);
            m_changed.notify_all();
        });
        process->setErrorHandler([this](QByteArrayView bytes) {
            const std::lock_guard lock(m_mutex);
            error.append(bytes);
        });
        process->setTerminationHandler([this](ProcessEnd how) {
            const std::lock_guard lock(m_mutex);
            end = how;
            m_changed.notify_all();
        });
    }

    template<typename Condition>
    [[nodiscard]] bool waits(Condition condition)
    {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::minutes(1), condition);
    }
    [[nodiscard]] bool ends()
    {
        return waits([this] { return end.has_value(); });
    }
    /// Starts it and waits for its end.
    [[nodiscard]] bool runs()
    {
        process->start();
        return ends();
    }
    /// With which it ends; -1 when it does not, or by a signal.
    int status() { return ends() && end->reason == ProcessEnd::Reason::Exit ? end->status : -1; }

    QByteArray output;
    QByteArray error;
    std::optional<ProcessEnd> end;
    std::unique_ptr<Process> process;

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
};

/// The exit status of a command that is run to its end; -1 as above.
inline int statusOf(const QString& executable, const QStringList& arguments)
{
    RecordedProcess run(executable, arguments);
    return run.runs() ? run.status() : -1;
}

} // namespace brivane::testing
