#pragma once

#include "cleaner/CleanerCategory.h"

#include <QAbstractListModel>

#include <memory>
#include <vector>

namespace brivane {

/// The categories of a scan as rows, in their order. GUI thread.
///
/// Rows come and go one by one; only another scan, whose categories are all new, is a reset. A
/// category is known by its type's raw value, which is the same in every scan.
class CleanerCategoryListModel : public QAbstractListModel {
    Q_OBJECT

public:
    using Category = std::shared_ptr<CleanerCategory>;

    enum Role {
        TypeRole = Qt::UserRole, ///< the raw value
        NameRole,
        IconNameRole,
        TintRole,
        IsScanningRole,
        DetailRole, ///< its size, or that it is scanned
        DetailColorRole,
        CheckStateRole,
        RiskLabelRole,
        RiskIconRole,
        RiskColorRole,
        RiskToolTipRole,
        IsChosenRole, ///< it is in the detail pane
    };

    using QAbstractListModel::QAbstractListModel;

    void setCategories(const std::vector<Category>& categories);
    /// Of whose items there is more to see; empty for none.
    void setChosen(const QString& type);

    /// Null where there is none.
    [[nodiscard]] Category find(const QString& type) const;
    /// Where it is listed; -1 where it is not.
    [[nodiscard]] int rowOf(const QString& type) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    void watch(const Category& category);
    void removeAllBut(const std::vector<Category>& categories);
    void insertMissing(const std::vector<Category>& categories);
    void tellRow(int row, const QList<int>& roles);

    std::vector<Category> m_categories;
    QString m_chosen;
};

} // namespace brivane
