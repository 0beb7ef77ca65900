#pragma once

#include "core/AppMode.h"
#include "core/Composition.h"

#include <QCoroTask>
#include <QString>

#include <concepts>
#include <memory>
#include <span>

class QObject;

namespace brivane {

/// Makes what a module's screen works on. What it gives is null when the composition has gone
/// meanwhile.
using MakeViewModel = QCoro::Task<std::unique_ptr<QObject>> (*)(Composition&);

/// A module as the frame sees it.
struct Module {
    AppMode::Mode mode;
    /// The QML file that shows it, as "Scanner/screens/ScannerContentView.qml"; empty while there
    /// is none.
    QLatin1StringView screen = {};
    /// Called when the module is first entered, and at the start where it is in the sidebar. The
    /// screen and the part of the sidebar get the object as their property `viewModel`; it stays
    /// when they go. Null where they need none.
    MakeViewModel make = nullptr;
    /// The token of ActivityTracker whose work marks the module's row in the sidebar.
    QString activity = {};
    /// What it adds to the sidebar, a SidebarPart.
    QLatin1StringView sidebar = {};
};

/// All of them that there are, one a row. GUI thread.
[[nodiscard]] std::span<const Module> modules();

/// MakeViewModel of a type with a static `make(Composition&)` that gives it as a std::unique_ptr,
/// at once or as a task.
template<typename ViewModel>
QCoro::Task<std::unique_ptr<QObject>> make(Composition& composition)
{
    auto making = ViewModel::make(composition);
    if constexpr (std::convertible_to<decltype(making), std::unique_ptr<QObject>>) {
        co_return std::move(making);
    } else {
        std::unique_ptr<ViewModel> made = co_await making;
        co_return std::move(made);
    }
}

} // namespace brivane
