// How CleanerService removes what is selected.

#include "cleaner/CleanProgressRelay.h"
#include "cleaner/CleanerService.h"
#include "cleaner/KeptBack.h"
#include "core/AppSettings.h"
#include "core/ByteFormatter.h"
#include "core/Log.h"
#include "core/NotificationNames.h"
#include "core/Publish.h"
#include "platform/Host.h"
#include "removal/QuarantineProvider.h"
#include "removal/SafetyChecker.h"

#include <QCoroFuture>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

using Part = CleaningPlan::Part;

/// What became of the removal of a part: why each that is still there is, and how far it came.
struct PartRemoval {
    QHash<QString, QString> failed;
    QSet<QUuid> kept; ///< back, by the user
    std::size_t reached = 0;
    bool isSpaceFreed = false; ///< also by a part of what failed
};

/// Why not all of an item is gone, for the user.
QString reasonOf(const RemovalReport& report, const QString& path, const Locations& locations)
{
    const FileError& first = report.failures.front();
    return first.path == path ? first.reason() : first.text(locations);
}

PartRemoval removeItems(const Part& part, Host& host, CleanProgress progress,
                        CleanProgressRelay& relay, const KeptBack& keptBack,
                        const std::stop_token& stop)
{
    PartRemoval removal;
    for (const CleaningPlan::Entry& entry : part.entries) {
        if (stop.stop_requested())
            break;
        if (keptBack.holds(entry, host.locations.home())) {
            removal.kept.insert(entry.id);
            ++removal.reached;
            ++progress.completed;
            continue;
        }
        progress.name = entry.name;
        relay.tell(progress);
        ++removal.reached;
        ++progress.completed;
        const RemovalReport report = host.fileSystem.removeItem(entry.path, entry.identity);
        removal.isSpaceFreed = removal.isSpaceFreed || report.removed > 0;
        if (report.isComplete()) {
            progress.bytesProcessed += entry.size;
            continue;
        }
        removal.failed.insert(entry.path, reasonOf(report, entry.path, host.locations));
        Log::cleaner.error(
            u"Failed to delete %1: %2"_s.arg(entry.path, report.failures.front().reason()));
    }
    return removal;
}

void fail(CleanerService::CleanResult& result, const QString& path, const QString& reason)
{
    result.failed += path;
    result.reasons.insert(path, reason);
}

} // namespace

QCoro::Task<CleanerService::CleanResult> CleanerService::cleanSelected(CleaningPlan selected)
{
    return clean(Route::Quarantine, std::move(selected));
}

QCoro::Task<CleanerService::CleanResult>
CleanerService::cleanSelectedPermanently(CleaningPlan selected)
{
    return clean(Route::ForGood, std::move(selected));
}

void CleanerService::stopCleaning()
{
    m_removal.request_stop();
}

CleaningPlan CleanerService::selection() const
{
    CleaningPlan plan;
    for (const auto& category : m_categories) {
        Part part{.type = category->type()};
        for (const CleanerItem& item : category->items()) {
            if (item.isSelected)
                part.entries.push_back({item.id, item.name, item.path, item.size, item.identity});
        }
        if (!part.entries.empty())
            plan.parts.push_back(std::move(part));
    }
    return plan;
}

QCoro::Task<CleanerService::CleanResult> CleanerService::clean(Route route, CleaningPlan selected)
{
    CleanResult result;
    if (m_progress)
        co_return result;
    const QPointer<CleanerService> self(this);
    const bool isForGood = route == Route::ForGood;
    const QString start = isForGood ? u"Starting permanent cleanup of %1 items (%2)"_s
                                    : u"Starting cleanup of %1 items (%2) via quarantine"_s;
    Log::cleaner.info(start.arg(selected.count()).arg(ByteFormatter::format(selected.size())));
    m_removal = std::stop_source();
    m_keptBack = std::make_shared<KeptBack>();
    const std::stop_token stop = m_removal.get_token();
    setProgress(CleanProgress{.total = selected.count()});

    const QFuture<CleaningPlan> planning =
        m_remover.run([selected = std::move(selected), safety = m_safety,
                       excluded = m_settings.excludedPaths(), home = m_host.locations.home()] {
            return makeCleaningPlan(selected, safety, excluded, home);
        });
    const CleaningPlan plan = co_await planning;
    if (!self)
        co_return result;
    setProgress(CleanProgress{.total = plan.count()});
    QSet<QString> gone;
    result.notReached = plan.count();
    for (const Part& part : plan.parts) {
        if (stop.stop_requested())
            break;
        for (const CleaningPlan::Rejected& rejected : part.rejected) {
            Log::cleaner.notice(u"Safety gate rejected: "_s + rejected.path);
            fail(result, rejected.path, rejected.reason);
        }
        if (part.entries.empty())
            continue;
        QCoro::Task<PartResult> working = isForGood ? removePart(part) : quarantinePart(part);
        const PartResult done = co_await working;
        result.cleaned += done.result.cleaned;
        result.freedBytes += done.result.freedBytes;
        result.failed += done.result.failed;
        result.reasons.insert(done.result.reasons);
        result.isSpaceFreed = result.isSpaceFreed || done.result.isSpaceFreed;
        result.notReached -= static_cast<qint64>(done.reached);
        gone.unite(done.gone);
        if (!self)
            co_return result;
    }
    for (const Part& part : plan.parts)
        result.alongside += std::ranges::count_if(
            part.alongside, [&](const QString& path) { return isIn(gone, path); });
    QCoro::Task<> forgetting = forgetWhatIsGone(gone);
    co_await forgetting;
    if (!self)
        co_return result;
    dropEmptyCategories();
    m_keptBack.reset();
    setProgress({});
    if (result.isSpaceFreed)
        m_host.notifications.post(NotificationNames::diskSpaceChanged);
    const QString end = isForGood ? u"Permanent cleanup done: %1 items, %2 freed, %3 failed"_s
                                  : u"Cleanup done: %1 items quarantined, %2 freed, %3 failed"_s;
    Log::cleaner.info(end.arg(result.cleaned)
                          .arg(ByteFormatter::format(result.freedBytes))
                          .arg(result.failed.size()));
    co_return result;
}

