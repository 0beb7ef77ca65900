#include "removal/QuarantineMoves.h"

#include "platform/PathText.h"
#include "platform/Walk.h"
#include "removal/StoreBoundary.h"

#include <QThreadPool>
#include <QUuid>
#include <QtConcurrentMap>

#include <cerrno>

namespace brivane::QuarantineMoves {

namespace {

/// The name of an item in the store. What comes with a very long name loses its end there, not in
/// the list.
QString storedName(const QString& path)
{
    constexpr qsizetype longestName = 255;
    constexpr qsizetype prefixLength = 8;
    const QString prefix =
        QUuid::createUuid().toString(QUuid::WithoutBraces).first(prefixLength).toUpper() + u'_';
    QString name = PathText::lastComponent(path);
    while (PathText::toBytes(name).size() + prefix.size() > longestName)
        name.chop(name.back().isLowSurrogate() && name.size() > 1 &&
                          name[name.size() - 2].isHighSurrogate()
                      ? 2
                      : 1);
    return prefix + name;
}

QString freePlace(const QString& path, const QString& quarantineDir)
{
    for (;;) {
        const QString place = quarantineDir + u'/' + storedName(path);
        const auto standing = FileIdentity::of(place);
        if (!standing)
            return place;
    }
}

struct Slot {
    QuarantineCandidate candidate;
    bool holdsAnother = false;
    std::optional<PlannedMove> move = {};
};

std::vector<Slot> slotsFor(std::vector<QuarantineCandidate> candidates)
{
    QSet<QString> parents;
    for (const QuarantineCandidate& candidate : candidates) {
        const QString& path = candidate.path;
        for (qsizetype slash = path.lastIndexOf(u'/'); slash > 0;
             slash = path.lastIndexOf(u'/', slash - 1)) {
            const QString parent = path.first(slash);
            if (parents.contains(parent))
                break;
            parents.insert(parent);
        }
    }
    std::vector<Slot> slots;
    slots.reserve(candidates.size());
    for (QuarantineCandidate& candidate : candidates) {
        const bool holdsAnother = parents.contains(candidate.path);
        slots.push_back({std::move(candidate), holdsAnother});
    }
    return slots;
}

/// Moves one item; whether it left its place. The outcome then says where to.
bool carryOut(const PlannedMove& move, MoveOutcome& outcome, FileSystemProviding& fileSystem)
{
    std::optional<FileIdentity> expected = move.expected;
    if (expected && move.holdsAnother)
        expected = {.device = expected->device, .inode = expected->inode};
    outcome = {move.originalPath, move.quarantinePath, move.size};
    if (move.holdsAnother)
        outcome.size = fileOrDirSize(move.originalPath);

    if (move.isOnVolumeOfStore) {
        const auto renamed =
            fileSystem.moveItem(move.originalPath, move.quarantinePath,
                                {.expected = expected, .otherDevice = OtherDevice::Refuse});
        // Also with the same device number there may be another mount in between.
        if (renamed || renamed.error().code != EXDEV)
            return bool(renamed);
    }
    if (fileSystem.trashItem(move.originalPath, expected)) {
        outcome.quarantinePath.reset();
        return true;
    }
    return bool(
        fileSystem.moveItem(move.originalPath, move.quarantinePath, {.expected = expected}));
}

} // namespace

std::vector<PlannedMove> planMoves(std::vector<QuarantineCandidate> candidates,
                                   const QString& quarantineDir, const QString& home)
{
    const StoreBoundary boundary(quarantineDir, home);
    const auto store = FileIdentity::of(boundary.realDir());
    std::vector<Slot> slots = slotsFor(std::move(candidates));
    // Many items keep all cores busy as it is; a single one is read by all of them.
    const unsigned readers = slots.size() == 1 ? 0 : 1;
    QThreadPool workers; // painting waits for the threads of the global pool
    QtConcurrent::blockingMap(&workers, slots, [&](Slot& slot) {
        const QString& path = slot.candidate.path;
        if (!boundary.accepts(path))
            return;
        const auto found = FileIdentity::of(path);
        if (!found)
            return;
        slot.move = PlannedMove{
            .originalPath = path,
            .quarantinePath = freePlace(path, quarantineDir),
            .size = fileOrDirSize(path, readers),
            .expected = slot.candidate.expected,
            .isOnVolumeOfStore = store && store->device == found->device,
            .holdsAnother = slot.holdsAnother,
        };
    });
    std::vector<PlannedMove> moves;
    moves.reserve(slots.size());
    for (Slot& slot : slots) {
        if (slot.move)
            moves.push_back(*std::move(slot.move));
    }
    return moves;
}

QList<MoveOutcome> moveToQuarantine(const std::vector<PlannedMove>& moves,
                                    FileSystemProviding& fileSystem)
{
    QList<MoveOutcome> outcomes;
    for (const PlannedMove& move : moves) {
        MoveOutcome outcome;
        if (carryOut(move, outcome, fileSystem))
            outcomes += std::move(outcome);
    }
    return outcomes;
}

Result<Moved> moveBack(const QString& from, const QString& to, const QString& quarantineDir,
                       const QString& home, FileSystemProviding& fileSystem)
{
    if (!StoreBoundary::isStored(from, quarantineDir))
        return FileError{EINVAL, from, FileOperation::Move};
    const QString place = StoreBoundary(quarantineDir, home).throughHome(to);
    constexpr mode_t mode = 0777; // less the umask, as folders are made by hand
    // Without its parent the move fails, and says why.
    (void)fileSystem.makeDirectory(place.left(place.lastIndexOf(u'/')), mode, ParentLinks::Refuse);
    return fileSystem.moveItem(from, place, {.toParents = ParentLinks::Refuse});
}

QSet<QString> removeFiles(const QStringList& paths, const QString& quarantineDir,
                          FileSystemProviding& fileSystem)
{
    QSet<QString> removed;
    for (const QString& path : paths) {
        if (StoreBoundary::isStored(path, quarantineDir) &&
            fileSystem.removeItem(path).isComplete())
            removed.insert(path);
    }
    return removed;
}

quint64 fileOrDirSize(const QString& path, unsigned readers)
{
    Walk walk(PathText::toBytes(path), {.includeHidden = false, .workers = readers});
    quint64 bytes = 0;
    while (const WalkEntry* entry = walk.next()) {
        if (entry->kind == WalkKind::File || entry->kind == WalkKind::SymbolicLink)
            bytes += entry->attributes.size;
    }
    return bytes;
}

} // namespace brivane::QuarantineMoves
