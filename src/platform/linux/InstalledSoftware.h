#pragma once

#include "platform/InstalledApplications.h"
#include "platform/linux/SoftwarePlaces.h"

namespace brivane {

/// The names of all that a Linux desktop has installed, by the rule of LeftoverRule.h: desktop
/// entries, D-Bus services, described components, Flatpaks, Snaps, AppImages, packages,
/// executables.
///
/// Nothing is installed, so that nothing is told a leftover, where that cannot be known: packages
/// are in a database that only their own program reads, or a place that is there could not be read
/// to its end. Any thread; blocks.
[[nodiscard]] InstalledNames readInstalledNames(const SoftwarePlaces& places);

} // namespace brivane
