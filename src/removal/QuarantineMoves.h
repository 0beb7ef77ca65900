#pragma once

#include "platform/FileSystemProviding.h"
#include "removal/QuarantineItem.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

// The file work of the quarantine: plain values in, plain values out, no published state. Every
// function blocks and belongs on a worker; none may be called on the GUI thread.
namespace brivane {

class RestoreJournal;

/// A path that is handed over to the quarantine.
struct QuarantineCandidate {
    QString path; ///< absolute
    /// When given, nothing but this object goes; another one at the path stays.
    std::optional<FileIdentity> expected = {};
};

/// A path that left its place, or nearly.
struct MoveOutcome {
    QString handedOverAs; ///< the path as its candidate spelled it
    QString originalPath;
    std::optional<QString> quarantinePath; ///< none when it went to the system Trash instead
    quint64 size = 0;                      ///< bytes
    /// What is still at its place, though a whole copy is in the store, and why.
    std::optional<FileError> leftBehind = {};
};

/// A path that did not go, and why.
struct Kept {
    QString handedOverAs; ///< the path as its candidate spelled it
    FileError error;
};

/// What became of the moves of one hand-over.
struct MoveReport {
    QList<MoveOutcome> outcomes;
    std::vector<Kept> kept; ///< wholly or in part
    /// Why the first of those that are still at their places, wholly or in part, is there.
    std::optional<FileError> obstacle = {};
};

namespace QuarantineMoves {

/// One path on its way into the quarantine: looked at and measured, but still at its place.
struct PlannedMove {
    QString handedOverAs; ///< the path as its candidate spelled it
    /// The same without a slash at its end; the real path where that leads through links by which
    /// it could not come back.
    QString originalPath;
    QString quarantinePath; ///< a free place in the store
    quint64 size = 0;       ///< bytes
    FileIdentity expected;  ///< what was found there, or shown: nothing else is moved
    bool isOnVolumeOfStore = false;
    /// Something else of the same hand-over lies in it: it shrinks before it is its turn.
    bool holdsAnother = false;
};

/// What is going to be done about a hand-over.
struct MovePlan {
    std::vector<PlannedMove> moves;
    std::vector<Kept> leftOut;
};

/// Looks at the candidates, all of them first, and then measures them, on all cores. What does not
/// exist, is not what was shown, or may not go (see StoreBoundary), is left out; the others stay in
/// order. A slash at the end of a path means nothing. Changes nothing.
[[nodiscard]] MovePlan planMoves(std::vector<QuarantineCandidate> candidates,
                                 const QString& quarantineDir, const QString& home);

/// Whether there is a store that may take something in.
enum class StoreUse { Allowed, TrashOnly };

/// Moves one after the other, each by one rename where that is possible. What lies on another
/// volume goes to the Trash and, where that fails, is copied into the store and removed. What
/// cannot be moved stays whole where it is and has no outcome. A link is moved itself, and what it
/// leads to is left alone.
[[nodiscard]] MoveReport moveToQuarantine(const std::vector<PlannedMove>& moves,
                                          RestoreJournal& journal, FileSystemProviding& fileSystem,
                                          StoreUse store = StoreUse::Allowed);

/// Puts a stored item back. Missing folders on the way are made; of the links there those are
/// followed that root or the user made where only they can (ParentLinks::Trusted); nothing is
/// replaced. Something "Recovered" gets a number when its name is taken, and so does what could not
/// be taken in altogether, by what it has left there. On failure the item is in
/// the store, whole; where the copy on another volume is whole and the item could not be removed
/// altogether, the next call goes on with that.
Result<Moved> moveBack(const QuarantineItem& item, const QString& quarantineDir,
                       RestoreJournal& journal, FileSystemProviding& fileSystem);

/// Removes stored items for good, one after the other, and gives those that are gone altogether. A
/// path that is not directly in `quarantineDir` is never touched.
[[nodiscard]] QSet<QString> removeFiles(const QStringList& paths, const QString& quarantineDir,
                                        FileSystemProviding& fileSystem);

/// The logical size of a file or a link itself; of a folder, the sum over what it holds, less all
/// whose name begins with a dot. 0 for what cannot be read. `readers` as in WalkOptions::workers.
[[nodiscard]] quint64 fileOrDirSize(const QString& path, unsigned readers = 0);

} // namespace QuarantineMoves

} // namespace brivane
