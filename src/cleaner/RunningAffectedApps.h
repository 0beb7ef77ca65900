#pragma once

#include <QString>
#include <QStringList>

#include <span>
#include <vector>

namespace brivane {

/// An application that runs, as far as RunningAffectedApps asks.
struct RunningApp {
    QString bundleIdentifier; ///< empty where it has none
    QString localizedName;    ///< empty where it has none
    bool isRegular = false;   ///< has windows, and a place in the dock
};

/// Text that stands in paths of an application's files, both in any letters.
struct AppFragment {
    QString bundleIdentifier;
    QString fragment;
};

/// The names of the applications of `running` to which one of `paths` belongs, each once, in
/// order. `additions` are looked at beside the table of ApplicationFragments.h.
///
/// A path belongs to an application when its identifier stands in it, or a fragment of its own. An
/// identifier of one word alone ("firefox") has to be a whole component, or much would be named
/// that only sounds like it. The program itself is not named, nor is what shows no window, other
/// than Docker.
///
/// Takes its time: paths times applications. Any thread.
[[nodiscard]] QStringList runningAffectedApps(const QStringList& paths,
                                              std::span<const RunningApp> running,
                                              std::span<const AppFragment> additions = {});

} // namespace brivane
