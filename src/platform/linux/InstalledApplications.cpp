#include "platform/InstalledApplications.h"

#include "platform/Locations.h"
#include "platform/linux/InstalledSoftware.h"
#include "platform/linux/SoftwarePlaces.h"

namespace brivane {

namespace {

class BundledApplications final : public InstalledApplications {
public:
    explicit BundledApplications(Locations locations)
        : m_locations(std::move(locations))
    {
    }

    InstalledNames names() override
    {
        return {getInstalledAppBundleIds(m_locations),
                [](QStringView entryName, const QSet<QString>& installed) {
                    return entryName.contains(u'.') && !installed.contains(entryName.toString());
                }};
    }

private:
    Locations m_locations;
};

class DesktopApplications final : public InstalledApplications {
public:
    explicit DesktopApplications(const Locations& locations)
        : m_places(SoftwarePlaces::of(locations))
    {
    }

    InstalledNames names() override { return readInstalledNames(m_places); }

private:
    const SoftwarePlaces m_places;
};

} // namespace

std::unique_ptr<InstalledApplications>
InstalledApplications::ofThisMachine(const Locations& locations)
{
    if (locations.isLinuxDesktop())
        return std::make_unique<DesktopApplications>(locations);
    return std::make_unique<BundledApplications>(locations);
}

} // namespace brivane
