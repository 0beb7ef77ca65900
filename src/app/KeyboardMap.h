#pragma once

#include "core/AppMode.h"

#include <QtGlobal>

#include <optional>

class QKeyEvent;

// The keys that work in the whole window, together with the Command key (Ctrl on Linux). Constant
// data; any thread.
namespace brivane {

struct KeyboardCommand {
    Qt::Key key;
    std::optional<AppMode::Mode> mode; ///< the module that it shows; none: a rescan
};

/// What the pressed keys stand for; null when they are not in the map. The character counts, not
/// the place on the keyboard: Shift makes another one.
[[nodiscard]] const KeyboardCommand* keyboardCommand(const QKeyEvent& event);

} // namespace brivane
