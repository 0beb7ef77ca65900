#include "removal/QuarantineMoves.h"

#include "platform/FileWriting.h"
#include "platform/LiesIn.h"
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

std::optional<ObjectId> folderOf(const QString& path)
{
    const auto folder = FileIdentity::folderOf(path);
    return folder ? std::optional(*folder) : std::nullopt;
}

/// What is demanded of the object at the moment of the move, when `found` stands there now.
FileIdentity demanded(const QuarantineCandidate& candidate, const FileIdentity& found,
                      bool holdsAnother)
{
    FileIdentity expected = candidate.expected.value_or(FileIdentity{});
    // Nobody was shown more of it than its path, or it will change by our own doing.
    if (!candidate.expected || holdsAnother)
        expected = {.device = found.device, .inode = found.inode, .type = found.type};
    expected.folder = found.folder;
    return expected;
}

/// Moves one item; the reason when it is still at its place.
Result<MoveOutcome> carryOut(const PlannedMove& move, RestoreJournal& journal,
                             FileSystemProviding& fileSystem, StoreUse store)
{
    const QString& from = move.originalPath;
    const QString& stored = move.quarantinePath;
    MoveOutcome outcome{move.handedOverAs, from, stored, move.size};
    if (move.holdsAnother)
        outcome.size = fileOrDirSize(from);

    if (move.isOnVolumeOfStore) {
        const auto renamed = fileSystem.moveItem(
            from, stored, {.expected = move.expected, .otherDevice = OtherDevice::Refuse});
        if (renamed)
            return outcome;
        // Also with the same device number there may be another mount in between.
        if (renamed.error().code != EXDEV)
            return renamed.error();
    }
    const auto trashed = fileSystem.trashItem(from, move.expected);
    if (trashed) {
        outcome.quarantinePath.reset();
        return outcome;
    }
    if (store == StoreUse::TrashOnly || trashed.error().code == ESTALE)
        return trashed.error();
    journal.beginTaking(stored, from);
    const auto copied = fileSystem.moveItem(from, stored, {.expected = move.expected});
    if (!copied || copied->leftBehind.empty())
        journal.end(stored);
    if (!copied)
        return copied.error();
    if (!copied->leftBehind.empty())
        outcome.leftBehind = copied->leftBehind.front();
    return outcome;
}

/// Whether what is left at `stored` stands in the whole copy at `place`, too, and is not newer.
Result<> checkRest(const QString& stored, const QString& place)
{
    Walk walk(PathText::toBytes(stored));
    while (const WalkEntry* entry = walk.next()) {
        if (entry->kind == WalkKind::Directory || entry->kind == WalkKind::DirectoryEnd)
            continue;
        const QString path = PathText::fromBytes(walk.path());
        const FileError changed{ESTALE, path, FileOperation::Remove};
        const bool isKnown =
            entry->kind != WalkKind::NoAttributes && entry->kind != WalkKind::UnreadableDirectory;
        const auto copy = FileIdentity::of(place + path.sliced(stored.size()));
        if (!isKnown || !copy || copy->size != entry->attributes.size ||
            copy->modifiedAt != entry->attributes.modifiedAt)
            return changed;
    }
    return {};
}

/// Goes on with an item whose whole copy stands at its place.
Result<Moved> removeRest(const QString& stored, const QString& place, RestoreJournal& journal,
                         FileSystemProviding& fileSystem)
{
    if (const Result<> checked = checkRest(stored, place); !checked)
        return checked.error();
    RemovalReport removal = fileSystem.removeItem(stored);
    if (removal.isComplete())
        journal.end(stored);
    return Moved{.leftBehind = std::move(removal.failures)};
}

Result<Moved> copyBack(const QString& stored, const QString& place, RestoreJournal& journal,
                       FileSystemProviding& fileSystem)
{
    // What stands in the way is no reason to forget what is known of another place.
    if (FileIdentity::of(place))
        return FileError{EEXIST, place, FileOperation::Move};
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
    if (journal.isWholeAt(stored, place))
        return removeRest(stored, place, journal, fileSystem);
    Result<Moved> moved = fileSystem.moveItem(
        stored, place, {.otherDevice = OtherDevice::Refuse, .toParents = ParentLinks::Trusted});
    if (!moved && moved.error().code == EXDEV)
        return copyBack(stored, place, journal, fileSystem);
    if (moved)
        journal.end(stored);
    return moved;
}

} // namespace

