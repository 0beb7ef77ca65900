#include "removal/QuarantineContents.h"

#include "platform/Host.h"
#include "platform/PathText.h"
#include "platform/Worker.h"
#include "removal/QuarantineMoves.h"
#include "removal/StoreBoundary.h"
#include "removal/StoreNames.h"

#include <QRegularExpression>
#include <QSet>

#include <cerrno>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

/// The names of what lies in the store; none when that cannot be found out.
std::optional<QSet<QString>> namesIn(const QString& folder)
{
    QSet<QString> names;
    std::error_code failure;
    std::filesystem::directory_iterator entry(PathText::toBytes(folder).toStdString(), failure);
    for (; !failure && entry != end(entry); entry.increment(failure))
        names.insert(PathText::fromBytes(entry->path().filename().native()));
    return failure ? std::nullopt : std::optional(names);
}

/// What cannot be looked for is not missing.
bool isMissing(const QString& path)
{
    const auto found = FileIdentity::of(path);
    return !found && found.error().code == ENOENT;
}

/// What was recorded and is there, each thing once and with an id of its own, by the way that leads
/// to the store now.
QList<QuarantineItem> itemsThatAreThere(const QList<QuarantineItem>& recorded,
                                        const std::optional<QSet<QString>>& names,
                                        const QString& quarantineDir)
{
    QList<QuarantineItem> items;
    QSet<QString> seen;
    QSet<QUuid> ids;
    for (QuarantineItem item : recorded) {
        const QString name = PathText::lastComponent(item.quarantinePath);
        item.quarantinePath = quarantineDir + u'/' + name;
        if (seen.contains(name) || !StoreBoundary::isStored(item.quarantinePath, quarantineDir) ||
            ((!names || !names->contains(name)) && isMissing(item.quarantinePath)))
            continue;
        seen.insert(name);
        if (ids.contains(item.id))
            item.id = QUuid::createUuid();
        ids.insert(item.id);
        items += item;
    }
    return items;
}

QuarantineItem recovered(const QString& name, const QString& quarantineDir, const QString& home,
                         const QDateTime& now)
{
    static const QRegularExpression prefix(u"^[0-9A-F]{8}_(?=.)"_s);
    const QString path = quarantineDir + u'/' + name;
    QString fileName = QString(name).remove(prefix);
    if (fileName == u"."_s || fileName == u".."_s)
        fileName = name;
    return {
        .id = QUuid::createUuid(),
        .originalPath = home + u"/Recovered/"_s + fileName,
        .quarantinePath = path,
        .size = QuarantineMoves::fileOrDirSize(path),
        .quarantineDate = now,
        .categoryName = QuarantineItem::recovered,
        .fileName = fileName,
    };
}

/// Claims the store; the reason in words where that is not to be.
QString claim(const QString& quarantineDir, FileSystemProviding& fileSystem,
              std::shared_ptr<const FileLock>& lock)
{
    const QString path = quarantineDir + u'/' + StoreNames::lock;
    auto taken = FileLock::take(path);
    if (!taken && (taken.error().code == ENOSPC || taken.error().code == EDQUOT) &&
        fileSystem.releaseSpace(quarantineDir + u'/' + StoreNames::reserve))
        taken = FileLock::take(path);
    if (taken) {
        lock = std::make_shared<const FileLock>(std::move(*taken));
        return {};
    }
    if (taken.error().code == EWOULDBLOCK)
        return u"Another Brivane is using the quarantine"_s;
    return u"The quarantine cannot be claimed: "_s + taken.error().reason();
}

} // namespace

QuarantineContents QuarantineContents::read(const Host& host, const QString& quarantineDir)
{
    FileSystemProviding& fileSystem = host.fileSystem;
    QuarantineContents contents{.manifest = QuarantineManifest(quarantineDir, fileSystem)};
    const Result<> made = fileSystem.makeDirectory(quarantineDir, 0700);
    contents.hasFolder = bool(made);
    contents.refusal = made ? claim(quarantineDir, fileSystem, contents.lock)
                            : u"The quarantine cannot be made: "_s + made.error().reason();
    contents.manifest.writeUnder(contents.lock);

    Worker lister(u"store listing"_s);
    const QFuture<std::optional<QSet<QString>>> listing =
        lister.run([quarantineDir] { return namesIn(quarantineDir); });
    const auto recorded = contents.manifest.load();
    const std::optional<QSet<QString>> names = listing.result();
    if (!recorded) {
        // Whoever went on without it would forget where things came from.
        if (contents.lock)
            contents.refusal =
                u"The list of the quarantine cannot be read: "_s + recorded.error().reason();
        contents.lock.reset();
        return contents;
    }
    contents.items = itemsThatAreThere(*recorded, names, quarantineDir);
    // What whoever has the lock is doing just now is not for us to judge.
    if (!contents.lock || !names)
        return contents;

    QSet<QString> unlisted = *names;
    for (const QuarantineItem& item : contents.items)
        unlisted.remove(PathText::lastComponent(item.quarantinePath));
    for (const QString& name : unlisted) {
        if (isTemporaryName(name)) {
            contents.leftovers += quarantineDir + u'/' + name;
        } else if (!StoreNames::isOwn(name)) {
            contents.items +=
                recovered(name, quarantineDir, host.locations.home(), host.clock.now());
            contents.hasUnrecorded = true;
        }
    }
    return contents;
}

} // namespace brivane
