#include "core/CleaningSessionState.h"

#include "core/Publish.h"

namespace brivane {

std::unique_ptr<CleaningSessionState> CleaningSessionState::make(Composition& /*composition*/)
{
    return std::make_unique<CleaningSessionState>();
}

void CleaningSessionState::setSessionActive(bool active)
{
    publish(m_isSessionActive, active, this, &CleaningSessionState::sessionActiveChanged);
}

} // namespace brivane
