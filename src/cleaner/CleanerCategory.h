#pragma once

#include "cleaner/CleanerItem.h"

#include <QColor>
#include <QObject>
#include <QSet>

#include <span>
#include <vector>

namespace brivane {

/// One of the eighteen kinds of junk, with what a scan has found of it. GUI thread.
///
/// Sums are kept and not counted anew, so asking costs nothing, however many items there are.
class CleanerCategory : public QObject {
    Q_OBJECT

public:
    enum class RiskLevel { safe, moderate, caution };

    enum class CategoryType {
        applicationCaches,
        browserCaches,
        applicationLogs,
        systemLogs,
        unusedDiskImages,
        applicationLeftovers,
        iTunesTemp,
        mailCaches,
        xcodeJunk,
        trash,
        downloads,
        largeFiles,
        screenshots,
        dockerData,
        nodeModules,
        homebrewCache,
        vsCodeCache,
        iOSBackups,
    };
    Q_ENUM(CategoryType)

    explicit CleanerCategory(CategoryType type, QObject* parent = nullptr);

    [[nodiscard]] const QUuid& id() const { return m_id; }
    [[nodiscard]] CategoryType type() const { return m_type; }
    [[nodiscard]] QString name() const;
    [[nodiscard]] QString description() const;
    [[nodiscard]] QString iconName() const;
    [[nodiscard]] QColor iconColor() const;
    [[nodiscard]] RiskLevel riskLevel() const;

    /// In the order of the scan, which is largest first.
    [[nodiscard]] const std::vector<CleanerItem>& items() const { return m_items; }
    [[nodiscard]] bool isScanning() const { return m_isScanning; }
    /// As the scan or toggleAll() left it; single items do not change it.
    [[nodiscard]] bool isSelected() const { return m_isSelected; }

    /// Bytes.
    [[nodiscard]] quint64 totalSize() const { return m_totalSize; }
    [[nodiscard]] quint64 selectedSize() const { return m_selectedSize; }
    [[nodiscard]] qint64 selectedCount() const { return m_selectedCount; }
    /// Whether each item is selected, which goes for none as well.
    [[nodiscard]] bool areAllSelected() const
    {
        return m_selectedCount == static_cast<qint64>(m_items.size());
    }

    /// Selects all items, or none when all are, and itself alike.
    void toggleAll();
    /// Selects the item or not; nothing happens where it is not listed any more.
    void setItemSelected(const QUuid& item, bool isSelected);

    // For the service.

    void setScanning(bool isScanning);
    /// What the scan has found, and whether it starts selected.
    void setItems(std::vector<CleanerItem> items, bool areSelected);
    void removeItems(const QSet<QUuid>& items);

Q_SIGNALS:
    /// There are others, or fewer, and their sums have changed.
    void itemsChanged();
    /// Which of them are selected, from `first` to `last` by index.
    void selectionChanged(int first, int last);
    void isScanningChanged();

private:
    void sumUp();

    const QUuid m_id = QUuid::createUuid();
    const CategoryType m_type;
    std::vector<CleanerItem> m_items;
    bool m_isScanning = false;
    bool m_isSelected = false;
    quint64 m_totalSize = 0;
    quint64 m_selectedSize = 0;
    qint64 m_selectedCount = 0;
};

/// What does not change about a type.
struct CategoryFacts {
    QString rawValue; ///< the name of the case
    QString displayName;
    QString iconName;
    QColor iconColor;
    CleanerCategory::RiskLevel riskLevel;
    QString description;
    QString safetyExplanation; ///< why it may go
    QString regenerationInfo;  ///< what comes afterwards
};

/// All types in the order of their declaration.
[[nodiscard]] std::span<const CategoryFacts> categoryCatalogue();
[[nodiscard]] const CategoryFacts& factsOf(CleanerCategory::CategoryType type);

} // namespace brivane
