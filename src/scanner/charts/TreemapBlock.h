#pragma once

#include <QRectF>

#include <optional>
#include <span>

// One block of the treemap as it is drawn and hit: its frame, its label, its part in the reveal.
// Pure functions; any thread. Lengths and text sizes are points, progress and opacity 0 to 1.
namespace brivane {

/// The rectangle in which a block is drawn, for the one that the layout gave it.
QRectF blockFrame(const QRectF& computed);
/// Smaller blocks are left out.
bool isBlockDrawn(const QRectF& frame);
/// The block under `point`, none between blocks. `computed` is the whole layout. A block may be
/// hit that is too small to be drawn.
std::optional<std::size_t> blockAt(std::span<const QRectF> computed, const QPointF& point);

/// What a block has room to say. All in one column, `padding` away from the edges.
struct BlockLabel {
    enum class Kind {
        None,
        NameOnly,
        Full, ///< symbol (for a directory) and name, formatted size below
    };

    Kind kind = Kind::None;
    double padding = 0;
    double nameSize = 0;
    double symbolSize = 0;   ///< full label only
    double sizeTextSize = 0; ///< full label only

    /// At the progress of the block's own reveal.
    [[nodiscard]] double opacity(double progress) const;
};

BlockLabel blockLabel(const QRectF& frame);

/// How far the block at `index` of the list has come in at `animationProgress`: one comes after
/// the other, and all have come at 1. This is its opacity too.
double blockProgress(std::size_t index, double animationProgress);
/// How much of its size a block has, about its centre, at its own progress.
double blockScale(double progress);

} // namespace brivane
