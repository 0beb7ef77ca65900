#include "core/ActivityTracker.h"

#include <QJSEngine>

namespace brivane {

ActivityTracker& ActivityTracker::shared()
{
    static auto* const tracker = new ActivityTracker;
    return *tracker;
}

ActivityTracker* ActivityTracker::create(QQmlEngine* /*engine*/, QJSEngine* /*scriptEngine*/)
{
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
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
