#include "core/ActivityTracker.h"

namespace brivane {

std::unique_ptr<ActivityTracker> ActivityTracker::make(Composition& /*composition*/)
{
    return std::make_unique<ActivityTracker>();
}

QStringList ActivityTracker::activeProcessList() const
{
    QStringList tokens = m_activeProcesses.values();
    tokens.sort();
    return tokens;
}

void ActivityTracker::setActive(const QString& token)
{
    if (isActive(token))
        return;
    m_activeProcesses.insert(token);
    Q_EMIT activeProcessesChanged();
}

void ActivityTracker::setInactive(const QString& token)
{
    if (m_activeProcesses.remove(token))
        Q_EMIT activeProcessesChanged();
}

bool ActivityTracker::isActive(const QString& token) const
{
    return m_activeProcesses.contains(token);
}

} // namespace brivane
