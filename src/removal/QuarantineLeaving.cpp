// How things leave the quarantine: back to their place, or for good.

#include "core/AppSettings.h"
#include "core/NotificationNames.h"
#include "platform/PathText.h"
#include "removal/QuarantineProcessing.h"
#include "removal/RestoreJournal.h"

#include <QCoroFuture>

using namespace Qt::StringLiterals;

namespace brivane {

QCoro::Task<bool> QuarantineService::restore(QuarantineItem item)
{
    const QPointer<QuarantineService> self(this);
    const Processing processing(this);
    QCoro::Task<bool> puttingBack = putBack(std::move(item));
    const bool isRestored = co_await puttingBack;
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
        QCoro::Task<bool> puttingBack = putBack(item);
        const bool isRestored = co_await puttingBack;
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
    (void)save();
    m_host.notifications.post(NotificationNames::diskSpaceChanged);
}

} // namespace brivane
