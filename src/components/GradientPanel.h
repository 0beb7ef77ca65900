#pragma once

#include <QColor>
#include <QList>
#include <QQuickPaintedItem>

// A rounded panel filled with any number of colours from left to right, smooth on every renderer.
// Painted again only when a property or the size changes.
namespace brivane {

class GradientPanel : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QList<QColor> colors MEMBER m_colors NOTIFY appearanceChanged)
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY appearanceChanged)

public:
    explicit GradientPanel(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void appearanceChanged();

private:
    QList<QColor> m_colors; ///< Evenly spaced; one colour fills the panel, none leaves it empty.
    qreal m_radius = 0;
};

} // namespace brivane
