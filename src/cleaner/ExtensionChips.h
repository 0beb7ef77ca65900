#pragma once

#include <QAbstractListModel>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace brivane {

struct CleanerItem;

/// The endings that a category's items have, as chips to choose one of: "All" first, then those of
/// most items. GUI thread.
class ExtensionChips : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        ValueRole = Qt::UserRole, ///< the extension; empty for all
        LabelRole,
    };

    using QAbstractListModel::QAbstractListModel;

    /// Counts anew. Chips stay where the order of extensions does.
    void setItems(const std::vector<CleanerItem>& items);
    /// How many items have it, whatever the filter; 0 when it has no chip.
    [[nodiscard]] int countForExtension(const QString& extension) const;
    /// The chip's place; -1 when there is none.
    [[nodiscard]] int rowOf(const QString& extension) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    struct Chip {
        QString extension;
        int count = 0;

        bool operator==(const Chip&) const = default;
    };

    std::vector<Chip> m_chips; ///< without "All"
};

} // namespace brivane
