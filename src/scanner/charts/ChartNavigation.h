#pragma once

#include "scanner/charts/SunburstLayout.h"

#include <QRectF>

// Where the keys lead in the charts. Pure functions; any thread. Nothing leads to what is too small
// to be drawn.
namespace brivane {

enum class Direction { Left, Right, Up, Down };

/// The block next to the one at `current` in a direction: of those that have a part beside it the
/// one nearest to its centre, failing that the nearest of all further on; none at the edge.
/// `frames` are the blocks as they are drawn.
std::optional<std::size_t> neighbour(std::span<const QRectF> frames, std::size_t current,
                                     Direction direction);

enum class Turn { Clockwise, CounterClockwise };

/// The next arc of the ring of `current`, past its end the first again; without `current` where a
/// turn through the innermost ring begins. `current` is one of `segments`. None when no arc of the
/// ring is drawn.
std::optional<std::size_t> nextArc(std::span<const SunburstSegmentData> segments,
                                   std::optional<std::size_t> current, Turn turn);

} // namespace brivane
