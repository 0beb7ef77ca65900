#include "removal/QuarantineService.h"

#include "core/AppSettings.h"
#include "core/ByteCountFormatter.h"
#include "core/NotificationNames.h"
#include "platform/FileWriting.h"
#include "platform/PathText.h"
#include "removal/StoreBoundary.h"

#include <QCoroFuture>
#include <QPointer>
#include <QtConcurrentRun>

#include <cerrno>
#include <filesystem>
#include <utility>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

/// The names of what lies in the store; none when that cannot be found out.
std::optional<QSet<QString>> namesIn(const QString& folder)
{
    QSet<QString> names;
    std::error_code failure;
    std::filesystem::directory_iterator entry(PathText::toBytes(folder).toStdString(), failure);
    for (; !failure && entry != end(entry); entry.increment(failure))
        names.insert(PathText::fromBytes(entry->path().filename().native()));
    return failure ? std::nullopt : std::optional(names);
}

QuarantineService* sharedService = nullptr; ///< never destroyed

QString sharedDir(const Host& host)
{
    return host.locations.path(u"~/.Brivane_Quarantine");
}

QString resultText(const QString& verb, qsizetype count, quint64 bytes)
{
    return u"%1 %2 items (%3)"_s.arg(verb).arg(count).arg(ByteCountFormatter::string(bytes));
}

} // namespace

/// Makes the service say that it is processing, for as long as it lives.
class QuarantineService::Processing {
public:
    explicit Processing(QuarantineService* service)
        : m_service(service)
    {
        if (service->m_running++ == 0)
            Q_EMIT service->isProcessingChanged();
    }
    ~Processing()
    {
        if (m_service && --m_service->m_running == 0)
            Q_EMIT m_service->isProcessingChanged();
    }
    Q_DISABLE_COPY_MOVE(Processing)

private:
    QPointer<QuarantineService> m_service;
};

QuarantineService::Contents QuarantineService::read(const QString& quarantineDir,
                                                    FileSystemProviding& fileSystem)
{
    (void)fileSystem.makeDirectory(quarantineDir, 0700);
    QThreadPool worker; // painting waits for the threads of the global pool
    const QFuture<std::optional<QSet<QString>>> listing =
        QtConcurrent::run(&worker, namesIn, quarantineDir);
    QuarantineManifest manifest(quarantineDir + u"/.manifest.json"_s, fileSystem);
    QList<QuarantineItem> items = manifest.load();
    const std::optional<QSet<QString>> names = listing.result();
    // What was recorded and never came, or is gone since. What cannot be looked for is kept.
    items.removeIf([&](const QuarantineItem& item) {
        if (!StoreBoundary::isStored(item.quarantinePath, quarantineDir))
            return true;
        if (!names || names->contains(item.quarantinePath.sliced(quarantineDir.size() + 1)))
            return false;
        const auto found = FileIdentity::of(item.quarantinePath);
        return !found && found.error().code == ENOENT;
    });
    QStringList leftovers;
    for (const QString& name : names.value_or(QSet<QString>())) {
        if (isTemporaryName(name))
            leftovers += quarantineDir + u'/' + name;
    }
    return {std::move(manifest), std::move(items), std::move(leftovers)};
}

QuarantineService::QuarantineService(Host& host, const AppSettings& settings,
                                     const QString& quarantineDir, QObject* parent)
    : QuarantineService(host, settings, quarantineDir, read(quarantineDir, host.fileSystem), parent)
{
}

