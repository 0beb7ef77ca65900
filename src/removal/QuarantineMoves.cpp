#include "removal/QuarantineMoves.h"

#include "platform/FileWriting.h"
#include "platform/Parallel.h"
#include "platform/PathText.h"
#include "platform/Walk.h"
#include "removal/RestoreJournal.h"
#include "removal/StoreBoundary.h"

#include <QUuid>

#include <cerrno>

using namespace Qt::StringLiterals;

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

QString withoutEndSlashes(QString path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

/// Which of these paths other ones of them lie in.
QSet<QString> foldersOf(const std::vector<QuarantineCandidate>& candidates)
{
    QSet<QString> folders;
    for (const QuarantineCandidate& candidate : candidates) {
        const QString path = withoutEndSlashes(candidate.path);
        for (qsizetype slash = path.lastIndexOf(u'/'); slash > 0;
             slash = path.lastIndexOf(u'/', slash - 1)) {
            const QString folder = path.first(slash);
            if (folders.contains(folder))
                break;
            folders.insert(folder);
        }
    }
    return folders;
}

/// What is demanded of the object at the moment of the move, when `found` stands there now.
FileIdentity demanded(const QuarantineCandidate& candidate, const FileIdentity& found,
                      bool holdsAnother)
{
    FileIdentity expected = candidate.expected.value_or(FileIdentity{});
    // Nobody was shown more of it than its path, or it will change by our own doing.
    if (!candidate.expected || holdsAnother)
        expected = {.device = found.device, .inode = found.inode};
    expected.folder = found.folder;
    return expected;
}

/// Moves one item; the reason when it is still at its place, and where something of it is, that
/// goes into `obstacle`.
Result<MoveOutcome> carryOut(const PlannedMove& move, FileSystemProviding& fileSystem,
                             StoreUse store, std::optional<FileError>& obstacle)
{
    const QString& from = move.originalPath;
    const FileError refused{ECANCELED, from, FileOperation::Move};
    MoveOutcome outcome{move.handedOverAs, from, move.quarantinePath, move.size};
    if (move.holdsAnother)
        outcome.size = fileOrDirSize(from);

    if (move.isOnVolumeOfStore) {
        if (store == StoreUse::Refused)
            return refused;
        const auto renamed =
            fileSystem.moveItem(from, move.quarantinePath,
                                {.expected = move.expected, .otherDevice = OtherDevice::Refuse});
        if (renamed)
            return outcome;
        // Also with the same device number there may be another mount in between.
        if (renamed.error().code != EXDEV)
            return renamed.error();
    }
    if (fileSystem.trashItem(from, move.expected)) {
        outcome.quarantinePath.reset();
        return outcome;
    }
    if (store == StoreUse::Refused)
        return refused;
    const auto copied = fileSystem.moveItem(from, move.quarantinePath, {.expected = move.expected});
    if (!copied)
        return copied.error();
    outcome.leftSomething = !copied->leftBehind.empty();
    if (outcome.leftSomething && !obstacle)
        obstacle = copied->leftBehind.front();
    return outcome;
}

/// Goes on with an item whose whole copy stands at its place. What was changed since it was copied
/// is newer than that, and then all of it stays.
Result<Moved> removeRest(const QString& stored, std::int64_t unchangedSince,
                         FileSystemProviding& fileSystem)
{
    Walk walk(PathText::toBytes(stored));
    while (const WalkEntry* entry = walk.next()) {
        const bool isFolder =
            entry->kind == WalkKind::Directory || entry->kind == WalkKind::DirectoryEnd;
        if (!isFolder && entry->attributes.changedAt >= unchangedSince)
            return FileError{ESTALE, PathText::fromBytes(walk.path()), FileOperation::Remove};
    }
    RemovalReport removal = fileSystem.removeItem(stored);
    return Moved{.leftBehind = std::move(removal.failures)};
}

Result<Moved> copyBack(const QString& stored, const QString& place, RestoreJournal& journal,
                       FileSystemProviding& fileSystem)
{
    const QString temporary = makeTemporaryName();
    journal.begin(stored, place, temporary);
    Result<Moved> moved = fileSystem.moveItem(
        stored, place,
        {.toParents = ParentLinks::Trusted,
         .temporaryName = temporary,
         .onceWhole = [&](const FileIdentity& copy) { journal.becameWhole(stored, copy); }});
    if (!moved || moved->leftBehind.empty())
        journal.end(stored);
    return moved;
}

Result<Moved> moveBackTo(const QString& place, const QString& stored, RestoreJournal& journal,
                         FileSystemProviding& fileSystem)
{
    if (const auto since = journal.wholeSince(stored, place)) {
        Result<Moved> moved = removeRest(stored, *since, fileSystem);
        if (moved && moved->leftBehind.empty())
            journal.end(stored);
        return moved;
    }
    Result<Moved> moved = fileSystem.moveItem(
        stored, place, {.otherDevice = OtherDevice::Refuse, .toParents = ParentLinks::Trusted});
    if (!moved && moved.error().code == EXDEV)
        return copyBack(stored, place, journal, fileSystem);
    return moved;
}

} // namespace

