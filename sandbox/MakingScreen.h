#pragma once

#include <QQmlEngine>
#include <QQmlIncubationController>
#include <QQuickWindow>

namespace brivane {

/// Whether the screen of a module is being made at the moment, which takes several frames: then
/// goes on with it, for a while or to its end. Who drives the window calls this from the event loop
/// until the screen is there. GUI thread.
inline bool isMakingScreen(const QQuickWindow& window)
{
    constexpr int loading = 2; // Loader.Loading
    const auto* module = window.findChild<QObject*>(QStringLiteral("module"));
    if (!module || module->property("status").toInt() != loading)
        return false;
    constexpr int milliseconds = 100;
    qmlEngine(module)->incubationController()->incubateFor(milliseconds);
    return true;
}

} // namespace brivane
