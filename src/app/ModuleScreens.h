#pragma once

#include "core/AppMode.h"

#include <QUrl>

namespace brivane {

/// The QML file that shows a module. Its root has one required property, `shell`. Modules without a
/// screen of their own share the page that says so. Any thread.
[[nodiscard]] QUrl moduleScreen(AppMode::Mode mode);

} // namespace brivane
