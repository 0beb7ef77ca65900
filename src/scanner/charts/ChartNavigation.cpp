#include "scanner/charts/ChartNavigation.h"

#include "scanner/charts/SunburstFrame.h"
#include "scanner/charts/TreemapBlock.h"

#include <cmath>

namespace brivane {

namespace {

/// Turned so that `direction` points right.
QRectF turned(const QRectF& rect, Direction direction)
{
    switch (direction) {
    case Direction::Left:
        return {-rect.right(), rect.y(), rect.width(), rect.height()};
    case Direction::Right:
        return rect;
    case Direction::Up:
        return {-rect.bottom(), rect.x(), rect.height(), rect.width()};
    case Direction::Down:
        return {rect.y(), rect.x(), rect.height(), rect.width()};
    }
    return {};
}

} // namespace

std::optional<std::size_t> neighbour(std::span<const QRectF> frames, std::size_t current,
                                     Direction direction)
{
    struct Rank {
        bool isAside = true;
        double distance = 0;
        auto operator<=>(const Rank&) const = default;
    };
    const QRectF own = turned(frames[current], direction);
    const QPointF center = own.center();
    std::optional<std::size_t> best;
    Rank bestRank;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const QRectF other = turned(frames[i], direction);
        if (!isBlockDrawn(other) || other.left() < own.right())
            continue;
        const double along = other.left() - center.x();
        const double across =
            std::max({other.top() - center.y(), center.y() - other.bottom(), 0.0});
        // In hundredths of a point: rounding is not to decide between equals.
        const Rank rank{other.top() >= own.bottom() || other.bottom() <= own.top(),
                        std::round(std::hypot(along, across) * 100)};
        if (!best || rank < bestRank) {
            best = i;
            bestRank = rank;
        }
    }
    return best;
}

std::optional<std::size_t> nextArc(std::span<const SunburstSegmentData> segments,
                                   std::optional<std::size_t> current, Turn turn)
{
    const std::size_t count = segments.size();
    const bool isClockwise = turn == Turn::Clockwise;
    const int depth = current ? segments[*current].depth : 0;
    std::size_t at = current.value_or(isClockwise ? count - 1 : 0);
    for (std::size_t i = 0; i < count; ++i) {
        at = (isClockwise ? at + 1 : at + count - 1) % count;
        if (segments[at].depth == depth && segments[at].sweepAngle > sweepDrawnAbove)
            return at;
    }
    return {};
}

} // namespace brivane
