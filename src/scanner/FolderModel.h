#pragma once

#include "platform/Worker.h"
#include "scanner/FileNodeRef.h"
#include "scanner/SizedNode.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace brivane {

/// The children of one directory, largest first. Those of size 0 are left out, but for folders that
/// could not be read: nobody knows how large those are.
///
/// The directory may be growing: refresh() takes a new picture of it. Large ones are copied and
/// sorted on a thread of the model's own, one picture at a time, so the GUI thread only swaps two
/// lists. Rows are never reset while the directory stays the same, and only the one that is
/// followed is moved: at the end rows come or go, and the others change what they show, which costs
/// a view only what is in sight. GUI thread.
class FolderModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The view model brings it")
    Q_PROPERTY(int count READ rowTotal NOTIFY countChanged)

public:
    enum Role {
        NodeRole = Qt::UserRole, ///< FileNodeRef
        NameRole,                ///< for display
        SizeTextRole,            ///< "at least" where something below could not be read
        ShareRole,               ///< of the largest row, 0 to 1
        IsDirectoryRole,
        HasChildrenRole,
        IsUnreadableRole,
        IsIncompleteRole,
        IsStagedRole, ///< marked for deletion
    };

    explicit FolderModel(QObject* parent = nullptr);

    /// Shows what `directory` holds, or nothing when it is null.
    void setDirectory(const FileNodePtr& directory);
    /// Looks at the directory again.
    void refresh();
    /// From now on a new order moves the row of `node`, so that a view's place in the list follows
    /// it.
    Q_INVOKABLE void follow(const brivane::FileNodeRef& node) { m_followed = node.node().get(); }
    /// Some nodes were marked for deletion, or are so no more.
    void noteMarks();
    /// The row of `node`, -1 if it has none.
    [[nodiscard]] Q_INVOKABLE int rowOf(const brivane::FileNodeRef& node) const;
    /// The node of `row`, null when there is no such row.
    [[nodiscard]] FileNodePtr nodeAt(int row) const;

    /// The rows that have a size, with it: what a chart of the directory shows. Valid until
    /// pictureChanged(), as long as the directory stays the same.
    [[nodiscard]] std::span<const SizedNode> sizedRows() const;
    [[nodiscard]] const FileNodePtr& directory() const { return m_directory; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();
    /// What sizedRows() gives may be another now.
    void pictureChanged();

private:
    using Rows = std::vector<SizedNode>;

    [[nodiscard]] int rowTotal() const { return static_cast<int>(m_rows.size()); }
    void startPicture();
    void show(Rows rows);
    void moveFollowed(const Rows& rows);

    FileNodePtr m_directory; ///< keeps the nodes of m_rows
    Rows m_rows;
    const FileNode* m_followed = nullptr; ///< compared only
    bool m_isTakingPicture = false;
    bool m_needsAnother = false;
    Worker m_sorter{QStringLiteral("folder sort")};
};

} // namespace brivane
