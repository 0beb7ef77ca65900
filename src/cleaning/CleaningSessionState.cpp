#include "cleaning/CleaningSessionState.h"

namespace brivane {

CleaningSessionState& CleaningSessionState::shared()
{
    static auto* const state = new CleaningSessionState;
    return *state;
}

void CleaningSessionState::setSessionActive(bool active)
{
    if (m_isSessionActive == active)
        return;
    m_isSessionActive = active;
    Q_EMIT sessionActiveChanged();
}

} // namespace brivane
