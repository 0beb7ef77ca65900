#pragma once

#include "platform/Clock.h"
#include "platform/DefaultFileSystem.h"
#include "platform/InstalledApplications.h"
#include "platform/Locations.h"
#include "platform/NotificationCenter.h"
#include "platform/Pasteboard.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"

#include <memory>

namespace brivane {

class Volumes;

/// The machine, as far as the program reaches it: the one value that services take.
///
/// Holds references only; whoever makes a Host keeps what it refers to alive longer.
struct Host {
    Locations locations;
    FileSystemProviding& fileSystem;
    UserDefaults& defaults;
    Volumes& volumes;
    Clock& clock;
    NotificationCenter& notifications;
    Workspace& workspace;
    Pasteboard& pasteboard;
    InstalledApplications& installedApplications;

    /// The real machine, made on first use and alive to the end of the process, so that whoever
    /// ends it sees to the preferences being saved. For `main`; everybody else is given one.
    static Host& shared();
};

/// A Host together with what it refers to.
class OwnedHost {
public:
    /// The preferences lie where `locations` puts them, and are saved when this ends. What is null
    /// is the machine's own.
    explicit OwnedHost(const Locations& locations, std::unique_ptr<Volumes> volumes = nullptr,
                       std::unique_ptr<Clock> clock = nullptr,
                       std::unique_ptr<Workspace> workspace = nullptr,
                       std::unique_ptr<Pasteboard> pasteboard = nullptr);
    /// With another file system, which has to outlive this.
    OwnedHost(const Locations& locations, FileSystemProviding& fileSystem,
              std::unique_ptr<Clock> clock = nullptr);
    ~OwnedHost();

    [[nodiscard]] Host& host() { return m_host; }

private:
    OwnedHost(const Locations& locations, FileSystemProviding* fileSystem,
              std::unique_ptr<Volumes> volumes, std::unique_ptr<Clock> clock,
              std::unique_ptr<Workspace> workspace, std::unique_ptr<Pasteboard> pasteboard);

    DefaultFileSystem m_ownFileSystem;
    FileSystemProviding& m_fileSystem;
    UserDefaults m_defaults;
    std::unique_ptr<Volumes> m_volumes;
    std::unique_ptr<Clock> m_clock;
    std::unique_ptr<Workspace> m_workspace;
    std::unique_ptr<Pasteboard> m_pasteboard;
    std::unique_ptr<InstalledApplications> m_installedApplications;
    NotificationCenter m_notifications;
    Host m_host;
};

} // namespace brivane
