#include "platform/Process.h"

#include "platform/PathText.h"
#include "platform/linux/ProcessChild.h"

#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace brivane {

LaunchError::LaunchError(QString executable, int errorNumber)
    : m_executable(std::move(executable))
    , m_errorNumber(errorNumber)
{
    m_what = errorDescription().toUtf8();
}

QString LaunchError::errorDescription() const
{
    const std::string reason = std::generic_category().message(m_errorNumber);
    return u"'"_s + PathText::forDisplay(m_executable) + u"' could not be started: "_s +
           QString::fromStdString(reason);
}

Process::Process(QString executable, QStringList arguments)
    : m_child(std::make_shared<Child>(std::move(executable), std::move(arguments)))
{
}

Process::~Process()
{
    if (!m_child->isWatched)
        return;
    Monitor& monitor = Monitor::shared();
    if (monitor.isCurrentThread()) {
        // In a handler, which holds the mutex: what it runs in is let go when it has returned.
        m_child->isAbandoned = true;
    } else {
        std::function<void(QByteArrayView)> output;
        std::function<void(QByteArrayView)> error;
        std::function<void(ProcessEnd)> termination;
        const std::lock_guard lock(m_child->handlerMutex);
        m_child->isAbandoned = true;
        output.swap(m_child->outputHandler);
        error.swap(m_child->errorHandler);
        termination.swap(m_child->terminationHandler);
    }
    if (m_child->isRunning) {
        m_child->signalGroup(SIGTERM);
        monitor.wake();
    }
}

void Process::setOutputHandler(std::function<void(QByteArrayView)> handler)
{
    m_child->outputHandler = std::move(handler);
}

void Process::setErrorHandler(std::function<void(QByteArrayView)> handler)
{
    m_child->errorHandler = std::move(handler);
}

void Process::mergeErrorIntoOutput()
{
    m_child->isErrorMerged = true;
}

void Process::setTerminationHandler(std::function<void(ProcessEnd)> handler)
{
    m_child->terminationHandler = std::move(handler);
}

void Process::start()
{
    int failure = 0;
    try {
        Monitor& monitor = Monitor::shared(); // a child that nobody serves would be lost
        m_child->spawn();
        m_child->isWatched = true;
        monitor.watch(m_child);
        return;
    } catch (const std::system_error& error) {
        failure = error.code().value();
    } catch (const LaunchError& error) {
        failure = error.errorNumber();
    }
    m_child->outputHandler = nullptr;
    m_child->errorHandler = nullptr;
    m_child->terminationHandler = nullptr;
    throw LaunchError(m_child->executable, failure);
}

void Process::terminate()
{
    if (!m_child->isRunning)
        return;
    m_child->isTerminated = true;
    m_child->signalGroup(SIGTERM);
    m_child->signalGroup(SIGCONT); // one that was stopped hears nothing
    Monitor::shared().wake();
}

bool Process::isRunning() const
{
    return m_child->isRunning;
}

Process::Monitor& Process::Monitor::shared()
{
    // Never destroyed: its thread serves to the very end.
    static Monitor* const monitor = new Monitor;
    return *monitor;
}

Process::Monitor::Monitor()
    : m_wake(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (!m_wake.isValid())
        throw std::system_error(errno, std::generic_category());
    m_thread = std::thread([this] { run(); });
}

void Process::Monitor::watch(std::shared_ptr<Child> child)
{
    {
        const std::lock_guard lock(m_mutex);
        m_children.push_back(std::move(child));
    }
    wake();
}

void Process::Monitor::wake()
{
    const uint64_t one = 1;
    while (::write(m_wake.get(), &one, sizeof one) < 0 && errno == EINTR) {
    }
}

bool Process::Monitor::isCurrentThread() const
{
    return m_thread.get_id() == std::this_thread::get_id();
}

void Process::Monitor::run()
{
    std::vector<std::shared_ptr<Child>> children;
    std::vector<pollfd> descriptors;
    for (;;) {
        {
            const std::lock_guard lock(m_mutex);
            children = m_children;
        }
        descriptors.assign(1, {m_wake.get(), POLLIN, 0});
        int timeout = -1;
        for (const auto& child : children) {
            child->addTo(descriptors);
            const int next = child->timeout();
            if (next >= 0)
                timeout = timeout < 0 ? next : std::min(timeout, next);
        }
        ::poll(descriptors.data(), descriptors.size(), timeout);
        uint64_t woken = 0;
        if (::read(m_wake.get(), &woken, sizeof woken) < 0 && errno != EAGAIN && errno != EINTR)
            continue;
        for (const auto& child : children) {
            if (!child->serve())
                continue;
            const std::lock_guard lock(m_mutex);
            std::erase(m_children, child);
        }
        children.clear();
    }
}

} // namespace brivane
