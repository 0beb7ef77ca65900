#pragma once

#include <QQmlEngine>
#include <QQmlIncubationController>
#include <QQuickWindow>

namespace brivane {

/// Goes on for a while with the screen of a module that is being made, which takes several frames.
/// False when there was nothing to go on with. Who drives the window calls this from the event loop
/// until the screen is there. GUI thread.
inline bool advanceScreen(const QQuickWindow& window)
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
