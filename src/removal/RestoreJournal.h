#pragma once

#include "platform/FileSystemProviding.h"

#include <QList>
#include <QString>

#include <mutex>
#include <optional>

namespace brivane {

/// What is known of items that are being copied to or from another volume, where a crash can leave
/// a part of a copy, or a whole one beside what is left of the original.
///
/// A small file in the store: written before the first byte is copied, once more when a copy out of
/// the store is whole, and taken back when nothing is left of the original. An entry that cannot be
/// written holds nothing up: what is at stake is a left-over, never the item. What the last run
/// left is read on first use, which is for who holds the store's lock. Any thread; calls block.
class RestoreJournal {
public:
    /// `path` is the journal's own, in the store's folder; `fileSystem` outlives this.
    RestoreJournal(QString path, FileSystemProviding& fileSystem);

    /// Removes the parts of copies that the last run left, and forgets what needs no more
    /// attention. A volume that does not answer holds up this call alone.
    void sweep();

    /// What stands at `place` is about to be copied into the store, to `stored`.
    void beginTaking(const QString& stored, const QString& place);
    /// Whether something of what the item at `stored` was copied from may still stand at its place.
    [[nodiscard]] bool isTakenInPart(const QString& stored);

    /// The item at `stored` is about to be copied to `place`, under the name `temporary` beside it
    /// until it is whole.
    void begin(const QString& stored, const QString& place, const QString& temporary);
    /// Its copy is whole, and this object.
    void becameWhole(const QString& stored, const FileIdentity& copy);
    /// The item has left the store, or its copy is gone again.
    void end(const QString& stored);

    /// Whether the copy of the item at `stored` was whole and stands at `place` untouched.
    [[nodiscard]] bool isWholeAt(const QString& stored, const QString& place);

private:
    struct Entry {
        QString stored; ///< the item's name in the store; empty where only the temporary matters
        QString place;
        QString temporary = {};   ///< empty for a copy into the store
        std::uint64_t device = 0; ///< of the folder that `place` is in
        std::optional<FileIdentity> copy = {};

        bool operator==(const Entry& other) const
        {
            return stored == other.stored && place == other.place && temporary == other.temporary;
        }
    };

    [[nodiscard]] static std::optional<Entry> entryOf(const QJsonValue& value);
    [[nodiscard]] bool isSwept(const Entry& entry) const;
    // With m_mutex held.
    void load();
    void save();
    void forget(const QString& name);

    void put(const Entry& entry);

    const QString m_path;
    FileSystemProviding& m_fileSystem;
    std::mutex m_mutex;
    // Guarded by m_mutex.
    bool m_isLoaded = false;
    QList<Entry> m_entries;
    QList<Entry> m_left; ///< parts of copies of the last run, still to be removed
};

} // namespace brivane
