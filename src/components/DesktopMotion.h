#pragma once

namespace brivane {

/// Whether the person lets the desktop animate things; true where the desktop has no such setting.
/// Any thread.
[[nodiscard]] bool desktopShowsAnimations();

} // namespace brivane
