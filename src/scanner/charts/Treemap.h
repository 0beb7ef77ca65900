#pragma once

#include "scanner/charts/ChartItem.h"

#include <QRectF>

// The layout of the treemap: a rectangle divided into blocks that are as square as may be.
// Pure functions; any thread. Lengths are points.
namespace brivane {

/// A rectangle for each of `items`, in their order, that together fill `rect`. Each is as large as
/// its share of the sizes, yet none below about 0.8 percent, so that everything can be seen. All
/// are empty when the sizes or the area of `rect` are 0.
std::vector<QRectF> computeTreemap(std::span<const ChartItem> items, const QRectF& rect);

/// A rectangle for each of `areas` (square points, not negative), in their order, laid out in
/// `rect` row by row. Areas that do not fit any more get an empty rectangle.
std::vector<QRectF> squarify(std::span<const double> areas, const QRectF& rect);

} // namespace brivane
