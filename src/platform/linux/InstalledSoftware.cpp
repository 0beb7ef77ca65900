#include "platform/linux/InstalledSoftware.h"

#include "platform/FileReading.h"
#include "platform/FolderListing.h"
#include "platform/linux/DesktopEntries.h"
#include "platform/linux/LeftoverRule.h"

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

using Kind = FolderListing::Item::Kind;

/// Some 5 MiB on a desktop with 3000 packages.
constexpr qsizetype largestPackageList = qsizetype(64) << 20;

class Collection {
public:
    explicit Collection(const SoftwarePlaces& places)
        : m_places(places)
    {
    }

    InstalledNames collect()
    {
        // This program, which may well run from where nothing is installed.
        add(u"com.brivane.app"_s);
        addDesktopEntries();
        for (const QString& folder : m_places.data) {
            addNamesIn(folder + u"/dbus-1/services"_s);
            addNamesIn(folder + u"/dbus-1/system-services"_s);
            addNamesIn(folder + u"/metainfo"_s);
        }
        for (const QString& installation : m_places.flatpaks) {
            addNamesIn(installation + u"/app"_s);
            addNamesIn(installation + u"/runtime"_s);
        }
        for (const QString& folder : m_places.programs)
            addNamesIn(folder);
        for (const QStringView folder : {u"/opt", u"/snap", u"/var/lib/snapd/snaps"})
            addNamesIn(m_places.system(folder));
        for (const QStringView folder :
             {u"", u"/Applications", u"/AppImages", u"/Desktop", u"/Downloads"})
            addAppImagesIn(m_places.home % folder);
        addPackages();
        return {m_isInDoubt ? QSet<QString>() : std::move(m_names), &isLeftover};
    }

private:
    void add(QStringView name) { addInstalledName(m_names, name); }

    std::vector<FolderListing::Item> itemsIn(const QString& folder)
    {
        Result<FolderListing> listing = listFolder(folder);
        if (listing)
            return std::move(listing->items);
        m_isInDoubt = m_isInDoubt || !isMissing(listing.error());
        return {};
    }

    /// The names of what is installed in `folder`, each in a file or folder of its own.
    void addNamesIn(const QString& folder)
    {
        for (const FolderListing::Item& item : itemsIn(folder)) {
            QStringView name = item.name;
            for (const QStringView ending :
                 {u".service", u".metainfo.xml", u".appdata.xml", u".snap"}) {
                if (!name.endsWith(ending))
                    continue;
                name.chop(ending.size());
                if (ending == u".snap") // name_revision
                    name.truncate(std::max<qsizetype>(name.lastIndexOf(u'_'), 0));
            }
            if (isAppImage(name))
                addAppImage(name);
            else
                add(name);
        }
    }

    static bool isAppImage(QStringView name)
    {
        return name.endsWith(u".AppImage", Qt::CaseInsensitive);
    }

    /// Nothing says where the name ends that others follow: "Bambu_Studio_linux-v1.AppImage".
    void addAppImage(QStringView name)
    {
        for (qsizetype at = 1; at < name.size(); ++at) {
            if (!name[at].isLetterOrNumber())
                add(name.first(at));
        }
    }

    void addAppImagesIn(const QString& folder)
    {
        for (const FolderListing::Item& item : itemsIn(folder)) {
            if (isAppImage(item.name))
                addAppImage(item.name);
        }
    }

    void addDesktopEntries()
    {
        const DesktopEntries desktop = DesktopEntries::read(m_places);
        m_isInDoubt = m_isInDoubt || !desktop.isComplete;
        for (const QString& id : desktop.ids)
            add(id);
        for (const DesktopEntry& entry : desktop.entries) {
            for (const QString& name : {entry.name, entry.windowClass, entry.flatpak, entry.snap,
                                        entry.program.section(u'/', -1)})
                add(name);
        }
    }

    void addPackages()
    {
        const bool hasDebian = addDebianPackages();
        const bool hasArch = addArchPackages();
        for (const QStringView database :
             {u"/var/lib/rpm", u"/usr/lib/sysimage/rpm", u"/usr/share/rpm"}) {
            for (const FolderListing::Item& item : itemsIn(m_places.system(database))) {
                if (item.name.startsWith(u"Packages") || item.name == u"rpmdb.sqlite")
                    m_isInDoubt = true;
            }
        }
        if (!hasDebian && !hasArch)
            m_isInDoubt = true;
    }

    bool addDebianPackages()
    {
        const Result<QByteArray> status =
            readWholeFile(m_places.system(u"/var/lib/dpkg/status"), largestPackageList);
        if (!status) {
            m_isInDoubt = m_isInDoubt || !isMissing(status.error());
            return false;
        }
        QByteArrayView package;
        for (qsizetype at = 0; at < status->size();) {
            const qsizetype newline = status->indexOf('\n', at);
            const qsizetype end = newline < 0 ? status->size() : newline;
            const QByteArrayView line = QByteArrayView(*status).sliced(at, end - at);
            at = end + 1;
            if (line.startsWith("Package: ")) {
                package = line.sliced(9).trimmed();
            } else if (line.startsWith("Status: ")) {
                // Of what was removed, and not purged, the preferences are still there.
                if (!line.endsWith(" config-files") && !line.endsWith(" not-installed"))
                    add(QString::fromUtf8(package));
            }
        }
        return true;
    }

    /// A folder for each: name-version-release.
    bool addArchPackages()
    {
        const auto packages = itemsIn(m_places.system(u"/var/lib/pacman/local"));
        for (const FolderListing::Item& item : packages) {
            if (item.kind == Kind::Folder)
                add(item.name.section(u'-', 0, -3));
        }
        return !packages.empty();
    }

    const SoftwarePlaces& m_places;
    QSet<QString> m_names;
    bool m_isInDoubt = false;
};

} // namespace

InstalledNames readInstalledNames(const SoftwarePlaces& places)
{
    return Collection(places).collect();
}

} // namespace brivane
