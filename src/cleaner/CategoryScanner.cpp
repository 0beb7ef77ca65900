#include "cleaner/CategoryScanner.h"

#include "cleaner/tables/BaseCategories.h"
#include "cleaner/tables/CachesCoveredElsewhere.h"
#include "cleaner/tables/DeveloperTools.h"
#include "cleaner/tables/FolderRules.h"
#include "cleaner/tables/NamedPlaceRules.h"
#include "cleaner/tables/NamedPlaces.h"
#include "cleaner/tables/SearchedFolders.h"
#include "platform/FolderSizes.h"
#include "platform/Host.h"
#include "platform/LiesIn.h"
#include "platform/PathText.h"
#include "platform/StandardizedPath.h"

#include <algorithm>
#include <filesystem>
#include <ranges>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

/// Whether something is at `path`; a link that leads nowhere is nothing.
bool exists(const QString& path)
{
    std::error_code failure;
    return std::filesystem::exists(PathText::toBytes(path).toStdString(), failure);
}

} // namespace

FileIdentity demandedOf(FileIdentity identity)
{
    identity.changedAt.reset();
    if (identity.isDirectory()) {
        identity.size.reset();
        identity.modifiedAt.reset();
    }
    return identity;
}

CategoryScanner::CategoryScanner(Host& host, const Settings& settings, std::stop_token stop)
    : m_host(host)
    , m_settings(settings)
    , m_stop(std::move(stop))
{
}

std::vector<CleanerItem> CategoryScanner::scanCategory(Type type) const
{
    // The scans of all types wait in line, also behind one that was stopped.
    if (m_stop.stop_requested())
        return {};
    switch (type) {
    case Type::unusedDiskImages:
        return scanDiskImages();
    case Type::applicationLeftovers:
        return scanApplicationLeftovers();
    case Type::downloads:
        return scanOldDownloads();
    case Type::largeFiles:
        return scanLargeFiles();
    case Type::screenshots:
        return scanScreenshots();
    case Type::nodeModules:
        return scanNodeModules();
    case Type::iOSBackups:
        return scanIOSBackups();
    default:
        break;
    }
    const auto folder = std::ranges::find(folderRules, type, &FolderRule::type);
    return folder != std::end(folderRules) ? scanFolder(*folder) : scanNamedPaths(type);
}

std::vector<CleanerCategory::CategoryType> CategoryScanner::baseCategoriesHere() const
{
    const Locations& locations = m_host.locations;
    std::vector<Type> types(std::begin(baseCategories), std::end(baseCategories));
    // Of other machines, which may have left something here all the same.
    const QSet<QString> foreign = texts({}, u"foreignCategories");
    const auto isElsewhere = [&](Type type) {
        const auto isPlaceOfIt = [&](const NamedPlace& place) {
            return place.type == type && exists(locations.path(place.path));
        };
        return foreign.contains(factsOf(type).rawValue) &&
               std::ranges::none_of(namedPlaces, isPlaceOfIt) &&
               !(type == Type::iOSBackups && exists(locations.path(backupFolder)));
    };
    std::erase_if(types, isElsewhere);
    return types;
}

std::vector<CleanerCategory::CategoryType> CategoryScanner::detectDeveloperCategories() const
{
    const Locations& locations = m_host.locations;
    const std::vector<NamedPath> desktopTools = additions(u"developerTools");
    std::vector<Type> types;
    for (const DeveloperTool& tool : developerTools) {
        if (std::ranges::find(types, tool.type) != types.end())
            continue;
        const bool isHere =
            exists(locations.path(tool.path)) ||
            std::ranges::any_of(desktopTools, [&](const NamedPath& desktopTool) {
                return desktopTool.name == factsOf(tool.type).rawValue && exists(desktopTool.path);
            });
        if (isHere)
            types.push_back(tool.type);
    }
    return types;
}

std::vector<InspectedEntry> CategoryScanner::listed(const QString& path) const
{
    auto entries = inspectFolder(path, m_stop);
    return entries ? std::move(*entries) : std::vector<InspectedEntry>();
}

std::vector<InspectedEntry> CategoryScanner::listedBesideHome(const QString& path) const
{
    const bool holdsHome = liesIn(m_host.locations.realHome(), withoutLinks(path));
    return holdsHome ? std::vector<InspectedEntry>() : listed(path);
}

CategoryScanner::Items CategoryScanner::scanFolder(const FolderRule& rule) const
{
    const QSet<QString> excludeNames = rule.hasExclusions ? coveredElsewhere() : QSet<QString>();
    Items items =
        scanDirectoryContents(m_host.locations.path(rule.path), rule.minSize, excludeNames);
    std::vector<Found> more;
    if (rule.type == Type::applicationLogs)
        more = findLogs(additions(u"foldersWithLogs"));
    for (const NamedPath& place : additions(factsOf(rule.type).rawValue)) {
        const auto identity = FileIdentity::of(place.path);
        if (identity && identity->isDirectory() && !excludeNames.contains(place.name))
            more.push_back({place.name, place.path, *identity, u"folder.fill"_s});
    }
    std::ranges::move(measured(std::move(more), rule.minSize, Bound::Reached),
                      std::back_inserter(items));
    return items;
}

