#pragma once

#include "core/AppMode.h"

#include <QColor>

namespace brivane {

/// The colour of a module, for its tile and highlight in the sidebar and its own page. Any thread.
[[nodiscard]] QColor modeAccentColor(AppMode::Mode mode);

} // namespace brivane
