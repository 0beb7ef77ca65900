#pragma once

#include "platform/FileSystemProviding.h"
#include "removal/QuarantineItem.h"

#include <QList>

namespace brivane {

/// The file that lists what is in quarantine: one JSON array of records.
///
/// It is replaced as a whole and synced, so that a crash leaves the old list or the new one. Paths
/// in it are kept byte for byte: where a byte is no text, PathText has a lone surrogate, which JSON
/// writes as an escape ("\udcff") and Qt's reader gives back. A list that cannot be read or
/// understood is never written over: the first save puts it aside under another name.
///
/// One thread at a time; calls block.
class QuarantineManifest {
public:
    QuarantineManifest(QString path, FileSystemProviding& fileSystem)
        : m_path(std::move(path))
        , m_fileSystem(fileSystem)
    {
    }

    /// The items as they were saved; empty when there is no list, or none that can be understood.
    QList<QuarantineItem> load();
    /// After a failure the list on disk is the one before; see also writeFileAtomically().
    Result<> save(const QList<QuarantineItem>& items);

private:
    QString m_path;
    FileSystemProviding& m_fileSystem;
    bool m_isDamaged = false; ///< what stands on disk has to be put aside first
};

} // namespace brivane
