#pragma once

#include "platform/FileSystemProviding.h"

#include <QList>
#include <QString>

#include <optional>

namespace brivane {

/// What is known of items that are being copied back to another volume, where a crash can leave a
/// part of a copy, or a whole one beside what is left of the item in the store.
///
/// A small file in the store: written before the first byte is copied, once more when the copy is
/// whole, and taken back when nothing is left in the store. An entry that cannot be written holds
/// nothing up: what is at stake is a left-over, never the item. One thread at a time; calls block.
class RestoreJournal {
public:
    /// `path` is the journal's own; `fileSystem` outlives this.
    RestoreJournal(QString path, FileSystemProviding& fileSystem);

    /// Reads what the last run left, removes the parts of copies that it names, and forgets what
    /// needs no more attention. `quarantineDir` is the store's folder.
    void sweep(const QString& quarantineDir);

    /// The item at `stored` is about to be copied to `place`, under the name `temporary` beside it
    /// until it is whole.
    void begin(const QString& stored, const QString& place, const QString& temporary);
    /// Its copy is whole, and this object.
    void becameWhole(const QString& stored, const FileIdentity& copy);
    /// The item has left the store, or its copy is gone again.
    void end(const QString& stored);

    /// Since when nothing in the item at `stored` may have changed, so that it holds nothing that
    /// its copy does not: nanoseconds since 1970 by the clock of the store's volume. None unless
    /// that copy was whole and stands at `place` untouched.
    [[nodiscard]] std::optional<std::int64_t> wholeSince(const QString& stored,
                                                         const QString& place) const;

private:
    struct Entry {
        QString stored; ///< the item's name in the store
        QString place;
        QString temporary;
        std::int64_t begunAt = 0; ///< as the volume of the store stamps changes
        std::optional<FileIdentity> copy = {};
    };

    [[nodiscard]] static std::optional<Entry> entryOf(const QJsonValue& value);
    [[nodiscard]] bool isOver(const Entry& entry, const QString& quarantineDir) const;
    [[nodiscard]] Entry* find(const QString& stored);
    [[nodiscard]] Result<> save() const;

    const QString m_path;
    FileSystemProviding& m_fileSystem;
    QList<Entry> m_entries;
};

} // namespace brivane
