#pragma once

#include "cleaner/CleanResultViewModel.h"
#include "cleaner/CleanerCategoryListModel.h"
#include "cleaner/CleanerDetailViewModel.h"
#include "cleaner/CleanerService.h"
#include "platform/Worker.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace brivane {

class AppSettings;
class CleanupHistory;
class Composition;
struct Host;

/// The rules of Smart Clean's screen: which of its pages there is to see, which category is looked
/// at, what is asked before a removal and told afterwards. GUI thread; what looks at running
/// programs or at the disk does so on a worker.
///
/// A removal that was started goes on when the screen goes, and its result waits for the screen.
class CleanerViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application brings it")
    /// See CleanerCategoryListModel.
    Q_PROPERTY(QAbstractItemModel* categories READ categories CONSTANT)
    Q_PROPERTY(brivane::CleanerDetailViewModel* detail READ detail CONSTANT)
    /// Nothing was scanned yet.
    Q_PROPERTY(bool isWelcome READ isWelcome NOTIFY scanChanged)
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY scanChanged)
    /// A scan has ended, and there is nothing to remove.
    Q_PROPERTY(bool isClean READ isClean NOTIFY scanChanged)
    Q_PROPERTY(QString headerText READ headerText NOTIFY totalsChanged)
    Q_PROPERTY(QString totalSizeText READ totalSizeText NOTIFY totalsChanged)
    Q_PROPERTY(QString selectedSizeText READ selectedSizeText NOTIFY totalsChanged)
    Q_PROPERTY(bool canRemove READ canRemove NOTIFY totalsChanged)
    /// The raw value of the type that the detail pane is for; it may have no items by now.
    Q_PROPERTY(QString selectedCategory READ selectedCategory NOTIFY selectedCategoryChanged)

    Q_PROPERTY(bool isCleaning READ isCleaning NOTIFY progressChanged)
    Q_PROPERTY(bool isStopping READ isStopping NOTIFY progressChanged)
    Q_PROPERTY(QString progressText READ progressText NOTIFY progressChanged)
    Q_PROPERTY(QString progressDetail READ progressDetail NOTIFY progressChanged)
    Q_PROPERTY(double progressFraction READ progressFraction NOTIFY progressChanged)

    Q_PROPERTY(bool showCleanConfirmation READ showCleanConfirmation WRITE setShowCleanConfirmation
                   NOTIFY showCleanConfirmationChanged)
    Q_PROPERTY(QString confirmTitle READ confirmTitle NOTIFY totalsChanged)
    Q_PROPERTY(QString confirmText READ confirmText NOTIFY totalsChanged)
    /// Empty while no running application is known to be affected.
    Q_PROPERTY(QString runningWarning READ runningWarning NOTIFY runningAffectedAppsChanged)
    Q_PROPERTY(QString restoreText READ restoreText NOTIFY showCleanConfirmationChanged)

    Q_PROPERTY(bool showResult READ showResult NOTIFY showResultChanged)
    /// Of the last removal, until it was read; null where there is none.
    Q_PROPERTY(brivane::CleanResultViewModel* result READ result NOTIFY resultChanged)

