#include "scanner/charts/SunburstFrame.h"

#include <QtMath>

namespace brivane {

namespace {

constexpr double frameMargin = 10; ///< from the largest ring to the frame
constexpr double ringGap = 1;
constexpr double hoverGrowth = 3; ///< to both sides
constexpr double smallestHoverRadius = 1;
constexpr double hoverOverhang = 10; ///< past the largest radius

constexpr double firstAngle = -90; ///< the ring starts at twelve o'clock
constexpr double lastAngle = 270;

} // namespace

SunburstFrame::SunburstFrame(const QSizeF& frame, std::vector<double> ringReveal,
                             const SunburstLayout& layout)
    : m_layout(layout)
    , m_ringReveal(std::move(ringReveal))
    , m_center(frame.width() / 2, frame.height() / 2)
    , m_maximalRadius(std::min(frame.width(), frame.height()) / 2 - frameMargin)
{
}

double SunburstFrame::ringProgress(int depth) const
{
    const auto ring = static_cast<std::size_t>(depth);
    return ring < m_ringReveal.size() ? m_ringReveal[ring] : 0;
}

double SunburstFrame::revealedEnd(const SunburstSegmentData& segment) const
{
    return segment.startAngle + segment.sweepAngle * ringProgress(segment.depth);
}

SunburstFrame::Band SunburstFrame::band(int depth) const
{
    const double inner = m_layout.innerRadius + m_layout.ringWidth * depth;
    return {inner, std::min(inner + m_layout.ringWidth - ringGap, m_maximalRadius)};
}

std::optional<ArcShape> SunburstFrame::arc(const SunburstSegmentData& segment) const
{
    const Band ring = band(segment.depth);
    const double sweep = segment.sweepAngle * ringProgress(segment.depth);
    // The outer radius never passes the largest, so the inner one is below that as well.
    if (!(ring.innerRadius < ring.outerRadius) || !(sweep > sweepDrawnAbove))
        return {};
    return ArcShape{m_center, ring.innerRadius, ring.outerRadius, segment.startAngle,
                    revealedEnd(segment)};
}

std::optional<ArcShape> SunburstFrame::hoveredArc(const SunburstSegmentData& segment) const
{
    std::optional<ArcShape> shape = arc(segment);
    if (shape) {
        shape->innerRadius = std::max(shape->innerRadius - hoverGrowth, smallestHoverRadius);
        shape->outerRadius =
            std::min(shape->outerRadius + hoverGrowth, m_maximalRadius + hoverOverhang);
    }
    return shape;
}

std::optional<std::size_t> SunburstFrame::segmentAt(std::span<const SunburstSegmentData> segments,
                                                    const QPointF& point) const
{
    const QPointF arm = point - m_center;
    const double distance = std::hypot(arm.x(), arm.y());
    double angle = qRadiansToDegrees(std::atan2(arm.y(), arm.x()));
    if (angle < firstAngle)
        angle += 360;
    // Bands do not overlap, so the distance tells the only ring that can be hit.
    const int depth = qFloor((distance - m_layout.innerRadius) / m_layout.ringWidth);
    if (depth < 0 || distance > band(depth).outerRadius)
        return {};
    const double progress = ringProgress(depth);
    for (std::size_t i = segments.size(); i-- > 0;) {
        const SunburstSegmentData& segment = segments[i];
        const double end = segment.startAngle + segment.sweepAngle * progress;
        const bool wraps = end > lastAngle && angle < segment.startAngle && angle < lastAngle;
        const double tested = wraps ? angle + 360 : angle;
        if (segment.depth == depth && tested >= segment.startAngle && tested <= end)
            return i;
    }
    return {};
}

} // namespace brivane
