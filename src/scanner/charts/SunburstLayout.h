#pragma once

#include "scanner/SizedNode.h"

namespace brivane {

/// One arc of the sunburst. Angles are degrees, clockwise on the screen, 0 points right; they may
/// run on past a full turn. The node is valid as long as someone holds its tree.
struct SunburstSegmentData {
    FileNode* node = nullptr;
    double startAngle = 0;
    double sweepAngle = 0;
    int depth = 0; ///< 0 is the innermost ring
    int colorIndex = 0;

    /// The node's.
    [[nodiscard]] QUuid id() const { return node->id(); }
};

/// The layout of the sunburst: a directory's children as a ring of arcs around it, and with a
/// larger maxDepth theirs around these. Pure; any thread.
///
/// Every arc is at least 2 degrees before the ring is scaled down to a full turn, and gaps take
/// their share first. Where the gaps leave nothing (450 children and more), nothing is scaled and
/// the arcs run round several times.
struct SunburstLayout {
    int maxDepth = 0;        ///< the last ring
    double innerRadius = 60; ///< points
    double ringWidth = 120;  ///< points
    double gapAngle = 0.8;   ///< degrees behind each arc

    /// The arcs of a directory of `parentSize` bytes, from twelve o'clock on. `children` are as
    /// withSize() gives them.
    [[nodiscard]] std::vector<SunburstSegmentData>
    buildSegments(std::span<const SizedNode> children, std::uint64_t parentSize) const;

    /// Appends to `segments` an arc for each of `nodes`, and behind each the arcs of what it holds.
    /// `colorIndex` is that of the arc that the ring belongs to.
    void buildRing(std::span<const SizedNode> nodes, int depth, double startAngle, double sweep,
                   std::uint64_t parentSize, std::vector<SunburstSegmentData>& segments,
                   int colorIndex) const;
};

} // namespace brivane