CategoryScanner::Items
CategoryScanner::scanDirectoryContents(const QString& path, quint64 minSize,
                                       const QSet<QString>& excludeNames) const
{
    std::vector<Found> found;
    for (InspectedEntry& entry : listedBesideHome(path)) {
        if ((entry.name.startsWith(u'.') && entry.name != u".Trash") ||
            excludeNames.contains(entry.name))
            continue;
        found.push_back({entry.name, path + u'/' + entry.name, entry.identity,
                         entry.identity.isDirectory() ? u"folder.fill"_s : u"doc.fill"_s});
    }
    return measured(std::move(found), minSize, Bound::Reached);
}

CategoryScanner::Items CategoryScanner::scanNamedPaths(Type type) const
{
    const auto* rule = std::ranges::find(namedPlaceRules, type, &NamedPlaceRule::type);
    std::vector<NamedPath> places;
    for (const NamedPlace& place : namedPlaces) {
        if (place.type == type)
            places.push_back({place.name.toString(), m_host.locations.path(place.path)});
    }
    std::ranges::move(additions(factsOf(type).rawValue), std::back_inserter(places));
    return scanNamedPaths(places, rule->minSize, rule->icon.toString());
}

CategoryScanner::Items CategoryScanner::scanNamedPaths(std::span<const NamedPath> paths,
                                                       quint64 minSize, const QString& icon) const
{
    std::vector<Found> found;
    for (const NamedPath& place : paths) {
        const auto identity = FileIdentity::of(place.path);
        const bool isListed =
            std::ranges::find(found, place.path, &Found::path) != found.end(); // by another name
        if (identity && !identity->isLink() && !isListed)
            found.push_back({place.name, place.path, *identity, icon});
    }
    return measuredAsFolders(std::move(found), minSize);
}

CategoryScanner::Items CategoryScanner::measuredAsFolders(std::vector<Found> found,
                                                          quint64 minSize) const
{
    Items items = measured(std::move(found), minSize, Bound::Exceeded);
    for (CleanerItem& item : items)
        item.isDirectory = true;
    return items;
}

CategoryScanner::Items CategoryScanner::measured(std::vector<Found> found, quint64 minSize,
                                                 Bound bound) const
{
    QStringList folders;
    std::vector<quint64> sizes;
    sizes.reserve(found.size());
    for (const Found& one : found) {
        if (one.identity.isDirectory())
            folders += one.path;
        sizes.push_back(one.identity.size.value_or(0));
    }
    const std::vector<FolderSize> measuredFolders = FolderSizes::measureNow(folders, {}, m_stop);

    Items items;
    std::size_t folder = 0;
    for (std::size_t i = 0; i < found.size(); ++i) {
        Found& one = found[i];
        const bool isDirectory = one.identity.isDirectory();
        if (isDirectory)
            sizes[i] = measuredFolders[folder++].bytes;
        if (sizes[i] < minSize || (bound == Bound::Exceeded && sizes[i] == minSize))
            continue;
        items.push_back({.name = std::move(one.name),
                         .path = std::move(one.path),
                         .size = sizes[i],
                         .isDirectory = isDirectory,
                         .iconName = std::move(one.icon),
                         .identity = demandedOf(one.identity)});
    }
    return items;
}

std::vector<CategoryScanner::NamedPath> CategoryScanner::additions(QStringView table) const
{
    std::vector<NamedPath> places;
    for (const Locations::Addition& addition : m_host.locations.additions(table)) {
        const qsizetype star = addition.value.indexOf(u"/*"_s);
        if (star < 0) {
            places.push_back({addition.name, addition.value});
            continue;
        }
        const QString rest = addition.value.sliced(star + 2);
        for (const InspectedEntry& entry : listed(addition.value.first(star))) {
            if (entry.identity.isDirectory())
                places.push_back({QString(addition.name).replace(u'*', entry.name),
                                  addition.value.first(star + 1) + entry.name + rest});
        }
    }
    return places;
}

QStringList CategoryScanner::folders(std::span<const QStringView> table,
                                     QStringView additionsTable) const
{
    QStringList paths;
    for (const QStringView path : table)
        paths += m_host.locations.path(path);
    for (const NamedPath& place : additions(additionsTable))
        paths += place.path;
    paths.removeDuplicates();
    return paths;
}

QSet<QString> CategoryScanner::coveredElsewhere() const
{
    // Where the place lies elsewhere on this machine, the name stands for something else.
    const QString caches = m_host.locations.path(u"~/Library/Caches");
    QSet<QString> names = texts({}, u"cachesCoveredElsewhere");
    for (const QStringView name : cachesCoveredElsewhere) {
        const QString folder = caches + u'/' + name.toString();
        if (std::ranges::any_of(namedPlaces, [&](const NamedPlace& place) {
                return liesIn(m_host.locations.path(place.path), folder);
            }))
            names.insert(name.toString());
    }
    return names;
}

} // namespace brivane
