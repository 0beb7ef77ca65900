#pragma once

#include "scanner/charts/SunburstLayout.h"

#include <QPointF>
#include <QSizeF>

namespace brivane {

/// A piece of a ring as it is drawn. Lengths are points, angles degrees, clockwise, 0 to the right.
struct ArcShape {
    QPointF center;
    double innerRadius = 0;
    double outerRadius = 0;
    double startAngle = 0;
    double endAngle = 0;
};

/// An arc with a smaller sweep cannot be seen and is not drawn.
constexpr double sweepDrawnAbove = 0.01; // degrees

/// The sunburst at one moment, in a frame of a certain size: where its rings lie, how far they are
/// revealed, and what is under the pointer. Pure; any thread.
class SunburstFrame {
public:
    /// `ringReveal` has a number from 0 to 1 for each ring.
    SunburstFrame(const QSizeF& frame, std::vector<double> ringReveal,
                  const SunburstLayout& layout = {});

    /// 0 for a ring that has no number.
    [[nodiscard]] double ringProgress(int depth) const;
    [[nodiscard]] double revealedEnd(const SunburstSegmentData& segment) const;

    /// Nothing when there is no room for the ring, or of the arc nothing to see yet.
    [[nodiscard]] std::optional<ArcShape> arc(const SunburstSegmentData& segment) const;
    /// The same under the pointer, grown to both sides.
    [[nodiscard]] std::optional<ArcShape> hoveredArc(const SunburstSegmentData& segment) const;

    /// The segment at `point`, the last of several. A look at each segment: 200,000 take a fraction
    /// of a millisecond.
    [[nodiscard]] std::optional<std::size_t>
    segmentAt(std::span<const SunburstSegmentData> segments, const QPointF& point) const;

private:
    struct Band {
        double innerRadius = 0;
        double outerRadius = 0;
    };

    [[nodiscard]] Band band(int depth) const;

    SunburstLayout m_layout;
    std::vector<double> m_ringReveal;
    QPointF m_center;
    double m_maximalRadius;
};

} // namespace brivane
