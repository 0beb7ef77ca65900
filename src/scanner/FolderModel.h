#pragma once

#include "scanner/SizedNode.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace brivane {

/// The children of one directory, largest first, those of size 0 left out.
///
/// The directory may be growing: refresh() takes a new picture of it. Large ones are copied and
/// sorted on the pool, one picture at a time, so the GUI thread only swaps two lists. Rows are
/// never reset while the directory stays the same: a list that is scrolled keeps its place.
/// GUI thread.
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
    };

    explicit FolderModel(QObject* parent = nullptr);

    /// Shows what `directory` holds, or nothing when it is null.
    void setDirectory(const FileNodePtr& directory);
    /// Looks at the directory again.
    void refresh();
    /// The row of `node`, -1 if it has none.
    [[nodiscard]] int rowOf(const FileNode* node) const;
    /// The node of `row`, null when there is no such row.
    [[nodiscard]] FileNodePtr nodeAt(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    using Rows = std::vector<SizedNode>;

    [[nodiscard]] int rowTotal() const { return static_cast<int>(m_rows.size()); }
    void startPicture();
    void show(Rows rows);

    FileNodePtr m_directory; ///< keeps the nodes of m_rows
    Rows m_rows;
    bool m_isTakingPicture = false;
    bool m_needsAnother = false;
};

} // namespace brivane
