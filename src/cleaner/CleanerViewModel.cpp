#include "cleaner/CleanerViewModel.h"

#include "cleaner/RunningAffectedApps.h"
#include "core/AppSettings.h"
#include "core/ByteFormatter.h"
#include "core/Composition.h"
#include "core/LocalSnapshots.h"
#include "core/Publish.h"
#include "platform/Host.h"
#include "platform/PathText.h"
#include "platform/Volumes.h"
#include "removal/CleanupHistory.h"

#include <QCoroFuture>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace brivane {

CleanerViewModel::CleanerViewModel(Host& host, CleanerService& service, const AppSettings& settings,
                                   const CleanupHistory& history, QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_service(service)
    , m_settings(settings)
    , m_history(history)
    , m_detail(host.locations)
    , m_worker(u"clean screen"_s)
{
    connect(&service, &CleanerService::categoriesChanged, this,
            &CleanerViewModel::followCategories);
    connect(&service, &CleanerService::totalsChanged, this, &CleanerViewModel::totalsChanged);
    for (const auto changed :
         {&CleanerService::isScanningChanged, &CleanerService::scanCompleteChanged}) {
        connect(&service, changed, this, &CleanerViewModel::scanChanged);
        connect(&service, changed, this, &CleanerViewModel::totalsChanged);
    }
    connect(&service, &CleanerService::progressChanged, this, &CleanerViewModel::progressChanged);
    connect(this, &CleanerViewModel::progressChanged, this, &CleanerViewModel::totalsChanged);
    followCategories();
}

CleanerViewModel::~CleanerViewModel() = default;

std::unique_ptr<CleanerViewModel> CleanerViewModel::make(Composition& composition)
{
    return std::make_unique<CleanerViewModel>(composition.host(), composition.get<CleanerService>(),
                                              composition.get<AppSettings>(),
                                              composition.get<CleanupHistory>());
}

void CleanerViewModel::enter()
{
    setShowCleanConfirmation(false);
    m_detail.setSearchText({});
    m_detail.setSelectedExtension({});
    m_detail.setShowLearnMore(false);
}

void CleanerViewModel::followCategories()
{
    m_categories.setCategories(m_service.categories());
    m_detail.setCategory(m_categories.find(m_selectedCategory));
    Q_EMIT scanChanged();
    Q_EMIT totalsChanged();
}

void CleanerViewModel::scanAll()
{
    if (!isCleaning())
        m_service.scanAll();
}

void CleanerViewModel::selectCategory(const QString& type)
{
    if (!publish(m_selectedCategory, type, this, &CleanerViewModel::selectedCategoryChanged))
        return;
    m_categories.setChosen(type);
    m_detail.setCategory(m_categories.find(type));
}

void CleanerViewModel::toggleCategory(const QString& type)
{
    const std::shared_ptr<CleanerCategory> category = m_categories.find(type);
    if (category && !category->items().empty())
        category->toggleAll();
}

int CleanerViewModel::rowOf(const QString& type) const
{
    return m_categories.rowOf(type);
}

void CleanerViewModel::reveal(const QString& path)
{
    m_host.workspace.reveal(path);
}

void CleanerViewModel::copyPath(const QString& path)
{
    m_host.pasteboard.setPath(path);
}

void CleanerViewModel::neverTouch(const CleanerItem& item)
{
    m_service.exclude(item.path);
}

bool CleanerViewModel::isWelcome() const
{
    return !m_service.isScanning() && !m_service.scanComplete();
}

bool CleanerViewModel::isClean() const
{
    return m_service.scanComplete() && !m_service.isScanning() && m_service.categories().empty();
}

QString CleanerViewModel::headerText() const
{
    return isScanning() ? u"Analyzing your system..."_s : totalSizeText() + u" of junk found"_s;
}

QString CleanerViewModel::totalSizeText() const
{
    return ByteFormatter::format(m_service.totalSize());
}

QString CleanerViewModel::selectedSizeText() const
{
    return ByteFormatter::format(m_service.selectedSize());
}

bool CleanerViewModel::canRemove() const
{
    return m_service.selectedCount() >= 1 && !isCleaning();
}

bool CleanerViewModel::isCleaning() const
{
    return m_isCleaning || m_service.progress().has_value();
}

QString CleanerViewModel::progressText() const
{
    const QString name = m_service.progress().value_or(CleanProgress()).name;
    if (isStopping())
        return m_route == CleanRoute::quarantine ? u"Stopping after this category..."_s
                                                 : u"Stopping after this item..."_s;
    return name.isEmpty() ? u"Removing..."_s : QString(u"Removing "_s + PathText::forDisplay(name));
}

QString CleanerViewModel::progressDetail() const
{
    const CleanProgress progress = m_service.progress().value_or(CleanProgress());
    return u"%1 of %2 · %3"_s.arg(progress.completed)
        .arg(progress.total)
        .arg(ByteFormatter::format(progress.bytesProcessed));
}

double CleanerViewModel::progressFraction() const
{
    const CleanProgress progress = m_service.progress().value_or(CleanProgress());
    if (progress.total < 1)
        return 0;
    return static_cast<double>(progress.completed) / static_cast<double>(progress.total);
}

void CleanerViewModel::stopCleaning()
{
    m_isStopping = true;
    Q_EMIT progressChanged();
    m_service.stopCleaning();
}

void CleanerViewModel::setShowCleanConfirmation(bool isShown)
{
    if (isShown == m_showCleanConfirmation || (isShown && !canRemove()))
        return;
    m_runningAffectedApps.clear();
    ++m_confirmation;
    if (isShown)
        m_asked = m_service.selection();
    publish(m_showCleanConfirmation, isShown, this,
            &CleanerViewModel::showCleanConfirmationChanged);
    Q_EMIT totalsChanged();
    Q_EMIT runningAffectedAppsChanged();
    if (isShown)
        detectRunningAffectedApps(this);
}

QString CleanerViewModel::confirmTitle() const
{
    return u"Clean %1 Items"_s.arg(m_asked.count());
}

QString CleanerViewModel::confirmText() const
{
    return ByteFormatter::format(m_asked.size()) + u" will be freed"_s;
}

QString CleanerViewModel::runningWarning() const
{
    if (m_runningAffectedApps.isEmpty())
        return {};
    return QString(u"Some selected files belong to running apps: "_s +
                   PathText::forDisplay(m_runningAffectedApps.join(u", "_s)) +
                   u". Quit them first for a complete cleanup."_s);
}

QString CleanerViewModel::restoreText() const
{
    return u"%1 days to restore before permanent deletion"_s.arg(m_settings.quarantinePurgeDays());
}

CategorySizes CleanerViewModel::capturePreCleanSnapshot() const
{
    CategorySizes sizes;
    for (const CleaningPlan::Part& part : m_asked.parts) {
        if (part.size() != 0)
            sizes.emplace_back(factsOf(part.type).rawValue, part.size());
    }
    return sizes;
}

QCoro::Task<> CleanerViewModel::detectRunningAffectedApps(QPointer<CleanerViewModel> self)
{
    const int confirmation = self->m_confirmation;
    QStringList paths;
    for (const CleaningPlan::Part& part : self->m_asked.parts) {
        for (const CleaningPlan::Entry& entry : part.entries)
            paths += entry.path;
    }
    const auto look = [paths, &workspace = self->m_host.workspace,
                       additions = self->m_host.locations.additions(u"runningApplications")] {
        return brivane::runningAffectedApps(paths, workspace.runningApplications(), additions);
    };
    const QFuture<QStringList> looking = self->m_worker.run(look);
    const QStringList names = co_await looking;
    if (!self || self->m_confirmation != confirmation)
        co_return;
    publish(self->m_runningAffectedApps, names, self.data(),
            &CleanerViewModel::runningAffectedAppsChanged);
}

QCoro::Task<> CleanerViewModel::clean(QPointer<CleanerViewModel> self, CleanRoute route)
{
    if (!self->m_showCleanConfirmation)
        co_return; // it was answered
    self->setShowCleanConfirmation(false);
    if (self->isCleaning())
        co_return;
    // Before the removal, which takes items out of the lists.
    CategorySizes selected = self->capturePreCleanSnapshot();
    self->m_route = route;
    self->m_isCleaning = true;
    self->m_isStopping = false;
    Q_EMIT self->progressChanged();
    CleanerService::CleanResult result;
    if (route == CleanRoute::quarantine) {
        QCoro::Task<CleanerService::CleanResult> removing =
            self->m_service.cleanSelected(self->m_asked);
        result = co_await removing;
    } else {
        QCoro::Task<CleanerService::CleanResult> removing =
            self->m_service.cleanSelectedPermanently(self->m_asked);
        result = co_await removing;
    }
    if (self)
        self->finishCleaning(result, route, std::move(selected));
}

void CleanerViewModel::finishCleaning(const CleanerService::CleanResult& result, CleanRoute route,
                                      CategorySizes selected)
{
    m_isCleaning = false;
    m_isStopping = false;
    Q_EMIT progressChanged();

    CleanupRecord record{.date = m_host.clock.now(),
                         .filesRemoved = result.cleaned,
                         .bytesFreed = result.freedBytes};
    for (const QString& path : result.failed)
        record.categories.insert(path, 0);
    m_history.save(record);

    m_result = std::make_unique<CleanResultViewModel>(
        result, route, std::move(selected), m_settings.quarantinePurgeDays(), m_host.locations);
    Q_EMIT resultChanged();
    Q_EMIT showResultChanged();
    lookAtDisk(this, m_result.get());
    lookForSnapshots(m_host.locations, m_result.get());
}

QCoro::Task<> CleanerViewModel::lookAtDisk(QPointer<CleanerViewModel> self,
                                           QPointer<CleanResultViewModel> result)
{
    const auto look = [&volumes = self->m_host.volumes, home = self->m_host.locations.home()] {
        return volumes.volumeInfo(home).value_or(VolumeInfo());
    };
    const QFuture<VolumeInfo> looking = self->m_worker.run(look);
    const VolumeInfo volume = co_await looking;
    if (result)
        result->setDiskSpace(volume.totalCapacity, volume.availableCapacity);
}

QCoro::Task<> CleanerViewModel::lookForSnapshots(Locations locations,
                                                 QPointer<CleanResultViewModel> result)
{
    QCoro::Task<bool> looking = LocalSnapshots::exist(locations);
    const bool areThere = co_await looking;
    if (result)
        result->setHasLocalSnapshots(areThere);
}

void CleanerViewModel::dismissResult()
{
    if (!m_result)
        return;
    // The dialog may still be on its way out, and shows it.
    m_result.release()->deleteLater();
    Q_EMIT showResultChanged();
    Q_EMIT resultChanged();
}

} // namespace brivane