QCoro::Task<CleanerService::PartResult> CleanerService::quarantinePart(Part part)
{
    PartResult done;
    CleanResult& result = done.result;
    const QPointer<CleanerService> self(this);
    CleanProgress progress = m_progress.value_or(CleanProgress());
    progress.name = factsOf(part.type).displayName;
    setProgress(progress);
    QCoro::Task<QuarantineService*> opening = m_quarantine.open();
    QuarantineService* quarantine = co_await opening;
    if (!self || !quarantine)
        co_return done;
    const QFuture<QSet<QUuid>> looking =
        m_remover.run([part, keptBack = m_keptBack, home = m_host.locations.home()] {
            QSet<QUuid> kept;
            for (const CleaningPlan::Entry& entry : part.entries) {
                if (keptBack->holds(entry, home))
                    kept.insert(entry.id);
            }
            return kept;
        });
    const QSet<QUuid> kept = co_await looking;
    if (!self)
        co_return done;
    std::vector<QuarantineCandidate> candidates;
    candidates.reserve(part.entries.size());
    for (const CleaningPlan::Entry& entry : part.entries) {
        if (!kept.contains(entry.id))
            candidates.push_back({entry.path, entry.identity});
    }
    QuarantineService::HandOver handOver;
    if (!candidates.empty()) {
        QCoro::Task<QuarantineService::HandOver> handing =
            quarantine->quarantine(std::move(candidates), factsOf(part.type).displayName);
        handOver = co_await handing;
    }
    done.reached = part.entries.size();
    result.cleaned += handOver.moved;
    result.freedBytes += handOver.size;
    QSet<QUuid> moved;
    for (const CleaningPlan::Entry& entry : part.entries) {
        if (kept.contains(entry.id)) {
            if (self)
                failIfStillSelected(result, part.type, entry.id);
        } else if (handOver.movedPaths.contains(entry.path)) {
            moved.insert(entry.id);
            done.gone.insert(entry.path);
        } else {
            fail(result, entry.path, handOver.reasons.value(entry.path));
        }
    }
    if (!self)
        co_return done;
    if (const auto found = category(part.type))
        found->removeItems(moved);
    progress.completed += static_cast<qint64>(part.entries.size());
    progress.bytesProcessed += handOver.size;
    setProgress(progress);
    co_return done;
}

QCoro::Task<CleanerService::PartResult> CleanerService::removePart(Part part)
{
    PartResult done;
    CleanResult& result = done.result;
    const QPointer<CleanerService> self(this);
    const std::stop_token stop = m_removal.get_token();
    CleanProgress progress = m_progress.value_or(CleanProgress());
    const auto relay = std::make_shared<CleanProgressRelay>(
        *this, [this](const CleanProgress& now) { setProgress(now); });
    const QFuture<PartRemoval> removing =
        m_remover.run([part, &host = m_host, progress, relay, keptBack = m_keptBack, stop] {
            return removeItems(part, host, progress, *relay, *keptBack, stop);
        });
    const PartRemoval removal = co_await removing;
    done.reached = removal.reached;
    relay->end();
    result.isSpaceFreed = removal.isSpaceFreed;
    QSet<QUuid> removed;
    for (std::size_t i = 0; i < removal.reached; ++i) {
        const CleaningPlan::Entry& entry = part.entries[i];
        if (removal.kept.contains(entry.id)) {
            if (self)
                failIfStillSelected(result, part.type, entry.id);
            continue;
        }
        if (const auto failure = removal.failed.find(entry.path); failure != removal.failed.end()) {
            fail(result, entry.path, *failure);
            continue;
        }
        ++result.cleaned;
        result.freedBytes += entry.size;
        progress.bytesProcessed += entry.size;
        removed.insert(entry.id);
        done.gone.insert(entry.path);
    }
    if (!self)
        co_return done;
    if (const auto found = category(part.type))
        found->removeItems(removed);
    progress.completed += static_cast<qint64>(removal.reached);
    progress.name.clear();
    setProgress(progress);
    co_return done;
}

void CleanerService::failIfStillSelected(CleanResult& result, Type type, const QUuid& item) const
{
    const auto found = category(type);
    if (!found)
        return;
    const auto kept = std::ranges::find(found->items(), item, &CleanerItem::id);
    if (kept != found->items().end() && kept->isSelected)
        fail(result, kept->path, u"Something in it was excluded meanwhile"_s);
}

QCoro::Task<> CleanerService::forgetWhatIsGone(QSet<QString> gone)
{
    const QPointer<CleanerService> self(this);
    if (m_isScanning)
        m_gone.unite(gone);
    std::vector<std::pair<QUuid, QString>> items;
    for (const auto& category : m_categories) {
        for (const CleanerItem& item : category->items())
            items.emplace_back(item.id, item.path);
    }
    const QFuture<QSet<QUuid>> looking = m_remover.run(
        [items = std::move(items), gone = std::move(gone)] { return itemsIn(items, gone); });
    const QSet<QUuid> found = co_await looking;
    if (!self || found.isEmpty())
        co_return;
    for (const auto& category : m_categories)
        category->removeItems(found);
}

void CleanerService::setProgress(const std::optional<CleanProgress>& progress)
{
    publish(m_progress, progress, this, &CleanerService::progressChanged);
}

} // namespace brivane
