#include "cleaning/CleaningSessionState.h"

namespace brivane {

std::unique_ptr<CleaningSessionState> CleaningSessionState::make(Composition& /*composition*/)
{
    return std::make_unique<CleaningSessionState>();
}

void CleaningSessionState::setSessionActive(bool active)
{
    if (m_isSessionActive == active)
        return;
    m_isSessionActive = active;
    Q_EMIT sessionActiveChanged();
}

} // namespace brivane
