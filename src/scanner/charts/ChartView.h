#pragma once

#include "scanner/charts/FolderChart.h"

namespace brivane {

/// What the two charts have in common beyond their picture: somebody points at an item, by pointer
/// or by key, and does something with it.
///
/// An item is hovered when it is the view model's hovered node, whoever says so: the pointer on it,
/// the keyboard's place in the chart, or the row of the list. Enter drills into a folder, Backspace
/// goes up, Delete stages, the Menu key asks for the menu. What a click acts on is what was under
/// the pointer when the button went down. GUI thread.
class ChartView : public brivane::FolderChart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("It is one of the charts")
    /// -1 for none.
    Q_PROPERTY(int hoveredIndex READ hoveredIndex NOTIFY hoveredIndexChanged)
    /// The keyboard has come to the hovered item.
    Q_PROPERTY(bool isKeyboardUsed READ isKeyboardUsed NOTIFY hoveredIndexChanged)

public:
    explicit ChartView(QQuickItem* parent = nullptr);

    [[nodiscard]] int hoveredIndex() const { return m_hovered; }
    [[nodiscard]] bool isKeyboardUsed() const { return m_isKeyboardUsed; }

    /// As a click does.
    Q_INVOKABLE void activate(int index);

Q_SIGNALS:
    void hoveredIndexChanged();
    void menuRequested(const brivane::FileNodeRef& node, qreal x, qreal y);

protected:
    [[nodiscard]] virtual std::optional<std::size_t> itemAt(const QPointF& point) const = 0;
    /// Where an arrow key leads from `current`.
    [[nodiscard]] virtual std::optional<std::size_t> itemBeside(std::size_t current,
                                                                Qt::Key key) const = 0;

    [[nodiscard]] bool isMarkedByKeyboard(std::size_t index) const;

    void hoverEnterEvent(QHoverEvent* event) override;
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool stepKeyboard(Qt::Key key);
    [[nodiscard]] int indexAt(const QPointF& point) const;
    void hover(int index);
    void setHoveredIndex(int index, bool byKeyboard);
    void followHoveredNode();
    void followItems();

    FileNodeRef m_pressed;
    std::optional<QPointF> m_pointer; ///< none: elsewhere
    int m_hovered = -1;
    bool m_isKeyboardUsed = false;
};

} // namespace brivane
