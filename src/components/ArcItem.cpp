#include "components/ArcItem.h"

#include <QConicalGradient>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace brivane {

namespace {

QBrush taperedBrush(const QPointF& centre, qreal startAngle, qreal sweepAngle, const QColor& color)
{
    // Conical gradients run counterclockwise from 3 o'clock, so the end of the arc is where it
    // begins.
    QConicalGradient gradient(centre, 90 - (startAngle + sweepAngle));
    QColor clear = color;
    clear.setAlpha(0);
    const qreal part = std::clamp(std::abs(sweepAngle) / 360, 0.01, 0.95);
    gradient.setColorAt(0, color);
    gradient.setColorAt(part, clear);
    gradient.setColorAt(std::min(part + 0.01, 0.96), clear);
    gradient.setColorAt(0.97, color); // below the round end
    gradient.setColorAt(1, color);
    return gradient;
}

} // namespace

ArcItem::ArcItem(QQuickItem* parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(this, &ArcItem::appearanceChanged, this, [this] { update(); });
}

void ArcItem::paint(QPainter* painter)
{
    const qreal side = std::min(width(), height()) - m_lineWidth;
    if (side <= 0 || m_sweepAngle == 0)
        return;
    QRectF circle(0, 0, side, side);
    circle.moveCenter(boundingRect().center());
    const QBrush brush = m_tapered
                             ? taperedBrush(circle.center(), m_startAngle, m_sweepAngle, m_color)
                             : QBrush(m_color);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(brush, m_lineWidth, Qt::SolidLine, Qt::RoundCap));
    if (std::abs(m_sweepAngle) >= 360)
        painter->drawEllipse(circle);
    else // sixteenths of a degree, counterclockwise from 3 o'clock
        painter->drawArc(circle, qRound((90 - m_startAngle) * 16), qRound(-m_sweepAngle * 16));
}

} // namespace brivane