QuarantineService::QuarantineService(Host& host, const AppSettings& settings, QString quarantineDir,
                                     Contents contents, QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_settings(settings)
    , m_quarantineDir(std::move(quarantineDir))
{
    m_intake.setMaxThreadCount(1);
    m_stored.setMaxThreadCount(1);
    connect(&m_items, &QuarantineItemModel::totalSizeChanged, this,
            &QuarantineService::totalSizeChanged);
    const auto purgeDays = m_settings.quarantinePurgeDays();
    for (QuarantineItem& item : contents.items)
        item.purgeDays = purgeDays;
    m_items.append(contents.items);
    m_saver = std::make_unique<ManifestSaver>(std::move(contents.manifest),
                                              [this] { return itemsToRecord(); });
    if (!contents.leftovers.isEmpty()) {
        m_stored.start([leftovers = contents.leftovers, &fileSystem = m_host.fileSystem] {
            for (const QString& path : leftovers)
                (void)fileSystem.removeItem(path);
        });
    }
    purgeExpired();
}

QuarantineService::~QuarantineService()
{
    m_intake.waitForDone();
    m_stored.waitForDone();
}

QuarantineService& QuarantineService::shared()
{
    if (!sharedService) {
        Host& host = Host::shared();
        sharedService = new QuarantineService(host, AppSettings::shared(), sharedDir(host));
    }
    return *sharedService;
}

QCoro::Task<QuarantineService*> QuarantineService::openShared()
{
    if (sharedService)
        co_return sharedService;
    Host& host = Host::shared();
    QThreadPool worker;
    const QFuture<Contents> reading =
        QtConcurrent::run(&worker, [dir = sharedDir(host), &fileSystem = host.fileSystem] {
            return read(dir, fileSystem);
        });
    Contents contents = co_await reading;
    // Somebody may have needed it at once meanwhile.
    if (!sharedService) {
        sharedService = new QuarantineService(host, AppSettings::shared(), sharedDir(host),
                                              std::move(contents));
    }
    co_return sharedService;
}

void QuarantineService::purgeExpired()
{
    constexpr double millisecondsOfDay = 86'400'000;
    const QDateTime now = m_host.clock.now();
    const double limit = static_cast<double>(m_settings.quarantinePurgeDays()) * millisecondsOfDay;
    QStringList expired;
    for (const QuarantineItem& item : items()) {
        if (static_cast<double>(item.quarantineDate.msecsTo(now)) > limit)
            expired += item.quarantinePath;
    }
    if (!expired.isEmpty())
        removeExpired(std::move(expired));
}

QCoro::Task<> QuarantineService::removeExpired(QStringList quarantinePaths)
{
    const QPointer<QuarantineService> self(this);
    const QFuture<QSet<QString>> removing = startRemoval(std::move(quarantinePaths));
    const QSet<QString> removed = co_await removing;
    if (!self)
        co_return;
    m_items.removeStored(removed);
    m_saver->save();
    m_host.notifications.post(NotificationNames::diskSpaceChanged);
}

QuarantineItem QuarantineService::makeItem(const QString& originalPath,
                                           const QString& quarantinePath, quint64 size,
                                           const QString& categoryName) const
{
    return {
        .id = QUuid::createUuid(),
        .originalPath = originalPath,
        .quarantinePath = quarantinePath,
        .size = size,
        .quarantineDate = m_host.clock.now(),
        .categoryName = categoryName,
        .fileName = PathText::lastComponent(originalPath),
    };
}

QCoro::Task<QuarantineService::HandOver> QuarantineService::quarantine(QStringList paths,
                                                                       QString categoryName)
{
    std::vector<QuarantineCandidate> candidates;
    candidates.reserve(static_cast<std::size_t>(paths.size()));
    for (const QString& path : paths)
        candidates.push_back({path});
    return quarantine(std::move(candidates), std::move(categoryName));
}

QCoro::Task<QuarantineService::HandOver>
QuarantineService::quarantine(std::vector<QuarantineCandidate> candidates, QString categoryName)
{
    using Moves = std::vector<QuarantineMoves::PlannedMove>;
    const QPointer<QuarantineService> self(this);
    const Processing processing(this);
    const QFuture<Moves> planning =
        QtConcurrent::run([candidates = std::move(candidates), folder = m_quarantineDir,
                           home = m_host.locations.home()] {
            return QuarantineMoves::planMoves(candidates, folder, home);
        });
    const Moves moves = co_await planning;
    HandOver result;
    if (!self)
        co_return result;

    const int handOver = m_handOvers++;
    if (!moves.empty()) {
        QList<QuarantineItem>& announced = m_announced[handOver];
        for (const auto& move : moves)
            announced += makeItem(move.originalPath, move.quarantinePath, move.size, categoryName);
        const QFuture<void> recorded = m_saver->save();
        co_await recorded;
        if (!self)
            co_return result;
    }
    const QFuture<QList<MoveOutcome>> moving =
        QtConcurrent::run(&m_intake, [moves, &fileSystem = m_host.fileSystem] {
            return QuarantineMoves::moveToQuarantine(moves, fileSystem);
        });
    const QList<MoveOutcome> outcomes = co_await moving;
    for (const MoveOutcome& outcome : outcomes) {
        ++result.moved;
        result.size += outcome.size;
        result.movedPaths.insert(outcome.originalPath);
    }
    if (!self)
        co_return result;

    QList<QuarantineItem> stored;
    for (const MoveOutcome& outcome : outcomes) {
        if (outcome.quarantinePath)
            stored +=
                makeItem(outcome.originalPath, *outcome.quarantinePath, outcome.size, categoryName);
    }
    m_announced.erase(handOver);
    m_items.append(stored);
    const QFuture<void> saved = m_saver->save();
    setLastResult(resultText(u"Quarantined"_s, outcomes.size(), result.size));
    co_await saved;
    co_return result;
}

QCoro::Task<bool> QuarantineService::restore(QuarantineItem item)
{
    const QPointer<QuarantineService> self(this);
    const Processing processing(this);
    const bool isRestored = co_await putBack(std::move(item));
    if (self && isRestored) {
        const QFuture<void> saved = m_saver->lastSave();
        co_await saved;
    }
    co_return isRestored;
}

/// restore() without waiting for the list to be written.
QCoro::Task<bool> QuarantineService::putBack(QuarantineItem item)
{
    const QPointer<QuarantineService> self(this);
    const Processing processing(this);
    const QFuture<Result<Moved>> moving = QtConcurrent::run(
        &m_stored, [from = item.quarantinePath, to = item.originalPath, folder = m_quarantineDir,
                    home = m_host.locations.home(), &fileSystem = m_host.fileSystem] {
            return QuarantineMoves::moveBack(from, to, folder, home, fileSystem);
        });
    const Result<Moved> moved = co_await moving;
    if (!self)
        co_return bool(moved);
    if (moved) {
        m_items.remove(item.id);
        m_saver->save();
        setLastResult(u"Restored: "_s + PathText::forDisplay(item.fileName));
    } else {
        setLastResult(u"Failed to restore: "_s + moved.error().text());
    }
    co_return bool(moved);
}

QCoro::Task<bool> QuarantineService::permanentlyDelete(QuarantineItem item)
{
    const QPointer<QuarantineService> self(this);
    const Processing processing(this);
    const QFuture<QSet<QString>> removing = startRemoval({item.quarantinePath});
    const QSet<QString> removed = co_await removing;
    const bool isGone = removed.contains(item.quarantinePath);
    if (!self)
        co_return isGone;
    const QString name = PathText::forDisplay(item.fileName);
    if (!isGone) {
        setLastResult(u"Failed to delete: "_s + name);
        co_return false;
    }
    m_items.remove(item.id);
    const QFuture<void> saved = m_saver->save();
    setLastResult(u"Permanently deleted: "_s + name);
    m_host.notifications.post(NotificationNames::diskSpaceChanged);
    co_await saved;
    co_return true;
}

QCoro::Task<QuarantineService::Purge> QuarantineService::purgeAll()
{
    const QPointer<QuarantineService> self(this);
    const Processing processing(this);
    const QList<QuarantineItem> all = items();
    Purge result;
    OperationProgress progress{.label = u"Deleting"_s, .total = all.size()};
    setProgress(progress);
    for (const QuarantineItem& item : all) {
        const QFuture<QSet<QString>> removing = startRemoval({item.quarantinePath});
        const QSet<QString> removed = co_await removing;
        if (!self)
            co_return result;
        if (removed.contains(item.quarantinePath)) {
            ++result.purged;
            result.size += item.size;
            m_items.remove(item.id);
        }
        ++progress.completed;
        progress.bytesProcessed = result.size;
        setProgress(progress);
    }
    const QFuture<void> saved = m_saver->save();
    setLastResult(resultText(u"Purged"_s, result.purged, result.size));
    m_host.notifications.post(NotificationNames::diskSpaceChanged);
    setProgress({});
    co_await saved;
    co_return result;
}

QCoro::Task<> QuarantineService::restoreAll()
{
    const QPointer<QuarantineService> self(this);
    const QList<QuarantineItem> all = items();
    qsizetype restored = 0;
    OperationProgress progress{.label = u"Restoring"_s, .total = all.size()};
    setProgress(progress);
    for (const QuarantineItem& item : all) {
        const bool isRestored = co_await putBack(item);
        if (!self)
            co_return;
        if (isRestored) {
            ++restored;
            progress.bytesProcessed += item.size;
        }
        ++progress.completed;
        setProgress(progress);
    }
    const QFuture<void> saved = m_saver->lastSave();
    setLastResult(u"Restored %1 items"_s.arg(restored));
    setProgress({});
    co_await saved;
}

QFuture<QSet<QString>> QuarantineService::startRemoval(QStringList quarantinePaths)
{
    return QtConcurrent::run(&m_stored,
                             [paths = std::move(quarantinePaths), folder = m_quarantineDir,
                              &fileSystem = m_host.fileSystem] {
                                 return QuarantineMoves::removeFiles(paths, folder, fileSystem);
                             });
}

QList<QuarantineItem> QuarantineService::itemsToRecord() const
{
    QList<QuarantineItem> all = items();
    for (const auto& [handOver, announced] : m_announced)
        all += announced;
    return all;
}

void QuarantineService::setLastResult(const QString& text)
{
    if (text == m_lastResult)
        return;
    m_lastResult = text;
    Q_EMIT lastResultChanged();
}

void QuarantineService::setProgress(const std::optional<OperationProgress>& progress)
{
    m_progress = progress;
    Q_EMIT progressChanged();
}

QVariant QuarantineService::progressVariant() const
{
    return m_progress ? QVariant::fromValue(*m_progress) : QVariant();
}

} // namespace brivane
