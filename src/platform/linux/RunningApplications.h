#pragma once

#include "platform/Workspace.h"
#include "platform/linux/SoftwarePlaces.h"

#include <vector>

namespace brivane {

/// The applications among this user's processes: those that a desktop entry starts. What runs in a
/// Flatpak or a Snap is known by that, everything else by its executable. Any thread; blocks.
[[nodiscard]] std::vector<RunningApplication> readRunningApplications(const SoftwarePlaces& places);

} // namespace brivane
