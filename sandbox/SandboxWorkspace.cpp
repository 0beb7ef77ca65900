#include "sandbox/SandboxWorkspace.h"

#include <utility>

namespace brivane {

void SandboxWorkspace::reveal(const QString& path)
{
    m_revealed << path;
}

void SandboxWorkspace::setRunningApplications(std::vector<RunningApplication> applications)
{
    const QMutexLocker lock(&m_mutex);
    m_running = std::move(applications);
}

std::vector<RunningApplication> SandboxWorkspace::runningApplications()
{
    const QMutexLocker lock(&m_mutex);
    return m_running;
}

} // namespace brivane
