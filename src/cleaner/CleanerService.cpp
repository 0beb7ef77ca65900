#include "cleaner/CleanerService.h"

#include "cleaner/CategoryScanner.h"
#include "cleaner/KeptBack.h"
#include "core/ActivityTracker.h"
#include "core/AppSettings.h"
#include "core/ByteFormatter.h"
#include "core/Composition.h"
#include "core/Log.h"
#include "core/Publish.h"
#include "platform/Host.h"
#include "platform/LiesIn.h"
#include "platform/StandardizedPath.h"
#include "removal/QuarantineProvider.h"
#include "removal/SafetyChecker.h"

#include <QCoroFuture>
#include <QPointer>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

using Items = std::vector<CleanerItem>;

/// Without what is excluded, largest first; equals stay as the scanner had them.
void prepare(Items& items, const QStringList& excluded, const QString& home)
{
    if (!excluded.isEmpty()) {
        std::erase_if(items, [&](const CleanerItem& item) {
            const QString path = standardizedPath(item.path, home);
            return std::ranges::any_of(excluded, [&](const QString& e) { return liesIn(path, e); });
        });
    }
    std::ranges::stable_sort(items, std::ranges::greater(), &CleanerItem::size);
}

} // namespace

CleanerService::CleanerService(Host& host, AppSettings& settings, ActivityTracker& tracker,
                               const SafetyChecker& safety, QuarantineProvider& quarantine)
    : m_host(host)
    , m_settings(settings)
    , m_tracker(tracker)
    , m_safety(safety)
    , m_quarantine(quarantine)
{
    connect(&settings, &AppSettings::excludedPathsChanged, this, [this] {
        if (m_keptBack)
            m_keptBack->setExcluded(m_settings.excludedPaths());
    });
}

CleanerService::~CleanerService()
{
    m_scan.request_stop();
    m_removal.request_stop();
    m_tracker.setInactive(ActivityTracker::smartClean);
}

std::unique_ptr<CleanerService> CleanerService::make(Composition& composition)
{
    return std::make_unique<CleanerService>(
        composition.host(), composition.get<AppSettings>(), composition.get<ActivityTracker>(),
        composition.get<SafetyChecker>(), composition.get<QuarantineProvider>());
}

quint64 CleanerService::totalSize() const
{
    return std::accumulate(
        m_categories.begin(), m_categories.end(), quint64(0),
        [](quint64 sum, const auto& category) { return sum + category->totalSize(); });
}

quint64 CleanerService::selectedSize() const
{
    return std::accumulate(
        m_categories.begin(), m_categories.end(), quint64(0),
        [](quint64 sum, const auto& category) { return sum + category->selectedSize(); });
}

qint64 CleanerService::selectedCount() const
{
    return std::accumulate(
        m_categories.begin(), m_categories.end(), qint64(0),
        [](qint64 sum, const auto& category) { return sum + category->selectedCount(); });
}

void CleanerService::scanAll()
{
    if (m_progress)
        return;
    stopScan();
    setScanning(true);
    publish(m_scanComplete, false, this, &CleanerService::scanCompleteChanged);
    m_categories.clear();
    Q_EMIT categoriesChanged();
    Q_EMIT totalsChanged();
    Log::cleaner.info(u"Starting cleaner scan"_s);
    m_gone.clear();
    m_scan = std::stop_source();
    doScan(m_scan.get_token());
}

