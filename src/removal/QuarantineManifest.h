#pragma once

#include "platform/FileLock.h"
#include "platform/FileSystemProviding.h"
#include "removal/QuarantineItem.h"

#include <QList>

#include <memory>
#include <utility>

namespace brivane {

/// The file that lists what is in quarantine: one JSON array of records.
///
/// It is replaced as a whole and synced, so that a crash leaves the old list or the new one. Paths
/// in it are kept byte for byte: where a byte is no text, PathText has a lone surrogate, which JSON
/// writes as an escape ("\udcff") and Qt's reader gives back. A list that cannot be read or
/// understood is never written over: the first save puts it aside under another name.
///
/// A full disk is the normal case of a program like this. So a reserve lies beside the list, a file
/// of at least twice the list and 256 KB that holds nothing: where the room is short the list takes
/// its place, and it is made again as soon as there is room.
///
/// One thread at a time; calls block.
class QuarantineManifest {
public:
    /// `quarantineDir` is the folder of the store.
    QuarantineManifest(const QString& quarantineDir, FileSystemProviding& fileSystem);

    /// The items as they were saved; empty when there is no list, or none that can be understood.
    /// An error when there is one that cannot be read now, and may be another time.
    Result<QList<QuarantineItem>> load();
    /// From now on save() fails where `lock`, if there is one, no longer stands: what lies at the
    /// path by then is another's.
    void writeUnder(std::shared_ptr<const FileLock> lock) { m_lock = std::move(lock); }
    /// After a failure the list on disk is the one before; see also writeFileAtomically().
    Result<> save(const QList<QuarantineItem>& items);
    /// Makes the reserve, as far as there is room, for a list of what load() gave.
    void makeReserve();

private:
    Result<> write(const QByteArray& bytes);

    QString m_path;
    QString m_reserve;
    qsizetype m_length = 0; ///< of the list, in bytes
    FileSystemProviding& m_fileSystem;
    std::shared_ptr<const FileLock> m_lock;
    bool m_isDamaged = false; ///< what stands on disk has to be put aside first
};

} // namespace brivane
