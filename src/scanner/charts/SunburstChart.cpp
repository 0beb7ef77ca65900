#include "scanner/charts/SunburstChart.h"

#include "components/ColorPalette.h"
#include "scanner/charts/ChartNavigation.h"
#include "scanner/charts/ChartPalette.h"

#include <QEasingCurve>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace brivane {

namespace {

constexpr double revealDuration = 1200; ///< milliseconds, as those that follow
constexpr double ringDuration = 700;
constexpr double ringDelay = 120;
constexpr double endOfFirstTurn = 270; ///< degrees
constexpr double angleTolerance = 0.001;
constexpr double restingFill = 0.7; ///< opacity of an arc that is not hovered
constexpr double restingStrokeOpacity = 0.08;
constexpr double restingStrokeWidth = 0.5;

double easeOut(double progress)
{
    return QEasingCurve(QEasingCurve::OutQuad).valueForProgress(std::clamp(progress, 0.0, 1.0));
}

QRectF circle(const QPointF& center, double radius)
{
    return {center.x() - radius, center.y() - radius, 2 * radius, 2 * radius};
}

/// QPainterPath turns the other way round.
QPainterPath pathOf(const ArcShape& arc)
{
    const double sweep = arc.endAngle - arc.startAngle;
    const QRectF outer = circle(arc.center, arc.outerRadius);
    const QRectF inner = circle(arc.center, arc.innerRadius);
    QPainterPath path;
    path.arcMoveTo(outer, -arc.startAngle);
    path.arcTo(outer, -arc.startAngle, -sweep);
    path.arcTo(inner, -arc.endAngle, sweep);
    path.closeSubpath();
    return path;
}

QColor faded(QColor color, double factor)
{
    color.setAlphaF(color.alphaF() * static_cast<float>(factor));
    return color;
}

} // namespace

double SunburstChart::revealProgress() const
{
    return easeOut(m_elapsed / revealDuration);
}

std::vector<double> SunburstChart::ringReveal() const
{
    std::vector<double> rings;
    for (int depth = 0; depth <= m_layout.maxDepth; ++depth)
        rings.push_back(easeOut((m_elapsed - ringDelay * depth) / ringDuration));
    return rings;
}

SunburstFrame SunburstChart::frame() const
{
    return {size(), ringReveal(), m_layout};
}

void SunburstChart::rebuild(std::span<const SizedNode> children, std::vector<ChartItem>& items)
{
    const FileNodeRef& focus = viewModel()->focusedNode();
    m_segments = m_layout.buildSegments(children, focus.isValid() ? focus.node()->size() : 0);
    const auto end = std::ranges::find_if(m_segments, [](const SunburstSegmentData& segment) {
        return segment.startAngle + segment.sweepAngle > endOfFirstTurn + angleTolerance;
    });
    m_leftOutCount = static_cast<int>(m_segments.end() - end);
    m_segments.erase(end, m_segments.end());
    items.clear();
    for (std::size_t i = 0; i < m_segments.size(); ++i) { // one ring, so a segment for each child
        ChartItem item;
        item.node = m_segments[i].node;
        item.size = children[i].size;
        item.colorIndex = m_segments[i].colorIndex;
        item.isIncomplete = item.node->isIncomplete();
        items.push_back(item);
    }
}

void SunburstChart::startReveal(bool)
{
    m_elapsed = 0;
    Q_EMIT revealProgressChanged();
}

bool SunburstChart::advance(int milliseconds)
{
    m_elapsed = std::min(m_elapsed + milliseconds, revealDuration);
    Q_EMIT revealProgressChanged();
    return m_elapsed < revealDuration;
}

void SunburstChart::finishMotion()
{
    m_elapsed = revealDuration;
    Q_EMIT revealProgressChanged();
}

std::optional<std::size_t> SunburstChart::itemAt(const QPointF& point) const
{
    return frame().segmentAt(m_segments, point);
}

std::optional<std::size_t> SunburstChart::itemBeside(std::size_t current, Qt::Key key) const
{
    const bool isForward = key == Qt::Key_Right || key == Qt::Key_Down;
    return nextArc(m_segments, current, isForward ? Turn::Clockwise : Turn::CounterClockwise);
}

QRectF SunburstChart::itemBounds(std::size_t index) const
{
    const std::optional<ArcShape> arc = frame().arc(m_segments[index]);
    return arc ? pathOf(*arc).boundingRect() : QRectF();
}

void SunburstChart::paint(QPainter* painter)
{
    painter->setRenderHint(QPainter::Antialiasing);
    const SunburstFrame now = frame();
    std::vector<std::size_t> lit;
    std::vector<RingArc> unlit;
    RingBand band;
    band.strokeColor = faded(Qt::white, restingStrokeOpacity);
    band.strokeWidth = restingStrokeWidth;
    for (std::size_t i = 0; i < m_segments.size(); ++i) { // of one ring
        const std::optional<ArcShape> arc = now.arc(m_segments[i]);
        if (!arc)
            continue;
        if (glow(i) > 0 || isSelected(i)) {
            lit.push_back(i);
            continue;
        }
        band.center = arc->center;
        band.innerRadius = arc->innerRadius;
        band.outerRadius = arc->outerRadius;
        const QColor color = segmentColor(m_segments[i].colorIndex, m_segments[i].depth);
        unlit.push_back({arc->startAngle, arc->endAngle, faded(color, restingFill)});
    }
    m_ring.paint(*painter, band, unlit);
    // What stands out lies above its neighbours.
    for (const std::size_t index : lit)
        paintLitArc(*painter, now, index);
    for (std::size_t i = 0; i < m_segments.size(); ++i) {
        if (items()[i].isIncomplete)
            paintWarning(*painter, now, i);
    }
}

std::optional<ArcShape> SunburstChart::shownArc(const SunburstFrame& frame, std::size_t index) const
{
    std::optional<ArcShape> arc = frame.arc(m_segments[index]);
    const std::optional<ArcShape> grown = frame.hoveredArc(m_segments[index]);
    if (arc && grown) {
        arc->innerRadius = std::lerp(arc->innerRadius, grown->innerRadius, glow(index));
        arc->outerRadius = std::lerp(arc->outerRadius, grown->outerRadius, glow(index));
    }
    return arc;
}

void SunburstChart::paintLitArc(QPainter& painter, const SunburstFrame& frame,
                                std::size_t index) const
{
    const double lit = glow(index);
    const QColor color = segmentColor(m_segments[index].colorIndex, m_segments[index].depth);
    painter.setBrush(faded(color, std::lerp(restingFill, 0.95, lit)));
    if (isMarkedByKeyboard(index) || isSelected(index))
        painter.setPen(QPen(isMarkedByKeyboard(index)
                                ? ColorPalette::lightened(ColorPalette::accent(), 0.25)
                                : ColorPalette::primaryText(),
                            2));
    else
        painter.setPen(QPen(faded(Qt::white, std::lerp(restingStrokeOpacity, 0.5, lit)),
                            std::lerp(restingStrokeWidth, 1.5, lit)));
    painter.drawPath(pathOf(*shownArc(frame, index)));
}

void SunburstChart::paintWarning(QPainter& painter, const SunburstFrame& frame,
                                 std::size_t index) const
{
    const std::optional<ArcShape> arc = shownArc(frame, index);
    if (!arc)
        return;
    const QRectF edge = circle(arc->center, arc->outerRadius - 1);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ColorPalette::warning(), 2, Qt::DashLine, Qt::FlatCap));
    painter.drawArc(edge, qRound(-arc->startAngle * 16),
                    qRound(-(arc->endAngle - arc->startAngle) * 16));
}

} // namespace brivane
