#include "scanner/charts/Treemap.h"

#include <limits>
#include <numeric>

namespace brivane {

namespace {

constexpr double smallestShare = 0.008; ///< of the whole area
constexpr double smallestRowSum = 0.001;
constexpr double infinity = std::numeric_limits<double>::infinity();

/// Areas side by side along one side of the rectangle, each as long as its part of that side.
struct Row {
    std::size_t count = 0;
    double sum = 0;
    double smallest = infinity; ///< of the areas above 0
    double largest = 0;

    [[nodiscard]] Row with(double area) const
    {
        return {count + 1, sum + area, area > 0 ? std::min(smallest, area) : smallest,
                std::max(largest, area)};
    }

    /// How far from a square the most stretched rectangle is: 1 for squares, infinity for a row
    /// without area. The ratio of an area grows with its distance from the square of the thickness,
    /// on both sides, so the smallest and the largest tell it for all.
    [[nodiscard]] double worstRatio(double side) const
    {
        const double thickness = sum / side;
        if (!(sum > 0) || !(thickness > 0))
            return infinity;
        return std::max(largest / thickness / thickness, thickness / (smallest / thickness));
    }
};

/// The longest row from the start of `areas` in which no further area made the worst ratio worse.
/// The first area is always in it.
Row growRow(std::span<const double> areas, double side)
{
    Row row;
    double worst = infinity;
    for (const double area : areas) {
        const Row candidate = row.with(area);
        const double candidateWorst = candidate.worstRatio(side);
        if (candidateWorst > worst)
            break;
        row = candidate;
        worst = candidateWorst;
    }
    return row;
}

} // namespace

std::vector<QRectF> computeTreemap(std::span<const ChartItem> items, const QRectF& rect)
{
    double total = 0;
    for (const ChartItem& item : items)
        total += static_cast<double>(item.size);
    if (!(total > 0))
        return std::vector<QRectF>(items.size());
    const double area = rect.width() * rect.height();
    std::vector<double> shares;
    shares.reserve(items.size());
    for (const ChartItem& item : items) {
        const double share = area * static_cast<double>(item.size) / total;
        shares.push_back(std::max(share, area * smallestShare));
    }
    const double sum = std::accumulate(shares.begin(), shares.end(), 0.0);
    if (sum > 0) {
        for (double& share : shares)
            share *= area / sum;
    }
    return squarify(shares, rect);
}

std::vector<QRectF> squarify(std::span<const double> areas, const QRectF& rect)
{
    std::vector<QRectF> rects;
    rects.reserve(areas.size());
    double x = rect.x();
    double y = rect.y();
    double width = rect.width();
    double height = rect.height();
    while (rects.size() < areas.size() && width > 0 && height > 0) {
        const bool liesAlongTop = width < height;
        const double side = std::min(width, height);
        const Row row = growRow(areas.subspan(rects.size()), side);
        const double thickness = row.sum / side;
        double offset = 0;
        for (const double area : areas.subspan(rects.size(), row.count)) {
            const double length = side * area / std::max(row.sum, smallestRowSum);
            rects.push_back(liesAlongTop ? QRectF(x + offset, y, length, thickness)
                                         : QRectF(x, y + offset, thickness, length));
            offset += length;
        }
        (liesAlongTop ? y : x) += thickness;
        (liesAlongTop ? height : width) -= thickness;
    }
    rects.resize(areas.size());
    return rects;
}

} // namespace brivane
