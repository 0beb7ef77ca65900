#pragma once

#include "platform/Host.h"
#include "removal/ManifestSaver.h"
#include "removal/QuarantineItemModel.h"
#include "removal/QuarantineMoves.h"
#include "removal/QuarantineProgress.h"

#include <QCoroTask>
#include <QFuture>
#include <QObject>
#include <QThreadPool>
#include <QVariant>

#include <map>

namespace brivane {

class AppSettings;

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
/// state has been written. A list that cannot be written holds nothing up: memory goes on, and the
/// next save tries again.
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
    /// Undefined when there is none.
    Q_PROPERTY(QVariant progress READ progressVariant NOTIFY progressChanged)

public:
    using OperationProgress = QuarantineProgress;
    /// What became of a hand-over.
    struct HandOver {
        qint64 moved = 0;         ///< how many left their place, those that went to the Trash too
        quint64 size = 0;         ///< bytes
        QSet<QString> movedPaths; ///< their original paths
    };
    struct Purge {
        qint64 purged = 0;
        quint64 size = 0; ///< bytes
    };

    /// What a store holds, and how to go on listing it.
    struct Contents {
        QuarantineManifest manifest;
        QList<QuarantineItem> items;
        QStringList leftovers; ///< paths of what a crash left of copies and of the manifest
    };

    /// Makes `quarantineDir` (absolute) where it is missing and reads what it lists. Any thread,
    /// while no service works there.
    static Contents read(const QString& quarantineDir, FileSystemProviding& fileSystem);

    /// Takes over what was read of `quarantineDir`, and starts the removal of what has been there
    /// for longer than the settings say.
    QuarantineService(Host& host, const AppSettings& settings, QString quarantineDir,
                      Contents contents, QObject* parent = nullptr);
    /// Reads first, and blocks meanwhile.
    QuarantineService(Host& host, const AppSettings& settings, const QString& quarantineDir,
                      QObject* parent = nullptr);
    /// Waits for the file work that is under way; what has been moved by then is listed at the next
    /// start.
    ~QuarantineService() override;

    /// The quarantine of the program, in "~/.Brivane_Quarantine"; made on first use, never
    /// destroyed.
    static QuarantineService& shared();
    /// The same, read on a worker when it is the first use. Never null.
    static QCoro::Task<QuarantineService*> openShared();

    [[nodiscard]] const QList<QuarantineItem>& items() const { return m_items.items(); }
    /// The same as rows.
    [[nodiscard]] QuarantineItemModel* itemModel() { return &m_items; }
    /// Bytes: the sum over the items.
    [[nodiscard]] quint64 totalSize() const { return m_items.totalSize(); }
    [[nodiscard]] bool isProcessing() const { return m_running > 0; }
    /// What became of the last operation, in words; null when there was none.
    [[nodiscard]] const QString& lastResult() const { return m_lastResult; }
    /// Of a bulk operation, none when none is running.
    [[nodiscard]] const std::optional<OperationProgress>& progress() const { return m_progress; }

    /// Takes things in. `categoryName` tells where they came from. What cannot be moved stays where
    /// it is and is not in the result; the whole cannot fail. See QuarantineMoves for the rest.
    QCoro::Task<HandOver> quarantine(QStringList paths, QString categoryName);
    QCoro::Task<HandOver> quarantine(std::vector<QuarantineCandidate> candidates,
                                     QString categoryName);
    /// Puts an item back where it came from, replacing nothing. Whether that worked; if not, the
    /// item stays, and the last result says why.
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
    void progressChanged();

private:
    class Processing;

    void purgeExpired();
    QCoro::Task<> removeExpired(QStringList quarantinePaths);
    [[nodiscard]] QuarantineItem makeItem(const QString& originalPath,
                                          const QString& quarantinePath, quint64 size,
                                          const QString& categoryName) const;
    QCoro::Task<bool> putBack(QuarantineItem item);
    [[nodiscard]] QFuture<QSet<QString>> startRemoval(QStringList quarantinePaths);

    [[nodiscard]] QList<QuarantineItem> itemsToRecord() const;
    void setLastResult(const QString& text);
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
    std::optional<OperationProgress> m_progress;

    std::unique_ptr<ManifestSaver> m_saver;
    QThreadPool m_intake; ///< one thread, for hand-overs
    QThreadPool m_stored; ///< one thread, for what is in the store
};

} // namespace brivane
