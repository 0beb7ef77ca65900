#include "scanner/charts/FolderChart.h"

#include "components/Motion.h"
#include "core/ByteFormatter.h"
#include "platform/PathText.h"

#include <QLocale>

namespace brivane {

using namespace Qt::StringLiterals;

FolderChart::FolderChart(QQuickItem* parent)
    : QQuickPaintedItem(parent)
    , m_ticker([this](int milliseconds) { return advanceAll(milliseconds); })
{
    setAntialiasing(true);
}

void FolderChart::setViewModel(ScanViewModel* viewModel)
{
    if (m_viewModel == viewModel)
        return;
    m_viewModel = viewModel;
    connect(viewModel->folderModel(), &FolderModel::pictureChanged, this, &FolderChart::invalidate);
    connect(viewModel->folderModel(), &FolderModel::dataChanged, this, [this] { update(); });
    connect(viewModel, &ScanViewModel::selectedNodeChanged, this, [this] { update(); });
    Q_EMIT viewModelChanged();
    invalidate();
}

void FolderChart::invalidate()
{
    polish();
}

void FolderChart::geometryChange(const QRectF& geometry, const QRectF& before)
{
    QQuickPaintedItem::geometryChange(geometry, before);
    if (geometry.size() != before.size())
        polish();
}

void FolderChart::updatePolish()
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
        m_glow.clear();
    }
    ++m_revision;
    Q_EMIT itemsChanged();
    move();
}

void FolderChart::move()
{
    if (Motion::instance().isEnabled() && isVisible()) {
        m_ticker.run();
    } else {
        finishMotion();
        m_glow.finish();
    }
    update();
}

bool FolderChart::advanceAll(int milliseconds)
{
    const bool isGlowing = m_glow.advance(milliseconds, glowDuration());
    const bool isMoving = advance(milliseconds);
    update();
    return isGlowing || isMoving;
}

void FolderChart::light(int index)
{
    const ChartItem* item = itemAtIndex(index);
    m_glow.light(item ? std::optional<const FileNode*>(item->node) : std::nullopt);
    move();
}

double FolderChart::glow(std::size_t index) const
{
    return m_glow.of(m_items[index].node);
}

const ChartItem* FolderChart::itemAtIndex(int index) const
{
    return index >= 0 && index < count() ? &m_items[static_cast<std::size_t>(index)] : nullptr;
}

FileNodeRef FolderChart::refOf(int index) const
{
    const ChartItem* item = itemAtIndex(index);
    return item && item->node ? FileNodeRef(item->node->shared()) : FileNodeRef();
}

int FolderChart::indexOf(const FileNode* node) const
{
    if (!node)
        return -1;
    const auto found = std::ranges::find(m_items, node, &ChartItem::node);
    return found == m_items.end() ? -1 : static_cast<int>(found - m_items.begin());
}

bool FolderChart::isSelected(std::size_t index) const
{
    const FileNode* node = m_items[index].node;
    return node && m_viewModel->selectedNode().node().get() == node;
}

QString FolderChart::nameOf(int index) const
{
    const ChartItem* item = itemAtIndex(index);
    return item ? PathText::forDisplay(item->name()) : QString();
}

QString FolderChart::detailsOf(int index) const
{
    const ChartItem* item = itemAtIndex(index);
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

QRectF FolderChart::boundsOf(int index) const
{
    return itemAtIndex(index) ? itemBounds(static_cast<std::size_t>(index)) : QRectF();
}

} // namespace brivane
