#pragma once

#include <QQuickWindow>

namespace brivane {

/// Whether the screen of a module is being made at the moment, which takes several frames. Who
/// drives the window waits until it is there. GUI thread.
inline bool isMakingScreen(const QQuickWindow& window)
{
    constexpr int loading = 2; // Loader.Loading
    const auto* module = window.findChild<QObject*>(QStringLiteral("module"));
    return module && module->property("status").toInt() == loading;
}

} // namespace brivane
