#pragma once

#include <QString>

#include <memory>
#include <vector>

namespace brivane {

/// An application that runs. Texts may be strangers', made fit to be shown.
struct RunningApplication {
    QString bundleIdentifier;
    QString localizedName;
    /// Whether it has a presence of its own: a Dock icon on a Mac, a desktop entry that is shown
    /// elsewhere.
    bool isRegular = false;
};

/// The desktop around the program, as far as the program asks something of it. GUI thread; every
/// call returns at once, whatever the desktop does meanwhile. The one exception is
/// runningApplications(), which blocks and is for every other thread.
class Workspace {
public:
    Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    virtual ~Workspace() = default;

    static std::unique_ptr<Workspace> ofThisMachine();

    /// Shows the thing at `path` (absolute) in the file manager, selected in its folder. Where no
    /// file manager can be asked for that, the folder is opened; where that fails too, the reasons
    /// go to the log.
    virtual void reveal(const QString& path) = 0;

    /// The applications of this user that run now, each once, in no order. Looks afresh. May be
    /// called from any thread but the GUI's, from several at a time, and blocks for as long as it
    /// takes to look through the processes.
    [[nodiscard]] virtual std::vector<RunningApplication> runningApplications() = 0;
};

} // namespace brivane
