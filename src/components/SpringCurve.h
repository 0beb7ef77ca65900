#pragma once

#include <QList>

// The motion of a damped spring, let go at rest, as an easing curve. Springs are described by
// response (seconds of one undamped swing) and damping (1 comes to rest without overshoot).
//
// Pure functions; any thread.
namespace brivane::SpringCurve {

/// Where the spring is `seconds` after it was let go: 0 at the start, towards 1. `damping` is above
/// 0; values above 1 count as 1.
[[nodiscard]] double position(double seconds, double response, double damping);

/// Seconds after which the spring stays within a thousandth of its rest.
[[nodiscard]] double settlingTime(double response, double damping);

/// The curve over settlingTime() as an easing of type BezierSpline takes it: six numbers a segment,
/// the last point at (1, 1).
[[nodiscard]] QList<qreal> bezierCurve(double response, double damping);

} // namespace brivane::SpringCurve
