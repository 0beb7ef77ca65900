#include "removal/QuarantineService.h"

#include "core/ByteCountFormatter.h"
#include "core/NotificationNames.h"
#include "core/Publish.h"
#include "platform/PathText.h"
#include "removal/RestoreJournal.h"

#include <QCoroFuture>
#include <QPointer>

#include <cerrno>
#include <utility>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

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

QFuture<Result<>> QuarantineService::save()
{
    if (m_saver)
        return m_saver->save();
    const FileError missing{ENOENT, m_quarantineDir, FileOperation::Write};
    return QtFuture::makeReadyFuture(Result<>(missing));
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
    HandOver result;
    QCoro::Task<bool> trying = makeWritable();
    const bool isWritable = co_await trying;
    if (!self)
        co_return result;
    const QFuture<Moves> planning =
        m_planner.run([candidates = std::move(candidates), folder = m_quarantineDir,
                       home = m_host.locations.home()] {
            return QuarantineMoves::planMoves(candidates, folder, home);
        });
    const Moves moves = co_await planning;
    if (!self)
        co_return result;

    const Locations locations = m_host.locations; // for after this is gone
    const int handOver = m_handOvers++;
    QString refusal = m_readOnlyReason;
    if (!moves.empty() && isWritable) {
        QList<QuarantineItem>& announced = m_announced[handOver];
        for (const auto& move : moves)
            announced += makeItem(move.originalPath, move.quarantinePath, move.size, categoryName);
        const QFuture<Result<>> recording = save();
        const Result<> recorded = co_await recording;
        if (!self)
            co_return result;
        if (!recorded)
            refusal = u"The quarantine's list cannot be written: "_s + recorded.error().reason();
    }
    // Where there is a store, and it may not be used, nothing is moved. Where there is none, there
    // is the Trash.
    const auto use =
        m_hasFolder ? QuarantineMoves::StoreUse::Allowed : QuarantineMoves::StoreUse::TrashOnly;
    const bool isHeldBack = m_hasFolder && !refusal.isEmpty();
    const QFuture<MoveReport> moving = m_intake.run(
        [moves = isHeldBack ? Moves() : moves, journal = m_journal, &fileSystem = m_host.fileSystem,
         use] { return QuarantineMoves::moveToQuarantine(moves, *journal, fileSystem, use); });
    const MoveReport report = co_await moving;
    for (const MoveOutcome& outcome : report.outcomes) {
        if (outcome.leftBehind)
            continue;
        ++result.moved;
        result.size += outcome.size;
        result.movedPaths.insert(outcome.handedOverAs);
    }
    if (isHeldBack && !moves.empty())
        result.refusal = refusal;
    else if (report.obstacle)
        result.refusal = refusal.isEmpty() ? report.obstacle->text(locations) : refusal;
    if (!self)
        co_return result;

    QList<QuarantineItem> stored;
    for (const MoveOutcome& outcome : report.outcomes) {
        if (outcome.quarantinePath)
            stored +=
                makeItem(outcome.originalPath, *outcome.quarantinePath, outcome.size, categoryName);
    }
    m_announced.erase(handOver);
    m_items.append(stored);
    const QFuture<Result<>> saving = save();
    QString text = resultText(u"Quarantined"_s, result.moved, result.size);
    if (!result.refusal.isEmpty())
        text += u". The rest stays where it is: "_s + result.refusal;
    setLastResult(text);
    co_await saving;
    co_return result;
}

QCoro::Task<bool> QuarantineService::restore(QuarantineItem item)
{
    const QPointer<QuarantineService> self(this);
    const Processing processing(this);
    const bool isRestored = co_await putBack(std::move(item));
    if (self && isRestored) {
        const QFuture<Result<>> saved = m_saver->lastSave();
        co_await saved;
    }
    co_return isRestored;
}

