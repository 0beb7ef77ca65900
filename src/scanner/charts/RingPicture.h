#pragma once

#include "scanner/charts/RingMap.h"

#include <QColor>
#include <QPointF>

#include <span>

class QPainter;

namespace brivane {

/// An arc of a ring. Angles are degrees, clockwise on the screen, from -90 (twelve o'clock) to 270.
struct RingArc {
    double startAngle = 0;
    double endAngle = 0;
    QColor fill;
};

/// A band between two circles. Lengths are points.
struct RingBand {
    QPointF center;
    double innerRadius = 0;
    double outerRadius = 0;
    QColor strokeColor;     ///< of the line around each arc
    double strokeWidth = 0; ///< up to a pixel of the device; the ends of arcs have no wider line
};

/// Paints `arcs` as QPainter would paint a path for each, antialiased: first the fill, then the
/// line. But it goes over the pixels of the band once and not over the outlines, so that hundreds
/// of arcs cost no more than one; and as long as the band stays, it knows where they lie. One
/// thread at a time.
class RingPicture {
public:
    /// `arcs` do not overlap and go up in angle. `painter` may be moved and scaled, not turned.
    void paint(QPainter& painter, const RingBand& band, std::span<const RingArc> arcs);

private:
    RingMap m_map;
};

} // namespace brivane
