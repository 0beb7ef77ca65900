#include "scanner/FolderModel.h"

#include "core/ByteFormatter.h"
#include "platform/PathText.h"
#include "scanner/FileNodeRef.h"

#include <QFutureWatcher>
#include <QtConcurrentRun>

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

/// Up to here a picture is taken at once: it costs less than a millisecond.
constexpr std::size_t childrenAtOnce = 2000;

} // namespace

FolderModel::FolderModel(QObject* parent)
    : QAbstractListModel(parent)
{
}

void FolderModel::setDirectory(const FileNodePtr& directory)
{
    if (directory == m_directory)
        return;
    beginResetModel();
    m_directory = directory;
    m_rows.clear();
    endResetModel();
    Q_EMIT countChanged();
    refresh();
}

void FolderModel::refresh()
{
    if (!m_directory)
        return;
    if (m_isTakingPicture)
        m_needsAnother = true;
    else if (m_directory->childCount() <= childrenAtOnce)
        show(childrenBySize(*m_directory));
    else
        startPicture();
}

void FolderModel::startPicture()
{
    m_isTakingPicture = true;
    m_needsAnother = false;
    auto* watcher = new QFutureWatcher<Rows>(this);
    const FileNodePtr directory = m_directory;
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, directory] {
        watcher->deleteLater();
        m_isTakingPicture = false;
        if (directory == m_directory)
            show(watcher->future().takeResult());
        if (m_needsAnother || directory != m_directory)
            refresh();
    });
    watcher->setFuture(QtConcurrent::run([directory] { return childrenBySize(*directory); }));
}

void FolderModel::show(Rows rows)
{
    m_needsAnother = false;
    const int before = rowTotal();
    const int after = static_cast<int>(rows.size());
    if (after > before) {
        beginInsertRows({}, before, after - 1);
        // Until the order is made, the new rows stand for nobody, which their size tells.
        m_rows.resize(rows.size(), {rows.back().node, 0});
        endInsertRows();
    } else if (after < before) {
        beginRemoveRows({}, after, before - 1);
        m_rows.resize(rows.size());
        endRemoveRows();
    }
    if (after == 0) {
        if (before != 0)
            Q_EMIT countChanged();
        return;
    }
    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const QModelIndexList indexes = persistentIndexList();
    std::vector<const FileNode*> remembered;
    for (const QModelIndex& index : indexes) {
        const SizedNode& row = m_rows[static_cast<std::size_t>(index.row())];
        remembered.push_back(row.size > 0 ? row.node : nullptr);
    }
    m_rows = std::move(rows);
    QModelIndexList moved;
    for (const FileNode* node : remembered) {
        const int row = rowOf(node);
        moved.append(row < 0 ? QModelIndex() : index(row));
    }
    changePersistentIndexList(indexes, moved);
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
    if (after != before)
        Q_EMIT countChanged();
}

int FolderModel::rowOf(const FileNode* node) const
{
    const auto found = std::ranges::find(m_rows, node, &SizedNode::node);
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

FileNodePtr FolderModel::nodeAt(int row) const
{
    if (row < 0 || row >= rowTotal())
        return {};
    return m_rows[static_cast<std::size_t>(row)].node->shared();
}

int FolderModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : rowTotal();
}

QVariant FolderModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const SizedNode& row = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case NodeRole:
        return QVariant::fromValue(FileNodeRef(row.node->shared()));
    case Qt::DisplayRole:
    case NameRole:
        return PathText::forDisplay(row.node->name());
    case SizeTextRole: {
        const QString size = ByteFormatter::format(row.size);
        return row.node->isIncomplete() ? u"≥ "_s + size : size;
    }
    case ShareRole:
        return static_cast<double>(row.size) / static_cast<double>(m_rows.front().size);
    case IsDirectoryRole:
        return row.node->isDirectory();
    case HasChildrenRole:
        return row.node->childCount() > 0;
    case IsUnreadableRole:
        return row.node->isUnreadable();
    case IsIncompleteRole:
        return row.node->isIncomplete();
    default:
        return {};
    }
}

QHash<int, QByteArray> FolderModel::roleNames() const
{
    return {
        {NodeRole, "node"},
        {NameRole, "name"},
        {SizeTextRole, "sizeText"},
        {ShareRole, "share"},
        {IsDirectoryRole, "isDirectory"},
        {HasChildrenRole, "hasChildren"},
        {IsUnreadableRole, "isUnreadable"},
        {IsIncompleteRole, "isIncomplete"},
    };
}

} // namespace brivane
