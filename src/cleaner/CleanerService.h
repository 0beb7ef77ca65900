#pragma once

#include "cleaner/CleaningPlan.h"
#include "platform/Worker.h"

#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QStringList>

#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace brivane {

class ActivityTracker;
class AppSettings;
class Composition;
class KeptBack;
class QuarantineProvider;
class SafetyChecker;
struct Host;

/// How far a removal is.
struct CleanProgress {
    qint64 completed = 0; ///< items that were dealt with
    qint64 total = 0;
    quint64 bytesProcessed = 0; ///< of those that went
    QString name = {};          ///< of the item, or the category, that is being dealt with

    bool operator==(const CleanProgress&) const = default;
};

/// Smart Clean: finds what programs leave lying about and removes what of it is selected, through
/// the quarantine or for good. GUI thread; scanners and removals run on a worker, one at a time.
///
/// What is acted on is what was shown: an item goes if the very object that the scan found stands
/// at its path, and SafetyChecker lets the cleaner have it. What does not go stays listed.
class CleanerService : public QObject {
    Q_OBJECT

public:
    /// What became of a removal.
    struct CleanResult {
        qint64 cleaned = 0;              ///< items, not files in them
        quint64 freedBytes = 0;          ///< quarantine: measured at the move; for good: as scanned
        QStringList failed;              ///< paths that were refused or could not be removed
        QHash<QString, QString> reasons; ///< of those, for the user
        qint64 alongside = 0;            ///< further items that are gone, since they lay in others
        qint64 notReached = 0;           ///< items that a stop came before
        /// For good alone: something is gone, be it a part of what failed.
        bool isSpaceFreed = false;
    };

    /// All have to outlive this.
    CleanerService(Host& host, AppSettings& settings, ActivityTracker& tracker,
                   const SafetyChecker& safety, QuarantineProvider& quarantine);
    static std::unique_ptr<CleanerService> make(Composition& composition);
    /// Stops and waits for the item that is being dealt with.
    ~CleanerService() override;

    [[nodiscard]] const std::vector<std::shared_ptr<CleanerCategory>>& categories() const
    {
        return m_categories;
    }
    [[nodiscard]] bool isScanning() const { return m_isScanning; }
    [[nodiscard]] bool scanComplete() const { return m_scanComplete; }
    // Sums over the categories, in bytes and items.
    [[nodiscard]] quint64 totalSize() const;
    [[nodiscard]] quint64 selectedSize() const;
    [[nodiscard]] qint64 selectedCount() const;
    /// Of a removal; none while there is none.
    [[nodiscard]] const std::optional<CleanProgress>& progress() const { return m_progress; }

    /// Starts anew and returns at once. Nothing happens during a removal.
    void scanAll();
    /// Ends a scan; what it has found so far stays.
    void stopScan();

    /// What is selected at this moment, for a question whose answer is to be about nothing else.
    [[nodiscard]] CleaningPlan selection() const;
    /// Removes what was selected, category after category. What is deselected or excluded before
    /// the removal comes to it stays; the quarantine takes a category at once. Only one removal
    /// runs at a time: another one gives an empty result. Both end with what they have done when
    /// this goes.
    QCoro::Task<CleanResult> cleanSelected(CleaningPlan selected);
    QCoro::Task<CleanResult> cleanSelected() { return cleanSelected(selection()); }
    QCoro::Task<CleanResult> cleanSelectedPermanently(CleaningPlan selected);
    QCoro::Task<CleanResult> cleanSelectedPermanently()
    {
        return cleanSelectedPermanently(selection());
    }
    /// Ends the removal after the item that it is at, on the way to the quarantine after the
    /// category, which goes there as a whole; what it has not come to stays listed.
    void stopCleaning();

    /// Takes `path` out of this and all later scans, by the user's exclusions, and out of a removal
    /// that has not come to it; the quarantine comes to a category at once.
    void exclude(const QString& path);

Q_SIGNALS:
    /// There are other categories, or fewer.
    void categoriesChanged();
    /// Sums or selections of some category have changed.
    void totalsChanged();
    void isScanningChanged();
    void scanCompleteChanged();
    void progressChanged();

private:
    enum class Route { Quarantine, ForGood };
    using Type = CleanerCategory::CategoryType;
    /// What became of one category's share in a removal.
    struct PartResult {
        CleanResult result;
        QSet<QString> gone;      ///< paths
        std::size_t reached = 0; ///< entries
    };

    QCoro::Task<> doScan(std::stop_token stop);
    void dropEmptyCategories();
    void setScanning(bool isScanning);
    void setProgress(const std::optional<CleanProgress>& progress);
    [[nodiscard]] std::shared_ptr<CleanerCategory> category(Type type) const;
    void addCategory(Type type);

    QCoro::Task<CleanResult> clean(Route route, CleaningPlan selected);
    QCoro::Task<PartResult> quarantinePart(CleaningPlan::Part part);
    QCoro::Task<PartResult> removePart(CleaningPlan::Part part);
    QCoro::Task<> forgetWhatIsGone(QSet<QString> gone);
    void failIfStillSelected(CleanResult& result, Type type, const QUuid& item) const;

    Host& m_host;
    AppSettings& m_settings;
    ActivityTracker& m_tracker;
    const SafetyChecker& m_safety;
    QuarantineProvider& m_quarantine;
    std::vector<std::shared_ptr<CleanerCategory>> m_categories;
    bool m_isScanning = false;
    bool m_scanComplete = false;
    std::optional<CleanProgress> m_progress;
    std::stop_source m_scan;
    std::stop_source m_removal;
    std::shared_ptr<KeptBack> m_keptBack; ///< of a removal; null while there is none
    QSet<QString> m_gone; ///< paths that went since the scan began: a scanner may have seen them
    Worker m_scanner{QStringLiteral("cleaner scan")};
    Worker m_remover{QStringLiteral("cleaner removal")};
};

} // namespace brivane
