// The rules of CategoryScanner that look for folders.

#include "cleaner/CategoryScanner.h"
#include "cleaner/tables/SearchedFolders.h"
#include "platform/FileReading.h"
#include "platform/Host.h"
#include "platform/InstalledApplications.h"
#include "platform/PathText.h"
#include "platform/PropertyList.h"

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

/// Whether this is the name of a log, rotated and packed ones too, or of a folder of them.
bool isNameOfLog(const InspectedEntry& entry)
{
    const QString name = entry.name.toLower();
    if (entry.identity.isDirectory())
        return name == u"log" || name == u"logs";
    return entry.identity.isRegularFile() && (name.endsWith(u".log") || name.contains(u".log."));
}

/// The device that a backup is of; none where its list does not say.
QString deviceName(const QString& backup)
{
    constexpr qsizetype largest = 16 << 20;
    const auto bytes = readWholeFile(backup + u"/Info.plist"_s, largest);
    const std::optional<QVariant> list = bytes ? PropertyList::read(*bytes) : std::nullopt;
    const QVariant name = list ? list->toMap().value(u"Device Name"_s) : QVariant();
    return name.typeId() == QMetaType::QString ? name.toString() : QString();
}

} // namespace

std::vector<CategoryScanner::Found>
CategoryScanner::findLogs(std::span<const NamedPath> folders) const
{
    std::vector<Found> found;
    const auto take = [&](const QString& folder, const InspectedEntry& entry, const QString& name) {
        found.push_back({name, folder + u'/' + entry.name, entry.identity,
                         entry.identity.isDirectory() ? u"folder.fill"_s : u"doc.fill"_s});
    };
    // Programs keep other things beside their logs: those go that are logs by their names.
    for (const NamedPath& place : folders) {
        for (const InspectedEntry& entry : listed(place.path)) {
            if (entry.name.startsWith(u'.'))
                continue;
            if (isNameOfLog(entry)) {
                take(place.path, entry, entry.name);
                continue;
            }
            if (!entry.identity.isDirectory())
                continue;
            const QString folder = place.path + u'/' + entry.name;
            for (const InspectedEntry& inner : listed(folder)) {
                if (!inner.name.startsWith(u'.') && isNameOfLog(inner))
                    take(folder, inner, entry.name + u'/' + inner.name);
            }
        }
    }
    return found;
}

CategoryScanner::Items CategoryScanner::scanApplicationLeftovers() const
{
    constexpr quint64 minSize = 10240;
    const InstalledNames installed = m_host.installedApplications.names();
    std::vector<Found> found;
    const QStringList folders = this->folders(leftoverFolders, u"leftovers");
    for (const QString& folder : folders) {
        for (const InspectedEntry& entry : listedBesideHome(folder)) {
            if (installed.isLeftover(entry.name))
                found.push_back(
                    {entry.name, folder + u'/' + entry.name, entry.identity, u"xmark.app.fill"_s});
        }
    }
    return measuredAsFolders(std::move(found), minSize);
}

CategoryScanner::Items CategoryScanner::scanNodeModules() const
{
    constexpr quint64 minSize = 1'048'576;
    constexpr int maxDepth = 3;
    Items items = scanNamedPaths(Type::nodeModules);
    std::vector<Found> found;
    for (const QStringView folder : projectFolders)
        findNodeModules(m_host.locations.path(folder), 0, maxDepth, found);
    QSet<QString> seen; // one of the folders may lie in another
    std::erase_if(found, [&seen](const Found& one) {
        const bool isListed = seen.contains(one.path);
        seen.insert(one.path);
        return isListed;
    });
    std::ranges::move(measuredAsFolders(std::move(found), minSize), std::back_inserter(items));
    return items;
}

void CategoryScanner::findNodeModules(const QString& folder, int depth, int maxDepth,
                                      std::vector<Found>& found) const
{
    if (depth >= maxDepth)
        return;
    // Documents may lie here by the thousand: what is no folder by the listing is not looked at.
    const auto listing = listFolder(folder);
    if (!listing)
        return;
    for (const FolderListing::Item& entry : listing->items) {
        if (m_stop.stop_requested())
            return;
        if (entry.name.startsWith(u'.') || entry.kind != FolderListing::Item::Kind::Folder)
            continue;
        const QString path = folder + u'/' + entry.name;
        const auto identity = FileIdentity::of(path);
        if (!identity || !identity->isDirectory())
            continue; // a link
        if (entry.name == u"node_modules")
            found.push_back({u"node_modules (%1)"_s.arg(PathText::lastComponent(folder)), path,
                             *identity, u"cube.fill"_s});
        else if (entry.name != u"Library" && entry.name != u"Applications")
            findNodeModules(path, depth + 1, maxDepth, found);
    }
}

CategoryScanner::Items CategoryScanner::scanIOSBackups() const
{
    constexpr quint64 minSize = 1'048'576;
    const QString folder = m_host.locations.path(backupFolder);
    std::vector<Found> found;
    for (const InspectedEntry& entry : listed(folder)) {
        if (entry.identity.isDirectory())
            found.push_back({entry.name, folder + u'/' + entry.name, entry.identity, u"iphone"_s});
    }
    Items items = measuredAsFolders(std::move(found), minSize);
    for (CleanerItem& item : items) {
        if (const QString name = deviceName(item.path); !name.isEmpty())
            item.name = name;
    }
    return items;
}

} // namespace brivane
