// The rules of CategoryScanner that look for single files.

#include "cleaner/CategoryScanner.h"
#include "cleaner/tables/FileEndings.h"
#include "cleaner/tables/SearchedFolders.h"
#include "platform/Host.h"
#include "platform/LiesIn.h"
#include "platform/PathText.h"
#include "platform/StandardizedPath.h"
#include "platform/Walk.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

/// What follows the last dot of a name, in lower case; nothing where only a dot is in front.
QString extensionOf(QStringView name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 ? name.sliced(dot + 1).toString().toLower() : QString();
}

bool beginsLikeScreenshot(QStringView name)
{
    return std::ranges::any_of(screenshotPrefixes,
                               [&](QStringView prefix) { return name.startsWith(prefix); });
}

} // namespace

CleanerItem CategoryScanner::fileItem(QString name, QString path, const FileIdentity& identity,
                                      const QString& icon)
{
    return {.name = std::move(name),
            .path = std::move(path),
            .size = identity.size.value_or(0),
            .iconName = icon,
            .identity = demandedOf(identity)};
}

QSet<QString> CategoryScanner::endings(std::span<const QStringView> table,
                                       QStringView additionsTable) const
{
    QSet<QString> all;
    for (const QStringView ending : table)
        all.insert(ending.toString());
    for (const Locations::Addition& addition : m_host.locations.additions(additionsTable))
        all.insert(addition.value);
    return all;
}

QStringList CategoryScanner::walkStarts(const QStringList& folders) const
{
    QStringList starts;
    for (const QString& folder : folders) {
        const auto identity = FileIdentity::of(folder);
        if (!identity || !identity->isLink()) {
            starts += folder;
            continue;
        }
        for (const InspectedEntry& entry : listedBesideHome(folder)) {
            if (!entry.name.startsWith(u'.'))
                starts += folder + u'/' + entry.name;
        }
    }
    return starts;
}

CategoryScanner::Items CategoryScanner::searchFiles(const QStringList& folders,
                                                    const QSet<QString>& endings, quint64 minSize,
                                                    std::size_t most, const QString& icon) const
{
    std::atomic<bool> isStopped = false;
    const std::stop_callback onStop(m_stop, [&isStopped] { isStopped = true; });
    const QString trash = m_host.locations.path(u"~/.Trash");
    Items items;
    for (const QString& start : walkStarts(folders)) {
        Walk walk(PathText::toBytes(start),
                  {.includeHidden = false,
                   .directoryAttributes = false,
                   .needsAttributes = [](std::string_view) { return false; },
                   .cancelled = &isStopped});
        while (const WalkEntry* entry = items.size() < most ? walk.next() : nullptr) {
            const QString name = PathText::lastComponent(PathText::fromBytes(entry->name));
            if (entry->kind != WalkKind::File || !endings.contains(extensionOf(name)))
                continue;
            const QString path = PathText::fromBytes(walk.path());
            const auto identity = FileIdentity::of(path);
            if (identity && identity->isRegularFile() && identity->size >= minSize &&
                !liesIn(path, trash))
                items.push_back(fileItem(name, path, *identity, icon));
        }
    }
    return items;
}

CategoryScanner::Items CategoryScanner::scanDiskImages() const
{
    const QStringList folders = this->folders(diskImageFolders, u"diskImageFolders");
    const QSet<QString> endings = this->endings(diskImageExtensions, u"diskImageExtensions");
    return searchFiles(folders, endings, 1, std::numeric_limits<std::size_t>::max(),
                       u"opticaldisc.fill"_s);
}

CategoryScanner::Items CategoryScanner::scanLargeFiles() const
{
    constexpr quint64 smallest = 104'857'600;
    constexpr std::size_t most = 50;
    const QStringList folders = this->folders(largeFileFolders, u"largeFiles");
    const QSet<QString> endings = this->endings(largeFileJunkExtensions, u"largeFileExtensions");
    return searchFiles(folders, endings, smallest, most, u"doc.fill"_s);
}

bool CategoryScanner::isOld(const FileIdentity& identity) const
{
    constexpr qint64 longest = 100'000; // days; what is more is no date any more
    constexpr qint64 nanosecondsOfDay = 86'400'000'000'000;
    constexpr qint64 nanosecondsOfMillisecond = 1'000'000;
    const qint64 cutoff =
        m_settings.now.toMSecsSinceEpoch() * nanosecondsOfMillisecond -
        std::clamp(m_settings.oldFileAgeDays, -longest / 2, longest) * nanosecondsOfDay;
    return identity.modifiedAt && *identity.modifiedAt < cutoff;
}

CategoryScanner::Items CategoryScanner::scanOldDownloads() const
{
    constexpr quint64 minSize = 1024;
    const QString folder = m_host.locations.path(u"~/Downloads");
    std::vector<Found> found;
    for (const InspectedEntry& entry : listedBesideHome(folder)) {
        if (entry.name.startsWith(u'.') || !isOld(entry.identity))
            continue;
        found.push_back(
            {entry.name, folder + u'/' + entry.name, entry.identity,
             entry.identity.isDirectory() ? u"folder.fill"_s : u"arrow.down.circle.fill"_s});
    }
    return measured(std::move(found), minSize, Bound::Exceeded);
}

QString CategoryScanner::screenshotLocation() const
{
    const QString location =
        m_host.defaults.persistentDomain(u"com.apple.screencapture"_s)[u"location"_s].toString();
    return location.isEmpty()
               ? QString()
               : standardizedPath(m_host.locations.path(location), m_host.locations.home());
}

CategoryScanner::Items CategoryScanner::scanScreenshots() const
{
    QStringList folders = this->folders(screenshotFolders, u"screenshots");
    if (const QString location = screenshotLocation(); !location.isEmpty())
        folders += location;
    folders.removeDuplicates();
    const QSet<QString> endings = this->endings(screenshotExtensions, u"screenshotExtensions");
    Items items;
    for (const QString& folder : std::as_const(folders)) {
        for (const InspectedEntry& entry : listed(folder)) {
            if (beginsLikeScreenshot(entry.name) && endings.contains(extensionOf(entry.name)) &&
                entry.identity.isRegularFile() && entry.identity.size > 0U && isOld(entry.identity))
                items.push_back(fileItem(entry.name, folder + u'/' + entry.name, entry.identity,
                                         u"camera.viewfinder"_s));
        }
    }
    return items;
}

} // namespace brivane
