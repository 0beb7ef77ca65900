#pragma once

#include "platform/Host.h"
#include "platform/Worker.h"
#include "removal/ManifestSaver.h"
#include "removal/QuarantineContents.h"
#include "removal/QuarantineItemModel.h"
#include "removal/QuarantineMoves.h"
#include "removal/QuarantineProgress.h"

#include <QCoroTask>
#include <QFuture>
#include <QHash>
#include <QObject>
#include <QVariant>

#include <map>

namespace brivane {

class AppSettings;
class RestoreJournal;

/// Holds what the user has removed until it is put back or gone for good.
///
/// One hidden folder in the user's home, and a manifest in it that lists what it holds. Handing
/// something over is a rename, whatever its size. GUI thread; whatever touches the disk runs on
/// workers, but for a start that had to read for itself.
///
/// A crash at any moment leaves each item at its place or listed, never lost and never both:
/// - A hand-over is recorded and synced before the first rename. A record whose file does not exist
///   is dropped at the next start, so cut off before its rename an item is at its place, cut off
///   after it it is listed. Both writes are for a whole hand-over, not for one path.
/// - Restoring renames first and saves afterwards: until the rename the item is listed, and after
///   it the record has no file. The saved list is synced in the very folder that the rename took it
///   from, so that the list cannot reach the disk before it.
/// - Removing removes first and saves afterwards: what is cut off half-way is still listed.
/// Because of this, saves may lag behind what is published; every operation ends only after its own
/// state has been written. A list that cannot be written lets nothing more in: what is in the way
/// of a hand-over stays at its place, and the result says why. What goes out goes on: memory is
/// right, and the next save tries again.
///
/// One program at a time changes a store. The first to come has its lock; for any other it is
/// read-only, and says why. Each operation, and refresh(), tries again whether it is free by now.
/// A store that is moved away or replaced meanwhile is not changed any more, nor is the new one.
///
/// Operations may be started at any time and interleave. What is in the store is worked on one item
/// after the other, on one thread, so two operations on one item never cut through each other: the
/// second finds it gone. The same goes for hand-overs among each other.
class QuarantineService : public QObject {
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel* items READ itemModel CONSTANT)
    Q_PROPERTY(quint64 totalSize READ totalSize NOTIFY totalSizeChanged)
    Q_PROPERTY(bool isProcessing READ isProcessing NOTIFY isProcessingChanged)
    Q_PROPERTY(QString lastResult READ lastResult NOTIFY lastResultChanged)
    Q_PROPERTY(QString readOnlyReason READ readOnlyReason NOTIFY readOnlyReasonChanged)
    /// Undefined when there is none.
    Q_PROPERTY(QVariant progress READ progressVariant NOTIFY progressChanged)

public:
    using OperationProgress = QuarantineProgress;
    /// What became of a hand-over.
    struct HandOver {
        qint64 moved = 0;         ///< how many left their place, those that went to the Trash too
        quint64 size = 0;         ///< bytes
        QSet<QString> movedPaths; ///< their paths, as they were handed over
        QString refusal; ///< why others, or parts of them, had to stay; null when nothing kept them
        /// Why each of the others, by its path as it was handed over, is not among these. For the
        /// user.
        QHash<QString, QString> reasons;
    };
    struct Purge {
        qint64 purged = 0;
        quint64 size = 0; ///< bytes
    };

    /// Takes over what was read of `quarantineDir`, and starts the removal of what has been there
    /// for longer than the settings say.
    QuarantineService(Host& host, const AppSettings& settings, QString quarantineDir,
                      QuarantineContents contents, QObject* parent = nullptr);
    /// Reads first, and blocks meanwhile.
    QuarantineService(Host& host, const AppSettings& settings, const QString& quarantineDir,
                      QObject* parent = nullptr);
    /// Waits for the file work that is under way; what has been moved by then is listed at the next
    /// start.
    ~QuarantineService() override;

