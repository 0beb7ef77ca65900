#pragma once

#include "scanner/ScanViewModel.h"
#include "scanner/charts/ChartTicker.h"
#include "scanner/charts/TreemapItem.h"

#include <QQuickPaintedItem>

namespace brivane {

/// What the two charts of the focused folder have in common: they follow the view model's picture
/// of the folder, say what is under the pointer, are walked by the arrow keys, and move.
///
/// An item is hovered when it is the view model's hovered node, whoever says so: the pointer on it,
/// the keyboard's place in the chart, or the row of the list. Enter drills into a folder, Backspace
/// goes up, Delete stages, the Menu key asks for the menu. What a click acts on is what was under
/// the pointer when the button went down. GUI thread.
class ChartView : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("It is one of the charts")
    Q_PROPERTY(brivane::ScanViewModel* viewModel READ viewModel WRITE setViewModel NOTIFY
                   viewModelChanged REQUIRED)
    /// How many items there are, and a number that changes with anything about them.
    Q_PROPERTY(int count READ count NOTIFY itemsChanged)
    Q_PROPERTY(int revision READ revision NOTIFY itemsChanged)
    /// -1 for none.
    Q_PROPERTY(int hoveredIndex READ hoveredIndex NOTIFY hoveredIndexChanged)
    /// The keyboard has come to the hovered item.
    Q_PROPERTY(bool isKeyboardUsed READ isKeyboardUsed NOTIFY hoveredIndexChanged)

public:
    explicit ChartView(QQuickItem* parent = nullptr);

    [[nodiscard]] ScanViewModel* viewModel() const { return m_viewModel; }
    /// `viewModel` has to outlive this.
    void setViewModel(ScanViewModel* viewModel);
    [[nodiscard]] int count() const { return static_cast<int>(m_items.size()); }
    [[nodiscard]] int revision() const { return m_revision; }
    [[nodiscard]] int hoveredIndex() const { return m_hovered; }
    [[nodiscard]] bool isKeyboardUsed() const { return m_isKeyboardUsed; }

    /// For display. Empty, as the two that follow, when there is no such item.
    Q_INVOKABLE QString nameOf(int index) const;
    /// Size, share of the folder and, for folders, count of files.
    Q_INVOKABLE QString detailsOf(int index) const;
    /// Where it is drawn, in this item's coordinates.
    Q_INVOKABLE QRectF boundsOf(int index) const;
    /// As a click does.
    Q_INVOKABLE void activate(int index);

Q_SIGNALS:
    void viewModelChanged();
    void itemsChanged();
    void hoveredIndexChanged();
    void menuRequested(const brivane::FileNodeRef& node, qreal x, qreal y);

protected:
    /// The folder shows other children, or these have other sizes, or the frame is another. Fills
    /// `items`.
    virtual void rebuild(std::span<const SizedNode> children, std::vector<TreemapItem>& items) = 0;
    /// Another folder is shown, or the chart appears.
    virtual void startReveal(bool isAppearing) = 0;
    /// Moves what moves by so many milliseconds; whether something still moves.
    virtual bool advance(int milliseconds) = 0;
    /// Brings everything to its end.
    virtual void finishMotion() = 0;
    [[nodiscard]] virtual std::optional<std::size_t> itemAt(const QPointF& point) const = 0;
    /// Where an arrow key leads from `current`.
    [[nodiscard]] virtual std::optional<std::size_t> itemBeside(std::size_t current,
                                                                Qt::Key key) const = 0;
    [[nodiscard]] virtual QRectF itemBounds(std::size_t index) const = 0;
    /// How long a hovered item takes to light up.
    [[nodiscard]] virtual int glowDuration() const = 0;

    [[nodiscard]] const std::vector<TreemapItem>& items() const { return m_items; }
    /// From 0 to 1: how far `index` is lit up.
    [[nodiscard]] double glow(std::size_t index) const;
    [[nodiscard]] bool isSelected(std::size_t index) const;
    [[nodiscard]] bool isMarkedByKeyboard(std::size_t index) const;
    /// Something has begun to move.
    void move();
    void invalidate();

    void updatePolish() override;
    void geometryChange(const QRectF& geometry, const QRectF& before) override;
    void hoverEnterEvent(QHoverEvent* event) override;
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    struct Glow {
        const FileNode* node = nullptr; ///< null for the group
        double level = 0;
    };

    [[nodiscard]] const TreemapItem* itemAtIndex(int index) const;
    [[nodiscard]] FileNodeRef refOf(int index) const;
    [[nodiscard]] int indexOf(const FileNode* node) const;
    bool stepKeyboard(Qt::Key key);
    [[nodiscard]] int indexAt(const QPointF& point) const;
    void hover(int index);
    void setHoveredIndex(int index, bool byKeyboard);
    void followHoveredNode();
    bool advanceAll(int milliseconds);
    bool advanceGlows(int milliseconds);

    ScanViewModel* m_viewModel = nullptr;
    FileNodePtr m_directory; ///< keeps the nodes of m_items
    std::vector<TreemapItem> m_items;
    std::vector<Glow> m_glows; ///< of the few that are or were hovered
    FileNodeRef m_pressed;
    std::optional<QPointF> m_pointer; ///< none: elsewhere
    ChartTicker m_ticker;
    int m_revision = 0;
    int m_hovered = -1;
    bool m_isKeyboardUsed = false;
    bool m_hasAppeared = false;
};

} // namespace brivane
