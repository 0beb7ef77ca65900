#include "platform/Host.h"

#include "platform/Volumes.h"

#include <utility>

namespace brivane {

OwnedHost::OwnedHost(const Locations& locations, std::unique_ptr<Volumes> volumes,
                     std::unique_ptr<Clock> clock, std::unique_ptr<Workspace> workspace,
                     std::unique_ptr<Pasteboard> pasteboard)
    : OwnedHost(locations, static_cast<FileSystemProviding*>(nullptr), std::move(volumes),
                std::move(clock), std::move(workspace), std::move(pasteboard))
{
}

OwnedHost::OwnedHost(const Locations& locations, FileSystemProviding& fileSystem,
                     std::unique_ptr<Clock> clock)
    : OwnedHost(locations, &fileSystem, nullptr, std::move(clock), nullptr, nullptr)
{
}

OwnedHost::OwnedHost(const Locations& locations, FileSystemProviding* fileSystem,
                     std::unique_ptr<Volumes> volumes, std::unique_ptr<Clock> clock,
                     std::unique_ptr<Workspace> workspace, std::unique_ptr<Pasteboard> pasteboard)
    : m_fileSystem(fileSystem ? *fileSystem : m_ownFileSystem)
    , m_defaults(locations.path(u"~/Library/Preferences/com.brivane.app.plist"), m_fileSystem)
    , m_volumes(volumes ? std::move(volumes) : Volumes::ofThisMachine())
    , m_clock(clock ? std::move(clock) : std::make_unique<SystemClock>())
    , m_workspace(workspace ? std::move(workspace) : Workspace::ofThisMachine())
    , m_pasteboard(pasteboard ? std::move(pasteboard) : Pasteboard::ofThisMachine())
    , m_installedApplications(InstalledApplications::ofThisMachine(locations))
    , m_host{locations,    m_fileSystem,  m_defaults,
             *m_volumes,   *m_clock,      m_notifications,
             *m_workspace, *m_pasteboard, *m_installedApplications}
{
}

OwnedHost::~OwnedHost() = default;

} // namespace brivane
