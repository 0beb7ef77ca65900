#include "components/GradientPanel.h"

#include <QLinearGradient>
#include <QPainter>

namespace brivane {

GradientPanel::GradientPanel(QQuickItem* parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(this, &GradientPanel::appearanceChanged, this, [this] { update(); });
}

void GradientPanel::paint(QPainter* painter)
{
    if (m_colors.isEmpty())
        return;
    QLinearGradient gradient(0, 0, width(), 0);
    const qsizetype last = m_colors.size() - 1;
    gradient.setColorAt(0, m_colors.constFirst());
    for (qsizetype index = 1; index <= last; ++index)
        gradient.setColorAt(static_cast<qreal>(index) / static_cast<qreal>(last),
                            m_colors.at(index));
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(gradient);
    painter->drawRoundedRect(boundingRect(), m_radius, m_radius);
}

} // namespace brivane