/// restore() without waiting for the list to be written.
QCoro::Task<bool> QuarantineService::putBack(QuarantineItem item)
{
    const QPointer<QuarantineService> self(this);
    const Processing processing(this);
    QCoro::Task<bool> trying = makeWritable();
    const bool isWritable = co_await trying;
    if (!self)
        co_return false;
    if (!isWritable) {
        setLastResult(u"Failed to restore: "_s + m_readOnlyReason);
        co_return false;
    }
    const QFuture<Result<Moved>> moving =
        m_stored.run([item, folder = m_quarantineDir, journal = m_journal, lock = m_lock,
                      &fileSystem = m_host.fileSystem]() -> Result<Moved> {
            if (const Result<> held = lock->check(); !held)
                return held.error();
            return QuarantineMoves::moveBack(item, folder, *journal, fileSystem);
        });
    const Result<Moved> moved = co_await moving;
    const bool isRestored = moved && moved->leftBehind.empty();
    if (!self)
        co_return isRestored;
    const QString name = PathText::forDisplay(item.fileName);
    if (isRestored) {
        m_items.remove(item.id);
        (void)save();
        setLastResult(u"Restored: "_s + name);
    } else if (moved) {
        setLastResult(u"Restored: %1. Something of it stays in the quarantine: %2"_s.arg(
            name, moved->leftBehind.front().text(m_host.locations)));
    } else {
        setLastResult(u"Failed to restore: "_s + moved.error().text(m_host.locations));
    }
    co_return isRestored;
}

QCoro::Task<bool> QuarantineService::permanentlyDelete(QuarantineItem item)
{
    const QPointer<QuarantineService> self(this);
    const Processing processing(this);
    QCoro::Task<bool> trying = makeWritable();
    const bool isWritable = co_await trying;
    if (!self)
        co_return false;
    QSet<QString> removed;
    if (isWritable) {
        const QFuture<QSet<QString>> removing = startRemoval({item.quarantinePath});
        removed = co_await removing;
    }
    const bool isGone = removed.contains(item.quarantinePath);
    if (!self)
        co_return isGone;
    const QString name = PathText::forDisplay(item.fileName);
    if (!isGone) {
        setLastResult(u"Failed to delete: "_s + (isWritable ? name : m_readOnlyReason));
        co_return false;
    }
    m_items.remove(item.id);
    const QFuture<Result<>> saved = save();
    setLastResult(u"Permanently deleted: "_s + name);
    m_host.notifications.post(NotificationNames::diskSpaceChanged);
    co_await saved;
    co_return true;
}

QCoro::Task<QuarantineService::Purge> QuarantineService::purgeAll()
{
    const QPointer<QuarantineService> self(this);
    const Processing processing(this);
    Purge result;
    QCoro::Task<bool> trying = makeWritable();
    const bool isWritable = co_await trying;
    if (!self)
        co_return result;
    if (!isWritable) {
        setLastResult(u"Failed to delete: "_s + m_readOnlyReason);
        co_return result;
    }
    const QList<QuarantineItem> all = items();
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
    const QFuture<Result<>> saved = save();
    setLastResult(resultText(u"Purged"_s, result.purged, result.size));
    m_host.notifications.post(NotificationNames::diskSpaceChanged);
    setProgress({});
    co_await saved;
    co_return result;
}

QCoro::Task<> QuarantineService::restoreAll()
{
    const QPointer<QuarantineService> self(this);
    QCoro::Task<bool> trying = makeWritable();
    const bool isWritable = co_await trying;
    if (!self)
        co_return;
    if (!isWritable)
        co_return setLastResult(u"Failed to restore: "_s + m_readOnlyReason);
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
    setLastResult(u"Restored %1 items"_s.arg(restored));
    setProgress({});
    if (!m_saver)
        co_return;
    const QFuture<Result<>> saved = m_saver->lastSave();
    co_await saved;
}

QFuture<QSet<QString>> QuarantineService::startRemoval(QStringList quarantinePaths)
{
    return m_stored.run([paths = std::move(quarantinePaths), folder = m_quarantineDir,
                         lock = m_lock, &fileSystem = m_host.fileSystem] {
        return lock->check() ? QuarantineMoves::removeFiles(paths, folder, fileSystem)
                             : QSet<QString>();
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
    publish(m_lastResult, text, this, &QuarantineService::lastResultChanged);
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