std::vector<PlannedMove> planMoves(std::vector<QuarantineCandidate> candidates,
                                   const QString& quarantineDir, const QString& home)
{
    const StoreBoundary boundary(quarantineDir, home);
    const auto store = FileIdentity::of(boundary.realDir());
    const QSet<QString> folders = foldersOf(candidates);
    std::vector<std::optional<PlannedMove>> planned(candidates.size());
    // What is to be taken is settled before anything is measured, which may take long.
    forEachInParallel(candidates.size(), [&](std::size_t i) {
        const QuarantineCandidate& candidate = candidates[i];
        const QString path = withoutEndSlashes(candidate.path);
        const auto found = FileIdentity::of(path);
        if (!found || (candidate.expected && !candidate.expected->matches(*found)) ||
            !boundary.accepts(path))
            return;
        const bool holdsAnother = folders.contains(path);
        planned[i] = PlannedMove{
            .handedOverAs = candidate.path,
            .originalPath = path,
            .quarantinePath = freePlace(path, quarantineDir),
            .expected = demanded(candidate, *found, holdsAnother),
            .isOnVolumeOfStore = store && store->device == found->device,
            .holdsAnother = holdsAnother,
        };
    });
    std::vector<PlannedMove> moves;
    moves.reserve(planned.size());
    for (std::optional<PlannedMove>& move : planned) {
        if (move)
            moves.push_back(*std::move(move));
    }
    // Many items keep all cores busy as it is; a single one is read by all of them.
    const unsigned readers = moves.size() == 1 ? 0 : 1;
    forEachInParallel(moves.size(), [&](std::size_t i) {
        moves[i].size = fileOrDirSize(moves[i].originalPath, readers);
    });
    return moves;
}

MoveReport moveToQuarantine(const std::vector<PlannedMove>& moves, FileSystemProviding& fileSystem,
                            StoreUse store)
{
    MoveReport report;
    for (const PlannedMove& move : moves) {
        Result<MoveOutcome> outcome = carryOut(move, fileSystem, store, report.obstacle);
        if (outcome)
            report.outcomes += *std::move(outcome);
        else if (!report.obstacle && FileIdentity::of(move.originalPath))
            report.obstacle = outcome.error();
    }
    return report;
}

Result<Moved> moveBack(const QuarantineItem& item, const QString& quarantineDir,
                       RestoreJournal& journal, FileSystemProviding& fileSystem)
{
    const QString& stored = item.quarantinePath;
    if (!StoreBoundary::isStored(stored, quarantineDir))
        return FileError{EINVAL, stored, FileOperation::Move};
    // No list of ours says so, and there it would be taken for the store's own, and removed.
    if (item.originalPath.startsWith(quarantineDir + u'/'))
        return FileError{EINVAL, item.originalPath, FileOperation::Move};
    constexpr mode_t mode = 0777; // less the umask, as folders are made by hand
    // Without its parent the move fails, and says why.
    const QString folder = item.originalPath.left(item.originalPath.lastIndexOf(u'/'));
    (void)fileSystem.makeDirectory(folder, mode, ParentLinks::Trusted);
    Result<Moved> moved = moveBackTo(item.originalPath, stored, journal, fileSystem);
    // The place of something recovered is our own idea, and as good as any other.
    constexpr int lastNumber = 999;
    for (int number = 2; !moved && moved.error().code == EEXIST &&
                         item.categoryName == QuarantineItem::recovered && number <= lastNumber;
         ++number)
        moved = moveBackTo(item.originalPath + u" %1"_s.arg(number), stored, journal, fileSystem);
    return moved;
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
