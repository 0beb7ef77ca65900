#pragma once

#include <QColor>
#include <QQuickPaintedItem>

// A stroked part of the circle that fits into the item, with round ends, smooth on every renderer.
// Angles are degrees, clockwise, 0 at the top.
//
// Painted again only when a property or the size changes. Turn it by `startAngle`: the software
// renderer does not smooth what is turned by `rotation`.
namespace brivane {

class ArcItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal startAngle MEMBER m_startAngle NOTIFY appearanceChanged)
    Q_PROPERTY(qreal sweepAngle MEMBER m_sweepAngle NOTIFY appearanceChanged)
    Q_PROPERTY(qreal lineWidth MEMBER m_lineWidth NOTIFY appearanceChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY appearanceChanged)
    Q_PROPERTY(bool tapered MEMBER m_tapered NOTIFY appearanceChanged)

public:
    explicit ArcItem(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void appearanceChanged();

private:
    qreal m_startAngle = 0;
    qreal m_sweepAngle = 360;
    qreal m_lineWidth = 2;
    QColor m_color = Qt::white;
    bool m_tapered = false; ///< The arc fades in from nothing at its start to `color` at its end.
};

} // namespace brivane
