#pragma once

#include "cleaner/CleanerCategory.h"
#include "cleaner/CleanerItemListModel.h"
#include "cleaner/ExtensionChips.h"

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace brivane {

/// The rules of the pane that shows one category: its texts, its items and their filter. GUI
/// thread.
///
/// A filter narrows down what is listed and nothing else: "Select All" goes for the category.
class CleanerDetailViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("CleanerViewModel has it")
    Q_PROPERTY(bool hasCategory READ hasCategory NOTIFY categoryChanged)
    Q_PROPERTY(QString name READ name NOTIFY categoryChanged)
    Q_PROPERTY(QString description READ description NOTIFY categoryChanged)
    Q_PROPERTY(QString iconName READ iconName NOTIFY categoryChanged)
    Q_PROPERTY(QColor tint READ tint NOTIFY categoryChanged)
    Q_PROPERTY(QString safetyExplanation READ safetyExplanation NOTIFY categoryChanged)
    Q_PROPERTY(QString regenerationInfo READ regenerationInfo NOTIFY categoryChanged)
    Q_PROPERTY(
        bool showLearnMore READ showLearnMore WRITE setShowLearnMore NOTIFY showLearnMoreChanged)
    Q_PROPERTY(QString totalSizeText READ totalSizeText NOTIFY itemsChanged)
    Q_PROPERTY(QString itemCountText READ itemCountText NOTIFY itemsChanged)
    /// What there is to read where no item is listed.
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY itemsChanged)
    Q_PROPERTY(bool hasItems READ hasItems NOTIFY itemsChanged)
    Q_PROPERTY(QString selectAllLabel READ selectAllLabel NOTIFY selectionChanged)
    Q_PROPERTY(QString selectAllToolTip READ selectAllToolTip NOTIFY selectionChanged)
    /// See CleanerItemListModel and ExtensionChips.
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT)
    Q_PROPERTY(QAbstractItemModel* chips READ chips CONSTANT)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY filterChanged)
    /// In small letters; empty for all.
    Q_PROPERTY(QString selectedExtension READ selectedExtension WRITE setSelectedExtension NOTIFY
                   filterChanged)
    /// The chip of the selected extension.
    Q_PROPERTY(int selectedChip READ selectedChip NOTIFY filterChanged)

public:
    explicit CleanerDetailViewModel(const Locations& locations, QObject* parent = nullptr);

    /// Null for none. The filter and the explanation go where the category is of another type than
    /// the one before.
    void setCategory(std::shared_ptr<CleanerCategory> category);
    [[nodiscard]] const std::shared_ptr<CleanerCategory>& category() const { return m_category; }

    /// Selects all items of the category, or none when all are.
    Q_INVOKABLE void toggleAll();
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void toggle(const brivane::CleanerItem& item);
    [[nodiscard]] Q_INVOKABLE bool isSelected(const brivane::CleanerItem& item) const;
    /// Where an item is listed; -1 where it is not.
    [[nodiscard]] Q_INVOKABLE int rowOf(const brivane::CleanerItem& item) const;
    /// Selects the extension of the chip at `row`.
    Q_INVOKABLE void selectChip(int row);

    [[nodiscard]] bool hasCategory() const { return m_category != nullptr; }
    [[nodiscard]] QString name() const;
    [[nodiscard]] QString description() const;
    [[nodiscard]] QString iconName() const;
    [[nodiscard]] QColor tint() const;
    [[nodiscard]] QString safetyExplanation() const;
    [[nodiscard]] QString regenerationInfo() const;
    [[nodiscard]] bool showLearnMore() const { return m_showLearnMore; }
    void setShowLearnMore(bool isShown);
    [[nodiscard]] QString totalSizeText() const;
    [[nodiscard]] QString itemCountText() const;
    [[nodiscard]] QString emptyText() const;
    [[nodiscard]] bool hasItems() const { return m_category && !m_category->items().empty(); }
    [[nodiscard]] QString selectAllLabel() const;
    [[nodiscard]] QString selectAllToolTip() const;
    [[nodiscard]] CleanerItemListModel* rows() { return &m_rows; }
    [[nodiscard]] ExtensionChips* chips() { return &m_chips; }
    [[nodiscard]] const QString& searchText() const { return m_searchText; }
    void setSearchText(const QString& text);
    [[nodiscard]] const QString& selectedExtension() const { return m_selectedExtension; }
    void setSelectedExtension(const QString& extension);
    [[nodiscard]] int selectedChip() const { return m_chips.rowOf(m_selectedExtension); }

Q_SIGNALS:
    void categoryChanged();
    void itemsChanged();
    void selectionChanged();
    void filterChanged();
    void showLearnMoreChanged();

private:
    void countItems();
    void setFilter(const QString& searchText, const QString& extension);

    std::shared_ptr<CleanerCategory> m_category;
    std::optional<CleanerCategory::CategoryType> m_lastType;
    ExtensionChips m_chips;
    CleanerItemListModel m_rows;
    QString m_searchText;
    QString m_selectedExtension;
    bool m_showLearnMore = false;
};

} // namespace brivane
