#include "scanner/charts/ChartView.h"

#include "components/Motion.h"
#include "core/ByteFormatter.h"
#include "platform/PathText.h"

#include <QLocale>

namespace brivane {

using namespace Qt::StringLiterals;

ChartView::ChartView(QQuickItem* parent)
    : QQuickPaintedItem(parent)
    , m_ticker([this](int milliseconds) { return advanceAll(milliseconds); })
{
    setAntialiasing(true);
    setAcceptHoverEvents(true);
    setAcceptedMouseButtons(Qt::LeftButton | Qt::RightButton);
    setActiveFocusOnTab(true);
}

void ChartView::setViewModel(ScanViewModel* viewModel)
{
    if (m_viewModel == viewModel)
        return;
    m_viewModel = viewModel;
    connect(viewModel->folderModel(), &FolderModel::pictureChanged, this, &ChartView::invalidate);
    connect(viewModel->folderModel(), &FolderModel::dataChanged, this, [this] { update(); });
    connect(viewModel, &ScanViewModel::hoveredNodeChanged, this, &ChartView::followHoveredNode);
    connect(viewModel, &ScanViewModel::selectedNodeChanged, this, [this] { update(); });
    Q_EMIT viewModelChanged();
    invalidate();
}

void ChartView::invalidate()
{
    polish();
}

void ChartView::geometryChange(const QRectF& geometry, const QRectF& before)
{
    QQuickPaintedItem::geometryChange(geometry, before);
    if (geometry.size() != before.size())
        polish();
}

void ChartView::updatePolish()
{
    if (!m_viewModel || width() <= 0 || height() <= 0)
        return;
    const FolderModel& folder = *m_viewModel->folderModel();
    const bool isAnother = folder.directory() != m_directory;
    const FileNodePtr before = std::exchange(m_directory, folder.directory());
    rebuild(folder.sizedRows(), m_items);
    if (isAnother || !m_hasAppeared) {
        startReveal(!m_hasAppeared);
        m_hasAppeared = true;
        m_glows.clear();
    }
    // The same node may be at another place now, or none.
    m_hovered = indexOf(m_viewModel->hoveredNode().node().get());
    ++m_revision;
    Q_EMIT itemsChanged();
    Q_EMIT hoveredIndexChanged();
    // What lies under a pointer that rests may be another block now.
    if (m_pointer && !m_isKeyboardUsed)
        hover(indexAt(*m_pointer));
    // Who came down by key goes on by key.
    if (m_isKeyboardUsed && hasActiveFocus() && m_hovered < 0 && !m_items.empty()) {
        hover(0);
        setHoveredIndex(0, true);
    }
    move();
}

void ChartView::move()
{
    if (Motion::instance().isEnabled() && isVisible()) {
        m_ticker.run();
    } else {
        finishMotion();
        for (Glow& one : m_glows)
            one.level = itemAtIndex(m_hovered) && itemAtIndex(m_hovered)->node == one.node ? 1 : 0;
    }
    update();
}

bool ChartView::advanceAll(int milliseconds)
{
    const bool isGlowing = advanceGlows(milliseconds);
    const bool isMoving = advance(milliseconds);
    update();
    return isGlowing || isMoving;
}

bool ChartView::advanceGlows(int milliseconds)
{
    const TreemapItem* hovered = itemAtIndex(m_hovered);
    const double step = static_cast<double>(milliseconds) / glowDuration();
    bool isMoving = false;
    for (Glow& one : m_glows) {
        const double target = hovered && hovered->node == one.node ? 1 : 0;
        one.level = target > one.level ? std::min(target, one.level + step)
                                       : std::max(target, one.level - step);
        isMoving = isMoving || one.level != target;
    }
    std::erase_if(m_glows, [&](const Glow& one) {
        return one.level == 0 && !(hovered && hovered->node == one.node);
    });
    return isMoving;
}

double ChartView::glow(std::size_t index) const
{
    const auto found = std::ranges::find(m_glows, m_items[index].node, &Glow::node);
    if (found == m_glows.end())
        return 0;
    return 1 - (1 - found->level) * (1 - found->level); // ease out
}

const TreemapItem* ChartView::itemAtIndex(int index) const
{
    return index >= 0 && index < count() ? &m_items[static_cast<std::size_t>(index)] : nullptr;
}

FileNodeRef ChartView::refOf(int index) const
{
    const TreemapItem* item = itemAtIndex(index);
    return item && item->node ? FileNodeRef(item->node->shared()) : FileNodeRef();
}

int ChartView::indexOf(const FileNode* node) const
{
    if (!node)
        return -1;
    const auto found = std::ranges::find(m_items, node, &TreemapItem::node);
    return found == m_items.end() ? -1 : static_cast<int>(found - m_items.begin());
}

bool ChartView::isSelected(std::size_t index) const
{
    const FileNode* node = m_items[index].node;
    return node && m_viewModel->selectedNode().node().get() == node;
}

bool ChartView::isMarkedByKeyboard(std::size_t index) const
{
    return m_isKeyboardUsed && hasActiveFocus() && static_cast<int>(index) == m_hovered;
}

QString ChartView::nameOf(int index) const
{
    const TreemapItem* item = itemAtIndex(index);
    return item ? PathText::forDisplay(item->name()) : QString();
}

QString ChartView::detailsOf(int index) const
{
    const TreemapItem* item = itemAtIndex(index);
    if (!item || !m_directory)
        return {};
    const QLocale grouped(QLocale::English, QLocale::UnitedStates);
    const auto whole = static_cast<double>(std::max<std::uint64_t>(m_directory->size(), 1));
    const double percent = 100 * static_cast<double>(item->size) / whole;
    const QString size = ByteFormatter::format(item->size);
    QStringList parts{item->isIncomplete ? tr("at least %1").arg(size) : size,
                      tr("%1 % of %2")
                          .arg(grouped.toString(percent, 'f', percent < 10 ? 1 : 0),
                               PathText::forDisplay(m_directory->name()))};
    if (item->node && item->node->isDirectory()) {
        const qlonglong files = item->node->fileCount();
        parts += files == 1 ? tr("1 file") : tr("%1 files").arg(grouped.toString(files));
    }
    return parts.join(u" · "_s);
}

QRectF ChartView::boundsOf(int index) const
{
    return itemAtIndex(index) ? itemBounds(static_cast<std::size_t>(index)) : QRectF();
}

void ChartView::activate(int index)
{
    const FileNodeRef node = refOf(index);
    if (node.isDirectory())
        m_viewModel->drillDown(node);
    else if (node.isValid())
        m_viewModel->setSelectedNode(node);
}

void ChartView::hover(int index)
{
    const FileNodeRef before = refOf(m_hovered);
    setHoveredIndex(index, false);
    if (const FileNodeRef node = refOf(index); node.isValid())
        m_viewModel->setHovered(node, true);
    else if (before.isValid())
        m_viewModel->setHovered(before, false);
}

void ChartView::followHoveredNode()
{
    const FileNode* node = m_viewModel->hoveredNode().node().get();
    const TreemapItem* hovered = itemAtIndex(m_hovered);
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
    if (const TreemapItem* item = itemAtIndex(index)) {
        if (std::ranges::find(m_glows, item->node, &Glow::node) == m_glows.end())
            m_glows.push_back({item->node, 0});
    }
    Q_EMIT hoveredIndexChanged();
    move();
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
    if (m_items.empty())
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
        return m_viewModel->actions()->copyPath(node);
    if (event->modifiers() != Qt::NoModifier && event->modifiers() != Qt::KeypadModifier)
        return event->ignore();
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        event->setAccepted(stepKeyboard(static_cast<Qt::Key>(event->key())));
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return activate(m_hovered);
    case Qt::Key_Backspace:
        return m_viewModel->drillUp();
    case Qt::Key_Delete:
        return m_viewModel->actions()->toggleStaged(node);
    default:
        event->ignore();
    }
}

void ChartView::focusInEvent(QFocusEvent* event)
{
    QQuickPaintedItem::focusInEvent(event);
    const bool isByKey =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (isByKey && !m_items.empty())
        hover(std::max(m_hovered, 0));
    if (isByKey)
        setHoveredIndex(m_hovered, true);
    update();
}

void ChartView::focusOutEvent(QFocusEvent* event)
{
    QQuickPaintedItem::focusOutEvent(event);
    if (m_isKeyboardUsed)
        hover(-1);
    update();
}

} // namespace brivane
