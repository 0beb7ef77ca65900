#include "scanner/charts/SunburstLayout.h"

namespace brivane {

namespace {

constexpr double twelveOClock = -90;
constexpr double fullTurn = 360;
constexpr double smallestSweep = 2;    ///< of an arc, before scaling
constexpr double divisibleAbove = 0.5; ///< an arc that is smaller gets no ring of its own

} // namespace

std::vector<SunburstSegmentData> SunburstLayout::buildSegments(std::span<const SizedNode> children,
                                                               std::uint64_t parentSize) const
{
    std::vector<SunburstSegmentData> segments;
    segments.reserve(children.size());
    buildRing(children, 0, twelveOClock, fullTurn, parentSize, segments, 0);
    return segments;
}

void SunburstLayout::buildRing(std::span<const SizedNode> nodes, int depth, double startAngle,
                               double sweep, std::uint64_t parentSize,
                               std::vector<SunburstSegmentData>& segments, int colorIndex) const
{
    if (depth > maxDepth || nodes.empty() || sweep <= divisibleAbove)
        return;
    const double usable = std::max(sweep - gapAngle * static_cast<double>(nodes.size()), 0.0);
    const double whole = static_cast<double>(std::max<std::uint64_t>(parentSize, 1));
    const auto rawSweep = [&](const SizedNode& child) {
        return std::max(usable * static_cast<double>(child.size) / whole, smallestSweep);
    };
    double sum = 0;
    for (const SizedNode& child : nodes)
        sum += rawSweep(child);
    const double scale = usable > 0 && usable < sum ? usable / sum : 1;

    double angle = startAngle;
    int ownColor = depth == 0 ? 0 : colorIndex;
    for (const SizedNode& child : nodes) {
        const double childSweep = rawSweep(child) * scale;
        segments.push_back({child.node, angle, childSweep, depth, ownColor});
        // The last ring need not look into its directories.
        if (depth < maxDepth && child.node->isDirectory()) {
            const std::vector<SizedNode> below = childrenBySize(*child.node);
            buildRing(withSize(below), depth + 1, angle, childSweep, child.size, segments,
                      ownColor);
        }
        angle += childSweep + gapAngle;
        ++ownColor;
    }
}

} // namespace brivane