QCoro::Task<> CleanerService::doScan(std::stop_token stop)
{
    const QPointer<CleanerService> self(this);
    const CategoryScanner::Settings settings{m_host.clock.now(), m_settings.oldFileAgeDays()};
    const auto scanner = std::make_shared<const CategoryScanner>(m_host, settings, stop);
    const QFuture<std::vector<Type>> looking =
        m_scanner.run([scanner] { return scanner->baseCategoriesHere(); });
    const QFuture<std::vector<Type>> detecting =
        m_scanner.run([scanner] { return scanner->detectDeveloperCategories(); });
    std::vector<Type> types = co_await looking;
    const std::vector<Type> tools = co_await detecting;
    if (!self || stop.stop_requested())
        co_return;
    types.insert(types.end(), tools.begin(), tools.end());
    if (!tools.empty()) {
        QStringList names;
        for (const Type type : tools)
            names += factsOf(type).rawValue;
        Log::cleaner.info(u"Detected developer tools: "_s + names.join(u", "));
    }
    for (const Type type : types)
        addCategory(type);
    Q_EMIT categoriesChanged();

    // All wait in line at once, so that no scan waits for this thread to show the one before.
    const QStringList excluded = m_settings.excludedPaths();
    std::vector<QFuture<std::shared_ptr<Items>>> scans;
    for (const Type type : types) {
        scans.push_back(m_scanner.run([scanner, type, excluded, home = m_host.locations.home()] {
            auto items = std::make_shared<Items>(scanner->scanCategory(type));
            prepare(*items, excluded, home);
            return items;
        }));
    }
    for (std::size_t i = 0; i < types.size(); ++i) {
        const Type type = types[i];
        const QFuture<std::shared_ptr<Items>> scanning = scans[i];
        const std::shared_ptr<Items> items = co_await scanning;
        if (!self || stop.stop_requested())
            co_return;
        if (const QStringList now = m_settings.excludedPaths(); now != excluded) {
            std::erase_if(*items, [&](const CleanerItem& item) {
                return std::ranges::any_of(
                    now, [&](const QString& path) { return liesIn(item.path, path); });
            });
        }
        if (!m_gone.isEmpty()) {
            std::erase_if(*items, [&](const CleanerItem& item) { return isIn(m_gone, item.path); });
        }
        const std::shared_ptr<CleanerCategory> found = category(type);
        if (!found)
            continue;
        const bool isPreselected =
            !items->empty() && found->riskLevel() == CleanerCategory::RiskLevel::safe;
        found->setItems(std::move(*items), isPreselected);
        found->setScanning(false);
        Log::cleaner.info(u"Category %1: %2 items, %3"_s.arg(factsOf(type).rawValue)
                              .arg(found->items().size())
                              .arg(ByteFormatter::format(found->totalSize())));
    }
    if (!self || stop.stop_requested()) // by who heard of the last of them
        co_return;
    dropEmptyCategories();
    // In this order, since neither would be the state before a first scan.
    publish(m_scanComplete, true, this, &CleanerService::scanCompleteChanged);
    setScanning(false);
    Log::cleaner.info(u"Cleaner scan complete: %1 categories, %2 total"_s.arg(m_categories.size())
                          .arg(ByteFormatter::format(totalSize())));
}

void CleanerService::stopScan()
{
    m_scan.request_stop();
    // What was not looked at any more has found nothing.
    for (const auto& category : m_categories)
        category->setScanning(false);
    dropEmptyCategories();
    if (!m_categories.empty())
        publish(m_scanComplete, true, this, &CleanerService::scanCompleteChanged);
    setScanning(false);
    Log::cleaner.notice(u"Cleaner scan stopped"_s);
}

void CleanerService::exclude(const QString& path)
{
    m_settings.addExcludedPath(path);
    for (const auto& category : m_categories) {
        QSet<QUuid> excluded;
        for (const CleanerItem& item : category->items()) {
            if (liesIn(item.path, path))
                excluded.insert(item.id);
        }
        category->removeItems(excluded);
    }
    dropEmptyCategories();
}

void CleanerService::addCategory(Type type)
{
    const auto deleteLater = [](CleanerCategory* category) { category->deleteLater(); };
    const std::shared_ptr<CleanerCategory> category(new CleanerCategory(type), deleteLater);
    category->setScanning(true);
    connect(category.get(), &CleanerCategory::itemsChanged, this, &CleanerService::totalsChanged);
    connect(category.get(), &CleanerCategory::selectionChanged, this,
            &CleanerService::totalsChanged);
    connect(category.get(), &CleanerCategory::selectionChanged, this,
            [this, raw = category.get()](int first, int last) {
                for (int at = first; m_keptBack && at <= last; ++at) {
                    const CleanerItem& item = raw->items()[static_cast<std::size_t>(at)];
                    m_keptBack->setSelected(item.id, item.isSelected);
                }
            });
    m_categories.push_back(category);
}

std::shared_ptr<CleanerCategory> CleanerService::category(Type type) const
{
    const auto found = std::ranges::find(m_categories, type, &CleanerCategory::type);
    return found == m_categories.end() ? nullptr : *found;
}

void CleanerService::dropEmptyCategories()
{
    const auto dropped = std::erase_if(m_categories, [](const auto& category) {
        return category->items().empty() && !category->isScanning();
    });
    if (dropped > 0)
        Q_EMIT categoriesChanged();
}

void CleanerService::setScanning(bool isScanning)
{
    if (isScanning)
        m_tracker.setActive(ActivityTracker::smartClean);
    else
        m_tracker.setInactive(ActivityTracker::smartClean);
    publish(m_isScanning, isScanning, this, &CleanerService::isScanningChanged);
}

} // namespace brivane
