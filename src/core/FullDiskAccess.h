#pragma once

#include "platform/Locations.h"

namespace brivane {

/// Whether the program may read what the system keeps from programs without the user's consent:
/// true as soon as one of four probes is readable. Nothing but the screens depends on it. Any
/// thread.
[[nodiscard]] bool checkFullDiskAccess(const Locations& locations);

} // namespace brivane
