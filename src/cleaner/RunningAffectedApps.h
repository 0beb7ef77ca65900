#pragma once

#include "platform/Locations.h"
#include "platform/Workspace.h"

#include <QList>
#include <QStringList>

#include <span>

namespace brivane {

/// The names of the applications of `running` to which one of `paths` belongs, each once, in
/// order. `additions`, of identifiers and fragments, are looked at beside ApplicationFragments.h.
///
/// A path belongs to an application when its identifier stands in it, or a fragment of its own, in
/// any letters. An identifier of one word alone ("firefox") has to be a whole component, or much
/// would be named that only sounds like it. The program itself is not named, nor is what shows no
/// window, other than Docker.
///
/// Takes its time: paths times applications. Any thread.
[[nodiscard]] QStringList runningAffectedApps(const QStringList& paths,
                                              std::span<const RunningApplication> running,
                                              const QList<Locations::Addition>& additions = {});

} // namespace brivane
