#include "scanner/FolderModel.h"

#include "core/ByteFormatter.h"
#include "platform/PathText.h"
#include "scanner/FileNodeRef.h"

#include <QFutureWatcher>

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
    m_followed = nullptr;
    m_rows.clear();
    endResetModel();
    Q_EMIT countChanged();
    Q_EMIT pictureChanged();
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
    watcher->setFuture(m_sorter.run([directory] { return childrenBySize(*directory); }));
}

void FolderModel::show(Rows rows)
{
    const int before = rowTotal();
    const int after = static_cast<int>(rows.size());
    if (after > before) {
        beginInsertRows({}, before, after - 1);
        m_rows.insert(m_rows.end(), rows.begin() + before, rows.end());
        endInsertRows();
    } else if (after < before) {
        beginRemoveRows({}, after, before - 1);
        m_rows.resize(rows.size());
        endRemoveRows();
    }
    moveFollowed(rows);
    m_rows = std::move(rows);
    if (after > 0)
        Q_EMIT dataChanged(index(0), index(after - 1));
    if (after != before)
        Q_EMIT countChanged();
    Q_EMIT pictureChanged();
}

void FolderModel::moveFollowed(const Rows& rows)
{
    const auto from = std::ranges::find(m_rows, m_followed, &SizedNode::node) - m_rows.begin();
    const auto to = std::ranges::find(rows, m_followed, &SizedNode::node) - rows.begin();
    // Both lists have the same length by now.
    if (from == to || from == std::ssize(m_rows) || to == std::ssize(rows))
        return;
    beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {},
                  static_cast<int>(to > from ? to + 1 : to));
    const auto first = m_rows.begin() + from;
    const auto place = m_rows.begin() + to;
    if (from < to)
        std::rotate(first, first + 1, place + 1);
    else
        std::rotate(place, first, first + 1);
    endMoveRows();
}

std::span<const SizedNode> FolderModel::sizedRows() const
{
    return withSize(m_rows);
}

void FolderModel::noteMarks()
{
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0), index(rowTotal() - 1), {IsStagedRole});
}

int FolderModel::rowOf(const FileNodeRef& node) const
{
    const auto found = std::ranges::find(m_rows, node.node().get(), &SizedNode::node);
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
        if (row.node->isUnreadable() && row.size == 0)
            return u"unreadable"_s;
        const QString size = ByteFormatter::format(row.size);
        return row.node->isIncomplete() ? u"≥ "_s + size : size;
    }
    case ShareRole: {
        const auto largest = static_cast<double>(std::max<std::uint64_t>(m_rows.front().size, 1));
        return static_cast<double>(row.size) / largest;
    }
    case IsDirectoryRole:
        return row.node->isDirectory();
    case HasChildrenRole:
        return row.node->childCount() > 0;
    case IsUnreadableRole:
        return row.node->isUnreadable();
    case IsIncompleteRole:
        return row.node->isIncomplete();
    case IsStagedRole:
        return row.node->markedForDeletion();
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
        {IsStagedRole, "isStaged"},
    };
}

} // namespace brivane