MovePlan planMoves(std::vector<QuarantineCandidate> candidates, const QString& quarantineDir,
                   const QString& home)
{
    const StoreBoundary boundary(quarantineDir, home);
    const auto store = FileIdentity::of(boundary.realDir());
    const QSet<QString> folders = foldersOf(candidates);
    struct Looked {
        std::optional<PlannedMove> move;
        FileError error; ///< where there is none
    };
    std::vector<Looked> looked(candidates.size());
    // What is to be taken is settled before anything is measured, which may take long.
    forEachInParallel(candidates.size(), [&](std::size_t i) {
        const QuarantineCandidate& candidate = candidates[i];
        const QString path = withoutEndSlashes(candidate.path);
        const auto found = FileIdentity::of(path);
        looked[i].error = {ESTALE, path, FileOperation::Move};
        if (!found)
            looked[i].error = found.error();
        if (!found || (candidate.expected && !candidate.expected->matches(*found)))
            return;
        // What was judged has to be what was found.
        const std::optional<QString> real = boundary.accepted(path);
        if (!real)
            looked[i].error.code = EPERM;
        if (!real || folderOf(*real) != found->folder)
            return;
        const bool holdsAnother = folders.contains(path);
        looked[i].move = PlannedMove{
            .handedOverAs = candidate.path,
            .originalPath = FileIdentity::of(path, ParentLinks::Trusted) ? path : *real,
            .quarantinePath = freePlace(path, quarantineDir),
            .expected = demanded(candidate, *found, holdsAnother),
            .isOnVolumeOfStore = store && store->device == found->device,
            .holdsAnother = holdsAnother,
        };
    });
    MovePlan plan;
    std::vector<PlannedMove>& moves = plan.moves;
    moves.reserve(looked.size());
    for (std::size_t i = 0; i < looked.size(); ++i) {
        if (looked[i].move)
            moves.push_back(*std::move(looked[i].move));
        else
            plan.leftOut.push_back({candidates[i].path, looked[i].error});
    }
    // Many items keep all cores busy as it is; a single one is read by all of them.
    const unsigned readers = moves.size() == 1 ? 0 : 1;
    forEachInParallel(moves.size(), [&](std::size_t i) {
        moves[i].size = fileOrDirSize(moves[i].originalPath, readers);
    });
    return plan;
}

MoveReport moveToQuarantine(const std::vector<PlannedMove>& moves, RestoreJournal& journal,
                            FileSystemProviding& fileSystem, StoreUse store)
{
    MoveReport report;
    for (const PlannedMove& move : moves) {
        Result<MoveOutcome> outcome = carryOut(move, journal, fileSystem, store);
        std::optional<FileError> obstacle;
        if (!outcome)
            obstacle = outcome.error();
        else
            obstacle = outcome->leftBehind;
        if (obstacle)
            report.kept.push_back({move.handedOverAs, *obstacle});
        // What went by itself is no reason to say that the rest stays.
        if (!report.obstacle && obstacle && FileIdentity::of(move.originalPath))
            report.obstacle = obstacle;
        if (outcome)
            report.outcomes += *std::move(outcome);
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
    if (liesIn(item.originalPath, quarantineDir))
        return FileError{EINVAL, item.originalPath, FileOperation::Move};
    constexpr mode_t mode = 0777; // less the umask, as folders are made by hand
    // Without its parent the move fails, and says why.
    const QString folder = item.originalPath.left(item.originalPath.lastIndexOf(u'/'));
    (void)fileSystem.makeDirectory(folder, mode, ParentLinks::Trusted);
    Result<Moved> moved = moveBackTo(item.originalPath, stored, journal, fileSystem);
    // The place of something recovered is our own idea, and as good as any other. What could not be
    // taken altogether has its own rest in the way.
    const bool mayHaveNumber =
        item.categoryName == QuarantineItem::recovered || journal.isTakenInPart(stored);
    constexpr int lastNumber = 999;
    for (int number = 2;
         !moved && moved.error().code == EEXIST && mayHaveNumber && number <= lastNumber; ++number)
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
