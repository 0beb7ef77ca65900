#pragma once

#include <QColor>

// The colours of the two charts: twelve each, taken in turn.
namespace brivane {

/// Of a block of the treemap. `index` is not negative.
QColor blockColor(int index);
/// Of an arc of the sunburst; outer rings are more transparent. Neither number is negative.
QColor segmentColor(int index, int depth);

} // namespace brivane