    [[nodiscard]] const QList<QuarantineItem>& items() const { return m_items.items(); }
    /// The same as rows.
    [[nodiscard]] QuarantineItemModel* itemModel() { return &m_items; }
    /// Bytes: the sum over the items.
    [[nodiscard]] quint64 totalSize() const { return m_items.totalSize(); }
    [[nodiscard]] bool isProcessing() const { return m_running > 0; }
    /// What became of the last operation, in words; null when there was none.
    [[nodiscard]] const QString& lastResult() const { return m_lastResult; }
    /// Why the store can only be looked at, in words; null when it can be changed.
    [[nodiscard]] const QString& readOnlyReason() const { return m_readOnlyReason; }
    /// Of a bulk operation, none when none is running.
    [[nodiscard]] const std::optional<OperationProgress>& progress() const { return m_progress; }

    /// Reads a store anew that is read-only, and takes it over if it is free by now.
    QCoro::Task<> refresh();

    /// Takes things in. `categoryName` tells where they came from. What cannot be moved stays where
    /// it is and is not in the result; the whole cannot fail. See QuarantineMoves for the rest.
    QCoro::Task<HandOver> quarantine(QStringList paths, QString categoryName);
    QCoro::Task<HandOver> quarantine(std::vector<QuarantineCandidate> candidates,
                                     QString categoryName);
    /// Puts an item back where it came from, replacing nothing. Whether that worked; if not, the
    /// item stays, and the last result says why. That is so, too, where it is back but something of
    /// it could not be removed from the store: then the next call goes on with that.
    QCoro::Task<bool> restore(QuarantineItem item);
    /// Removes an item for good. Whether it is gone; if not, what is left of it stays listed.
    QCoro::Task<bool> permanentlyDelete(QuarantineItem item);
    /// The same for all items of this moment, one after the other.
    QCoro::Task<Purge> purgeAll();
    /// Puts back all items of this moment, one after the other.
    QCoro::Task<> restoreAll();

Q_SIGNALS:
    void totalSizeChanged();
    void isProcessingChanged();
    void lastResultChanged();
    void readOnlyReasonChanged();
    void progressChanged();

private:
    class Processing;
    using Opening = QFuture<std::shared_ptr<QuarantineContents>>;

    void adopt(QuarantineContents contents);
    [[nodiscard]] QCoro::Task<bool> makeWritable();
    [[nodiscard]] QFuture<Result<>> save();
    void purgeExpired();
    QCoro::Task<> removeExpired(QStringList quarantinePaths);
    [[nodiscard]] QuarantineItem makeItem(const QString& originalPath,
                                          const QString& quarantinePath, quint64 size,
                                          const QString& categoryName) const;
    QCoro::Task<bool> putBack(QuarantineItem item);
    [[nodiscard]] QFuture<QSet<QString>> startRemoval(QStringList quarantinePaths);

    [[nodiscard]] QList<QuarantineItem> itemsToRecord() const;
    void setLastResult(const QString& text);
    void setReadOnlyReason(const QString& reason);
    void setProgress(const std::optional<OperationProgress>& progress);
    [[nodiscard]] QVariant progressVariant() const;

    Host& m_host;
    const AppSettings& m_settings;
    const QString m_quarantineDir;
    QuarantineItemModel m_items;
    /// What is recorded and not known to have moved yet, by hand-over.
    std::map<int, QList<QuarantineItem>> m_announced;
    int m_handOvers = 0;
    int m_running = 0;
    QString m_lastResult;
    QString m_readOnlyReason;
    std::optional<OperationProgress> m_progress;

    bool m_hasFolder = false;
    std::shared_ptr<const FileLock> m_lock;
    std::unique_ptr<ManifestSaver> m_saver; ///< null without the lock
    const std::shared_ptr<RestoreJournal> m_journal;
    std::optional<Opening> m_opening; ///< of a store that is tried again just now
    Worker m_planner{QStringLiteral("quarantine plan")};
    Worker m_intake{QStringLiteral("quarantine intake")}; ///< for hand-overs
    Worker m_stored{QStringLiteral("quarantine store")};  ///< for what is in the store
    Worker m_sweeper{QStringLiteral("quarantine sweep")}; ///< may wait for volumes that are away
};

} // namespace brivane
