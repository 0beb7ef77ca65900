#pragma once

#include "scanner/charts/ChartView.h"

#include <QRectF>

namespace brivane {

/// The treemap of the focused folder. GUI thread; paints on the render thread while this one waits.
/// (Its base is named in full, since that is how the QML tools know it.)
class TreemapView : public brivane::ChartView {
    Q_OBJECT
    QML_ELEMENT
    /// How far the blocks have come in, from 0 to 1.
    Q_PROPERTY(double animationProgress READ animationProgress NOTIFY animationProgressChanged)

public:
    using ChartView::ChartView;

    [[nodiscard]] double animationProgress() const;
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void animationProgressChanged();

protected:
    void rebuild(std::span<const SizedNode> children, std::vector<ChartItem>& items) override;
    void startReveal(bool isAppearing) override;
    bool advance(int milliseconds) override;
    void finishMotion() override;
    [[nodiscard]] std::optional<std::size_t> itemAt(const QPointF& point) const override;
    [[nodiscard]] std::optional<std::size_t> itemBeside(std::size_t current,
                                                        Qt::Key key) const override;
    [[nodiscard]] QRectF itemBounds(std::size_t index) const override;
    [[nodiscard]] int glowDuration() const override { return 120; }

private:
    /// Where a block is on its way from one picture to the next.
    [[nodiscard]] QRectF shownRect(std::size_t index) const;
    void paintShape(QPainter& painter, std::size_t index, const QRectF& frame,
                    double progress) const;
    void paintLabel(QPainter& painter, std::size_t index, const QRectF& frame,
                    double progress) const;

    std::vector<QRectF> m_rects; ///< of the layout
    std::vector<QRectF> m_from;  ///< where the blocks were when the layout came
    double m_elapsed = 0;        ///< milliseconds of the reveal
    double m_revealDuration = 0;
    double m_morph = 1; ///< from m_from to m_rects
};

} // namespace brivane
