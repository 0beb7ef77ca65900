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
#include <array>
#include <limits>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

/// Endings to look for in very many names: without a QString for each. Any thread.
class NameEndings {
public:
    explicit NameEndings(const QSet<QString>& endings)
    {
        for (const QString& ending : endings)
            m_endings.insert(ending.toStdString());
    }

    /// As PathText::extension() has it, of a name or a path.
    [[nodiscard]] bool isAtEnd(std::string_view name) const
    {
        name.remove_prefix(name.rfind('/') + 1); // npos + 1 is 0
        const std::size_t dot = name.rfind('.');
        if (dot == std::string_view::npos || dot == 0 || name.size() - dot > longest)
            return false;
        std::array<char, longest> ending = {};
        const auto end = std::ranges::transform(name.substr(dot + 1), ending.begin(), asciiLower);
        return m_endings.contains(std::string_view(ending.begin(), end.out));
    }

private:
    static char asciiLower(char letter)
    {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    }

    static constexpr std::size_t longest = 32; ///< what is longer is none
    std::set<std::string, std::less<>> m_endings;
};

FileIdentity identityOf(const WalkAttributes& attributes, const ObjectId& folder)
{
    return {.device = attributes.device,
            .inode = attributes.inode,
            .size = attributes.size,
            .modifiedAt = attributes.modifiedAt,
            .changedAt = attributes.changedAt,
            .type = attributes.mode & S_IFMT,
            .folder = folder};
}

/// Names may come in decomposed letters, beginnings do not.
bool beginsLikeOneOf(const QString& name, const QSet<QString>& beginnings)
{
    const QString composed = name.normalized(QString::NormalizationForm_C);
    return std::ranges::any_of(
        beginnings, [&](const QString& beginning) { return composed.startsWith(beginning); });
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

QSet<QString> CategoryScanner::texts(std::span<const QStringView> table,
                                     QStringView additionsTable) const
{
    QSet<QString> all;
    for (const QStringView text : table)
        all.insert(text.toString());
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
    QSet<QString> seen; // one of the folders may lie in another
    const NameEndings wanted(endings);
    QString folderPath; // of the last file, so that each folder is looked for once
    std::optional<ObjectId> folder;
    for (const QString& start : walkStarts(folders)) {
        Walk walk(PathText::toBytes(start),
                  {.includeHidden = false,
                   .directoryAttributes = false,
                   .needsAttributes = [&](std::string_view name) { return wanted.isAtEnd(name); },
                   .cancelled = &isStopped});
        while (const WalkEntry* entry = items.size() < most ? walk.next() : nullptr) {
            // Whose name has none of the endings has not been asked for its size either.
            if (entry->kind != WalkKind::File || entry->attributes.size < minSize ||
                !wanted.isAtEnd(entry->name))
                continue;
            const QString path = PathText::fromBytes(walk.path());
            if (liesIn(path, trash) || seen.contains(path))
                continue;
            seen.insert(path);
            if (const QString parent = path.first(path.lastIndexOf(u'/')); parent != folderPath) {
                folderPath = parent;
                const auto id = FileIdentity::folderOf(path);
                folder = id ? std::optional(*id) : std::nullopt;
            }
            if (folder)
                items.push_back(fileItem(PathText::lastComponent(path), path,
                                         identityOf(entry->attributes, *folder), icon));
        }
    }
    return items;
}

CategoryScanner::Items CategoryScanner::scanDiskImages() const
{
    const QStringList folders = this->folders(diskImageFolders);
    const QSet<QString> endings = texts(diskImageExtensions, u"diskImageExtensions");
    return searchFiles(folders, endings, 1, std::numeric_limits<std::size_t>::max(),
                       u"opticaldisc.fill"_s);
}

CategoryScanner::Items CategoryScanner::scanLargeFiles() const
{
    constexpr quint64 smallest = 104'857'600;
    constexpr std::size_t most = 50;
    const QStringList folders = this->folders(largeFileFolders, u"largeFiles");
    const QSet<QString> endings = texts(largeFileJunkExtensions);
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
    const QSet<QString> endings = texts(screenshotExtensions);
    const QSet<QString> beginnings = texts(screenshotPrefixes, u"screenshotPrefixes");
    Items items;
    for (const QString& folder : std::as_const(folders)) {
        for (const InspectedEntry& entry : listed(folder)) {
            if (endings.contains(PathText::extension(entry.name)) &&
                beginsLikeOneOf(entry.name, beginnings) && entry.identity.isRegularFile() &&
                entry.identity.size > 0U && isOld(entry.identity))
                items.push_back(fileItem(entry.name, folder + u'/' + entry.name, entry.identity,
                                         u"camera.viewfinder"_s));
        }
    }
    return items;
}

} // namespace brivane
