#include "platform/linux/DesktopEntries.h"

#include "platform/FileReading.h"
#include "platform/FolderListing.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

constexpr qsizetype mostEntries = 20'000;
constexpr std::size_t mostFolders = 2'000;
constexpr int deepest = 8; ///< folders in each other; those of Windows' programs are four deep

/// Collects the entries of one folder after the other.
class Collection {
public:
    explicit Collection(const SoftwarePlaces& places)
        : m_places(places)
    {
    }

    void add(const QString& folder, const QString& prefix, int depth)
    {
        const Result<FolderListing> listing = listFolder(folder);
        if (!listing) {
            m_result.isComplete = m_result.isComplete && isMissing(listing.error());
            return;
        }
        // A link may lead back to where it lies.
        if (std::ranges::find(m_seen, listing->folder) != m_seen.end())
            return;
        m_seen.push_back(listing->folder);
        for (const FolderListing::Item& item : listing->items) {
            if (item.kind == FolderListing::Item::Kind::Folder) {
                if (depth < deepest && m_seen.size() < mostFolders)
                    add(folder + u'/' + item.name, prefix + item.name + u'-', depth + 1);
                else
                    m_result.isComplete = false;
            } else if (item.name.endsWith(u".desktop")) {
                addEntry(folder + u'/' + item.name, prefix + item.name.chopped(8),
                         item.kind == FolderListing::Item::Kind::File);
            }
        }
    }

    DesktopEntries take() { return std::move(m_result); }

private:
    void addEntry(const QString& path, const QString& id, bool isFile)
    {
        if (m_ids.contains(id))
            return;
        if (m_ids.size() == mostEntries) {
            m_result.isComplete = false;
            return;
        }
        m_ids.insert(id);
        m_result.ids += id;
        if (!isFile)
            return;
        const Result<QByteArray> content = readWholeFile(path, DesktopEntry::largestFile);
        if (!content)
            return;
        if (auto entry = DesktopEntry::parse(*content, m_places.languages)) {
            entry->id = id;
            m_result.entries.push_back(std::move(*entry));
        }
    }

    const SoftwarePlaces& m_places;
    DesktopEntries m_result;
    QSet<QString> m_ids;
    std::vector<ObjectId> m_seen;
};

} // namespace

DesktopEntries DesktopEntries::read(const SoftwarePlaces& places)
{
    Collection collection(places);
    for (const QString& folder : places.data)
        collection.add(folder + u"/applications"_s, {}, 0);
    return collection.take();
}

} // namespace brivane
