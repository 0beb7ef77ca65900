#pragma once

namespace brivane {

/// The calling thread, and those that it starts, get what others leave of the processor where there
/// is not enough for all: a window has to be painted in time, the work behind it only soon. For
/// good. The programs that it starts inherit it.
void giveWayToPainting();

} // namespace brivane
