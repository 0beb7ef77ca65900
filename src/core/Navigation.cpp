#include "core/Navigation.h"

namespace brivane {

std::unique_ptr<Navigation> Navigation::make(Composition& /*composition*/)
{
    return std::make_unique<Navigation>();
}

void Navigation::setAppMode(AppMode::Mode mode)
{
    if (m_appMode == mode)
        return;
    m_appMode = mode;
    Q_EMIT appModeChanged();
}

} // namespace brivane
