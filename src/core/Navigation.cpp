#include "core/Navigation.h"

#include "core/Publish.h"

namespace brivane {

std::unique_ptr<Navigation> Navigation::make(Composition& /*composition*/)
{
    return std::make_unique<Navigation>();
}

void Navigation::setAppMode(AppMode::Mode mode)
{
    publish(m_appMode, mode, this, &Navigation::appModeChanged);
}

} // namespace brivane
