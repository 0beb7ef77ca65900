#pragma once

#include "cleaner/CleanerCategory.h"
#include "platform/FolderListing.h"
#include "platform/Locations.h"

#include <QDateTime>
#include <QSet>
#include <QStringList>

#include <atomic>
#include <cstdint>
#include <optional>
#include <span>
#include <stop_token>
#include <vector>

namespace brivane {

struct FolderRule;
struct Host;

/// Finds the junk of one category after the other. It touches nothing, and what it cannot read is
/// not there.
///
/// An object is for one scan and belongs on a worker: every function blocks for as long as the disk
/// takes, and gives what it has when the stop is requested. Bounds of sizes are part of each rule:
/// some take what just reaches them, some do not.
class CategoryScanner {
public:
    struct Settings {
        QDateTime now;
        qint64 oldFileAgeDays = 30; ///< after which a download or a screenshot is old
    };

    /// `host` has to outlive this.
    CategoryScanner(Host& host, const Settings& settings, std::stop_token stop);

    /// Everything of this type, in the order in which it was come across.
    [[nodiscard]] std::vector<CleanerItem> scanCategory(CleanerCategory::CategoryType type) const;
    /// The types that there are here whatever is found of them.
    [[nodiscard]] std::vector<CleanerCategory::CategoryType> baseCategoriesHere() const;
    /// The types of developer tools that there are signs of here.
    [[nodiscard]] std::vector<CleanerCategory::CategoryType> detectDeveloperCategories() const;

private:
    using Type = CleanerCategory::CategoryType;
    using Items = std::vector<CleanerItem>;
    struct Found {
        QString name;
        QString path;
        FileIdentity identity;
        QString icon;
    };
    struct NamedPath {
        QString name;
        QString path;
    };
    enum class Bound {
        Reached, ///< as large is large enough
        Exceeded ///< only what is larger counts
    };

    // What the rules are made of.
    [[nodiscard]] Items scanFolder(const FolderRule& rule) const;
    [[nodiscard]] Items scanDirectoryContents(const QString& path, quint64 minSize,
                                              const QSet<QString>& excludeNames) const;
    [[nodiscard]] Items scanNamedPaths(Type type) const;
    [[nodiscard]] Items scanNamedPaths(std::span<const NamedPath> paths, quint64 minSize,
                                       const QString& icon) const;
    /// Sizes of all of them at once; those that are large enough become items.
    [[nodiscard]] Items measured(std::vector<Found> found, quint64 minSize, Bound bound) const;
    /// The same for what exceeds the bound, and counts as a folder whatever it is.
    [[nodiscard]] Items measuredAsFolders(std::vector<Found> found, quint64 minSize) const;
    /// The regular files below these folders that have one of these endings and are no smaller, as
    /// many as `most`; hidden ones are left out.
    [[nodiscard]] Items searchFiles(const QStringList& folders, const QSet<QString>& endings,
                                    quint64 minSize, std::size_t most, const QString& icon) const;
    /// Where to begin in order to walk through these folders, which may be links.
    [[nodiscard]] QStringList walkStarts(const QStringList& folders) const;
    /// What stands in a table, and what the desktop adds to it.
    [[nodiscard]] QSet<QString> texts(std::span<const QStringView> table,
                                      QStringView additions = {}) const;
    [[nodiscard]] std::vector<InspectedEntry> listed(const QString& path) const;
    /// The same of a folder in which anything may be junk: nothing where a link made it the home
    /// directory, or one that holds that.
    [[nodiscard]] std::vector<InspectedEntry> listedBesideHome(const QString& path) const;

    // Where junk lies. What the desktop has beyond the tables comes after them.
    [[nodiscard]] std::vector<NamedPath> additions(QStringView table) const;
    [[nodiscard]] QStringList folders(std::span<const QStringView> table,
                                      QStringView additions = {}) const;
    [[nodiscard]] QSet<QString> coveredElsewhere() const;

    // Rules that are more than a row.
    [[nodiscard]] std::vector<Found> findLogs(std::span<const NamedPath> folders) const;
    [[nodiscard]] Items scanDiskImages() const;
    [[nodiscard]] Items scanApplicationLeftovers() const;
    [[nodiscard]] Items scanOldDownloads() const;
    [[nodiscard]] Items scanLargeFiles() const;
    [[nodiscard]] Items scanScreenshots() const;
    [[nodiscard]] Items scanNodeModules() const;
    [[nodiscard]] Items scanIOSBackups() const;
    void findNodeModules(const QString& folder, int depth, int maxDepth,
                         std::vector<Found>& found) const;
    [[nodiscard]] QString screenshotLocation() const;
    [[nodiscard]] bool isOld(const FileIdentity& identity) const;
    [[nodiscard]] static CleanerItem fileItem(QString name, QString path,
                                              const FileIdentity& identity, const QString& icon);

    Host& m_host;
    const Settings m_settings;
    const std::stop_token m_stop;
};

/// What of `identity` is demanded of an item at the moment of its removal: a folder may have
/// changed inside.
[[nodiscard]] FileIdentity demandedOf(FileIdentity identity);

} // namespace brivane
