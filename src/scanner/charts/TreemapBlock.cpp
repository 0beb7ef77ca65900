#include "scanner/charts/TreemapBlock.h"

namespace brivane {

namespace {

constexpr double blockInset = 1.5; ///< on each side, so blocks stand 3 points apart
constexpr double drawnAbove = 3;   ///< width and height
constexpr double hitAbove = 2;     ///< width and height

constexpr QSizeF fullLabelAbove(45, 25);
constexpr QSizeF nameOnlyAbove(22, 12);
constexpr double fullLabelPadding = 6;
constexpr double nameOnlyPadding = 3;
constexpr double smallestText = 8;
constexpr double fullLabelFrom = 0.4; ///< progress at which the label begins to show
constexpr double nameOnlyFrom = 0.5;

constexpr double delayPerBlock = 0.03;
constexpr double longestDelay = 0.6;
constexpr double firstScale = 0.4;

bool isLarger(const QRectF& frame, const QSizeF& limit)
{
    return frame.width() > limit.width() && frame.height() > limit.height();
}

double labelSize(const QRectF& frame)
{
    const double area = frame.width() * frame.height();
    if (area > 30000)
        return 13;
    if (area > 12000)
        return 11;
    return area > 5000 ? 10 : 9;
}

} // namespace

QRectF blockFrame(const QRectF& computed)
{
    return computed.adjusted(blockInset, blockInset, -blockInset, -blockInset);
}

bool isBlockDrawn(const QRectF& frame)
{
    return isLarger(frame, {drawnAbove, drawnAbove});
}

std::optional<std::size_t> blockAt(std::span<const QRectF> computed, const QPointF& point)
{
    for (std::size_t i = 0; i < computed.size(); ++i) {
        const QRectF frame = blockFrame(computed[i]);
        if (isLarger(frame, {hitAbove, hitAbove}) && frame.contains(point))
            return i;
    }
    return {};
}

BlockLabel blockLabel(const QRectF& frame)
{
    using Kind = BlockLabel::Kind;
    if (isLarger(frame, fullLabelAbove)) {
        const double size = labelSize(frame);
        return {Kind::Full, fullLabelPadding, size, std::max(size - 3, smallestText),
                std::max(size - 2, smallestText)};
    }
    if (isLarger(frame, nameOnlyAbove))
        return {Kind::NameOnly, nameOnlyPadding, smallestText, 0, 0};
    return {};
}

double BlockLabel::opacity(double progress) const
{
    if (kind == Kind::None)
        return 0;
    const double from = kind == Kind::Full ? fullLabelFrom : nameOnlyFrom;
    return progress > from ? (progress - from) / (1 - from) : 0;
}

double blockProgress(std::size_t index, double animationProgress)
{
    const double delay = std::min(delayPerBlock * static_cast<double>(index), longestDelay);
    return std::clamp((animationProgress - delay) / (1 - delay), 0.0, 1.0);
}

double blockScale(double progress)
{
    return firstScale + (1 - firstScale) * progress;
}

} // namespace brivane
