#pragma once

#include <QString>

#include <memory>

namespace brivane {

/// The desktop around the program, as far as the program asks something of it. GUI thread; every
/// call returns at once, whatever the desktop does meanwhile.
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
};

} // namespace brivane
