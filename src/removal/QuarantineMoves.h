#pragma once

#include "platform/FileSystemProviding.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

// The file work of the quarantine: plain values in, plain values out, no published state. Every
// function blocks and belongs on a worker; none may be called on the GUI thread.
namespace brivane {

/// A path that is handed over to the quarantine.
struct QuarantineCandidate {
    QString path; ///< absolute
    /// When given, nothing but this object goes; another one at the path stays.
    std::optional<FileIdentity> expected = {};
};

/// A path that left its place.
struct MoveOutcome {
    QString originalPath;
    std::optional<QString> quarantinePath; ///< none when it went to the system Trash instead
    quint64 size = 0;                      ///< bytes
};

namespace QuarantineMoves {

/// One path on its way into the quarantine: looked at and measured, but still at its place.
struct PlannedMove {
    QString originalPath;
    QString quarantinePath; ///< a free place in the store
    quint64 size = 0;       ///< bytes
    std::optional<FileIdentity> expected = {};
    bool isOnVolumeOfStore = false;
    /// Something else of the same hand-over lies in it: it shrinks and changes before it is its
    /// turn.
    bool holdsAnother = false;
};

/// Looks at the candidates and measures them, on all cores. What does not exist, or may not go (see
/// StoreBoundary), is left out; the others stay in order. Changes nothing.
[[nodiscard]] std::vector<PlannedMove> planMoves(std::vector<QuarantineCandidate> candidates,
                                                 const QString& quarantineDir, const QString& home);

/// Moves one after the other, each by one rename where that is possible. What lies on another
/// volume goes to the Trash and, where that fails, is copied into the store and removed. What
/// cannot be moved stays whole where it is and has no outcome. A link is moved itself, and what it
/// leads to is left alone.
[[nodiscard]] QList<MoveOutcome> moveToQuarantine(const std::vector<PlannedMove>& moves,
                                                  FileSystemProviding& fileSystem);

/// Puts a stored item back. Missing folders on the way are made; no link is followed there but
/// those that lead to `home`; nothing is replaced. On failure the item is in the store, whole.
Result<Moved> moveBack(const QString& from, const QString& to, const QString& quarantineDir,
                       const QString& home, FileSystemProviding& fileSystem);

/// Removes stored items for good, one after the other, and gives those that are gone altogether. A
/// path that is not directly in `quarantineDir` is never touched.
[[nodiscard]] QSet<QString> removeFiles(const QStringList& paths, const QString& quarantineDir,
                                        FileSystemProviding& fileSystem);

/// The logical size of a file or a link itself; of a folder, the sum over what it holds, less all
/// whose name begins with a dot. 0 for what cannot be read. `readers` as in WalkOptions::workers.
[[nodiscard]] quint64 fileOrDirSize(const QString& path, unsigned readers = 0);

} // namespace QuarantineMoves

} // namespace brivane
