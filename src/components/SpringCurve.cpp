#include "components/SpringCurve.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace brivane::SpringCurve {

namespace {

constexpr double restDistance = 0.001;
constexpr int segments = 10; // QEasingCurve writes past its table when there are more

double velocity(double seconds, double response, double damping)
{
    const double step = response * 1e-4;
    return (position(seconds + step, response, damping) -
            position(std::max(0.0, seconds - step), response, damping)) /
           (seconds < step ? seconds + step : 2 * step);
}

} // namespace

double position(double seconds, double response, double damping)
{
    const double frequency = 2 * std::numbers::pi / response;
    const double ratio = std::min(damping, 1.0);
    const double decay = std::exp(-ratio * frequency * seconds);
    if (ratio > 0.9999)
        return 1 - decay * (1 + frequency * seconds);
    const double damped = frequency * std::sqrt(1 - ratio * ratio);
    return 1 - decay * (std::cos(damped * seconds) +
                        ratio * frequency / damped * std::sin(damped * seconds));
}

double settlingTime(double response, double damping)
{
    const double frequency = 2 * std::numbers::pi / response;
    const double ratio = std::min(damping, 1.0);
    if (ratio <= 0.9999) // the envelope of the swing
        return -std::log(restDistance * std::sqrt(1 - ratio * ratio)) / (ratio * frequency);
    double seconds = response;
    while (1 - position(seconds, response, 1) > restDistance)
        seconds += response / 100;
    return seconds;
}

QList<qreal> bezierCurve(double response, double damping)
{
    // Hermite segments: the control points of a piece lie on the tangents at its ends.
    const double total = settlingTime(response, damping);
    const double piece = total / segments;
    QList<qreal> curve;
    curve.reserve(qsizetype{6} * segments);
    for (int segment = 0; segment < segments; ++segment) {
        const double from = piece * segment;
        const double to = from + piece;
        const bool last = segment + 1 == segments;
        const double end = last ? 1 : position(to, response, damping);
        curve << (from + piece / 3) / total
              << position(from, response, damping) + velocity(from, response, damping) * piece / 3
              << (to - piece / 3) / total
              << end - (last ? 0 : velocity(to, response, damping) * piece / 3)
              << (last ? 1 : to / total) << end;
    }
    return curve;
}

} // namespace brivane::SpringCurve
