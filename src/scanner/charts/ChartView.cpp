#include "scanner/charts/ChartView.h"

namespace brivane {

ChartView::ChartView(QQuickItem* parent)
    : FolderChart(parent)
{
    setAcceptHoverEvents(true);
    setAcceptedMouseButtons(Qt::LeftButton | Qt::RightButton);
    setActiveFocusOnTab(true);
    connect(this, &FolderChart::itemsChanged, this, &ChartView::followItems);
    connect(this, &FolderChart::viewModelChanged, this, [this] {
        connect(viewModel(), &ScanViewModel::hoveredNodeChanged, this,
                &ChartView::followHoveredNode);
    });
}

void ChartView::followItems()
{
    // The same node may be at another place now, or none.
    m_hovered = indexOf(viewModel()->hoveredNode().node().get());
    light(m_hovered);
    Q_EMIT hoveredIndexChanged();
    // What lies under a pointer that rests may be another block now.
    if (m_pointer && !m_isKeyboardUsed)
        hover(indexAt(*m_pointer));
    // Who came down by key goes on by key.
    if (m_isKeyboardUsed && hasActiveFocus() && m_hovered < 0 && !items().empty()) {
        hover(0);
        setHoveredIndex(0, true);
    }
}

bool ChartView::isMarkedByKeyboard(std::size_t index) const
{
    return m_isKeyboardUsed && hasActiveFocus() && static_cast<int>(index) == m_hovered;
}

void ChartView::activate(int index)
{
    const FileNodeRef node = refOf(index);
    if (node.isDirectory())
        viewModel()->drillDown(node);
    else if (node.isValid())
        viewModel()->setSelectedNode(node);
}

void ChartView::hover(int index)
{
    const FileNodeRef before = refOf(m_hovered);
    setHoveredIndex(index, false);
    if (const FileNodeRef node = refOf(index); node.isValid())
        viewModel()->setHovered(node, true);
    else if (before.isValid())
        viewModel()->setHovered(before, false);
}

void ChartView::followHoveredNode()
{
    const FileNode* node = viewModel()->hoveredNode().node().get();
    const ChartItem* hovered = itemAtIndex(m_hovered);
    // The group is hovered without being a node.
    if (!node && hovered && hovered->isGrouped())
        return;
    setHoveredIndex(indexOf(node), m_isKeyboardUsed);
}

void ChartView::setHoveredIndex(int index, bool byKeyboard)
{
    if (m_hovered == index && m_isKeyboardUsed == byKeyboard)
        return;
    m_hovered = index;
    m_isKeyboardUsed = byKeyboard;
    light(index);
    Q_EMIT hoveredIndexChanged();
}

void ChartView::hoverEnterEvent(QHoverEvent* event)
{
    m_pointer = event->position();
    hover(indexAt(*m_pointer));
}

void ChartView::hoverMoveEvent(QHoverEvent* event)
{
    // A pointer that rests while the keyboard is used does not take the place back.
    if (event->position() == event->oldPosF())
        return;
    m_pointer = event->position();
    hover(indexAt(*m_pointer));
}

int ChartView::indexAt(const QPointF& point) const
{
    const auto index = itemAt(point);
    return index ? static_cast<int>(*index) : -1;
}

void ChartView::hoverLeaveEvent(QHoverEvent*)
{
    m_pointer.reset();
    hover(-1);
}

void ChartView::mousePressEvent(QMouseEvent* event)
{
    forceActiveFocus(Qt::MouseFocusReason);
    const int pressed = indexAt(event->position());
    hover(pressed);
    m_pressed = refOf(pressed);
    if (event->button() == Qt::RightButton && m_pressed.isValid())
        Q_EMIT menuRequested(m_pressed, event->position().x(), event->position().y());
}

void ChartView::mouseReleaseEvent(QMouseEvent* event)
{
    const FileNodeRef pressed = std::exchange(m_pressed, {});
    if (event->button() != Qt::LeftButton || !pressed.isValid())
        return;
    const int index = indexAt(event->position());
    if (refOf(index) == pressed)
        activate(index);
}

bool ChartView::stepKeyboard(Qt::Key key)
{
    if (items().empty())
        return false;
    std::optional<std::size_t> next = 0;
    if (itemAtIndex(m_hovered))
        next = itemBeside(static_cast<std::size_t>(m_hovered), key);
    if (!next)
        return true; // at the edge: the key is used up all the same
    hover(static_cast<int>(*next));
    setHoveredIndex(static_cast<int>(*next), true);
    return true;
}

void ChartView::keyPressEvent(QKeyEvent* event)
{
    const FileNodeRef node = refOf(m_hovered);
    const bool asksForMenu =
        event->key() == Qt::Key_Menu ||
        (event->key() == Qt::Key_F10 && event->modifiers().testFlag(Qt::ShiftModifier));
    if (asksForMenu && node.isValid()) {
        const QPointF place = boundsOf(m_hovered).center();
        Q_EMIT menuRequested(node, place.x(), place.y());
        return;
    }
    if (event->matches(QKeySequence::Copy))
        return viewModel()->actions()->copyPath(node);
    if (event->modifiers() != Qt::NoModifier && event->modifiers() != Qt::KeypadModifier)
        return event->ignore();
    const bool isHeld = event->isAutoRepeat();
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        event->setAccepted(stepKeyboard(static_cast<Qt::Key>(event->key())));
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return isHeld ? void() : activate(m_hovered);
    case Qt::Key_Backspace:
        return viewModel()->drillUp();
    case Qt::Key_Delete:
        return isHeld ? void() : viewModel()->actions()->toggleStaged(node);
    default:
        event->ignore();
    }
}

void ChartView::focusInEvent(QFocusEvent* event)
{
    FolderChart::focusInEvent(event);
    const bool isByKey =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (isByKey && !items().empty())
        hover(std::max(m_hovered, 0));
    if (isByKey)
        setHoveredIndex(m_hovered, true);
    update();
}

void ChartView::focusOutEvent(QFocusEvent* event)
{
    FolderChart::focusOutEvent(event);
    if (m_isKeyboardUsed)
        hover(-1);
    update();
}

} // namespace brivane
