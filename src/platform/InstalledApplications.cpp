#include "platform/InstalledApplications.h"

#include "platform/Bundle.h"
#include "platform/FolderListing.h"
#include "platform/Locations.h"

using namespace Qt::StringLiterals;

namespace brivane {

InstalledApplications::~InstalledApplications() = default;

QSet<QString> getInstalledAppBundleIds(const Locations& locations)
{
    QSet<QString> identifiers;
    for (const QStringView folder : {u"/Applications", u"~/Applications"}) {
        const QString path = locations.path(folder);
        const Result<FolderListing> listing = listFolder(path);
        if (!listing)
            continue;
        for (const FolderListing::Item& item : listing->items) {
            if (!item.name.endsWith(u".app"))
                continue;
            if (const auto identifier = Bundle::identifier(path + u'/' + item.name))
                identifiers.insert(*identifier);
        }
    }
    return identifiers;
}

} // namespace brivane
