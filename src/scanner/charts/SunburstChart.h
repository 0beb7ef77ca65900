#pragma once

#include "scanner/charts/ChartView.h"
#include "scanner/charts/RingPicture.h"
#include "scanner/charts/SunburstFrame.h"

namespace brivane {

/// The sunburst of the focused folder: a ring with an arc for each child. In a folder of so many
/// children that the arcs would run round more than once, only those of the first turn are there:
/// the largest. GUI thread; paints on the render thread while this one waits.
class SunburstChart : public brivane::ChartView {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double revealProgress READ revealProgress NOTIFY revealProgressChanged)
    Q_PROPERTY(double innerRadius READ innerRadius CONSTANT)
    /// How many children have no arc, for want of room.
    Q_PROPERTY(int leftOutCount READ leftOutCount NOTIFY itemsChanged)

public:
    using ChartView::ChartView;

    /// From 0 to 1: how far the whole chart has come in.
    [[nodiscard]] double revealProgress() const;
    /// How far each ring has, from the innermost on.
    [[nodiscard]] std::vector<double> ringReveal() const;
    /// Of the hole in the middle; points.
    [[nodiscard]] double innerRadius() const { return m_layout.innerRadius; }
    [[nodiscard]] int leftOutCount() const { return m_leftOutCount; }
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void revealProgressChanged();

protected:
    void rebuild(std::span<const SizedNode> children, std::vector<ChartItem>& items) override;
    void startReveal(bool isAppearing) override;
    bool advance(int milliseconds) override;
    void finishMotion() override;
    [[nodiscard]] std::optional<std::size_t> itemAt(const QPointF& point) const override;
    [[nodiscard]] std::optional<std::size_t> itemBeside(std::size_t current,
                                                        Qt::Key key) const override;
    [[nodiscard]] QRectF itemBounds(std::size_t index) const override;
    [[nodiscard]] int glowDuration() const override { return 100; }

private:
    [[nodiscard]] SunburstFrame frame() const;
    /// As far as it has grown under the pointer.
    [[nodiscard]] std::optional<ArcShape> shownArc(const SunburstFrame& frame,
                                                   std::size_t index) const;
    void paintLitArc(QPainter& painter, const SunburstFrame& frame, std::size_t index) const;
    /// Something in there could not be read: a dashed line along the outer edge.
    void paintWarning(QPainter& painter, const SunburstFrame& frame, std::size_t index) const;

    const SunburstLayout m_layout;
    std::vector<SunburstSegmentData> m_segments;
    RingPicture m_ring; ///< of what is not lit
    int m_leftOutCount = 0;
    double m_elapsed = 0; ///< milliseconds of the reveal
};

} // namespace brivane