public:
    /// All have to outlive this.
    CleanerViewModel(Host& host, CleanerService& service, const AppSettings& settings,
                     const CleanupHistory& history, QObject* parent = nullptr);
    static std::unique_ptr<CleanerViewModel> make(Composition& composition);
    ~CleanerViewModel() override;

    /// The screen comes up: it starts without a question and without a filter.
    Q_INVOKABLE void enter();

    Q_INVOKABLE void scanAll();
    Q_INVOKABLE void stopScan() { m_service.stopScan(); }
    /// Shows the items of a category, by its type's raw value.
    Q_INVOKABLE void selectCategory(const QString& type);
    /// Selects all items of a category, or none when all are.
    Q_INVOKABLE void toggleCategory(const QString& type);
    /// Where a category is listed; -1 where it is not.
    [[nodiscard]] Q_INVOKABLE int rowOf(const QString& type) const;

    Q_INVOKABLE void reveal(const QString& path);
    Q_INVOKABLE void copyPath(const QString& path);
    /// Excludes it from this and all later scans.
    Q_INVOKABLE void neverTouch(const brivane::CleanerItem& item);

    /// The two answers of the confirmation.
    Q_INVOKABLE void moveToQuarantine() { clean(this, CleanRoute::quarantine); }
    Q_INVOKABLE void deletePermanently() { clean(this, CleanRoute::permanent); }
    Q_INVOKABLE void stopCleaning();
    /// The result was read.
    Q_INVOKABLE void dismissResult();

    [[nodiscard]] CleanerCategoryListModel* categories() { return &m_categories; }
    [[nodiscard]] CleanerDetailViewModel* detail() { return &m_detail; }
    [[nodiscard]] bool isWelcome() const;
    [[nodiscard]] bool isScanning() const { return m_service.isScanning(); }
    [[nodiscard]] bool isClean() const;
    [[nodiscard]] QString headerText() const;
    [[nodiscard]] QString totalSizeText() const;
    [[nodiscard]] QString selectedSizeText() const;
    [[nodiscard]] bool canRemove() const;
    [[nodiscard]] const QString& selectedCategory() const { return m_selectedCategory; }
    [[nodiscard]] bool isCleaning() const;
    [[nodiscard]] bool isStopping() const { return m_isStopping && isCleaning(); }
    [[nodiscard]] QString progressText() const;
    [[nodiscard]] QString progressDetail() const;
    [[nodiscard]] double progressFraction() const;
    [[nodiscard]] bool showCleanConfirmation() const { return m_showCleanConfirmation; }
    void setShowCleanConfirmation(bool isShown);
    [[nodiscard]] QString confirmTitle() const;
    [[nodiscard]] QString confirmText() const;
    /// Names of running applications that the selection touches, as of the confirmation's opening.
    [[nodiscard]] const QStringList& runningAffectedApps() const { return m_runningAffectedApps; }
    [[nodiscard]] QString runningWarning() const;
    [[nodiscard]] QString restoreText() const;
    [[nodiscard]] bool showResult() const { return m_result != nullptr; }
    [[nodiscard]] CleanResultViewModel* result() const { return m_result.get(); }

Q_SIGNALS:
    void scanChanged();
    void totalsChanged();
    void selectedCategoryChanged();
    void progressChanged();
    void showCleanConfirmationChanged();
    void runningAffectedAppsChanged();
    void showResultChanged();
    void resultChanged();

private:
    void followCategories();
    [[nodiscard]] CategorySizes capturePreCleanSnapshot() const;
    static QCoro::Task<> detectRunningAffectedApps(QPointer<CleanerViewModel> self);
    static QCoro::Task<> clean(QPointer<CleanerViewModel> self, CleanRoute route);
    void finishCleaning(const CleanerService::CleanResult& result, CleanRoute route,
                        CategorySizes selected);
    static QCoro::Task<> lookAtDisk(QPointer<CleanerViewModel> self,
                                    QPointer<CleanResultViewModel> result);
    static QCoro::Task<> lookForSnapshots(Locations locations,
                                          QPointer<CleanResultViewModel> result);

    Host& m_host;
    CleanerService& m_service;
    const AppSettings& m_settings;
    const CleanupHistory& m_history;
    CleanerCategoryListModel m_categories;
    CleanerDetailViewModel m_detail;
    QString m_selectedCategory;
    CleanRoute m_route = CleanRoute::quarantine; ///< of the last removal
    bool m_isCleaning = false;
    bool m_isStopping = false;
    bool m_showCleanConfirmation = false;
    CleaningPlan m_asked;   ///< what the confirmation is about, whatever is selected meanwhile
    int m_confirmation = 0; ///< which one this is, so that no answer comes to a later one
    QStringList m_runningAffectedApps;
    std::unique_ptr<CleanResultViewModel> m_result;
    Worker m_worker; ///< last, so that it ends first
};

} // namespace brivane
