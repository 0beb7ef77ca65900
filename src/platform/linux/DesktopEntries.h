#pragma once

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/SoftwarePlaces.h"

#include <QStringList>

#include <vector>

namespace brivane {

/// All desktop entries of this machine, each identifier once: what the user has goes before what
/// the system has.
struct DesktopEntries {
    /// Any thread; blocks. Files that are not entries are passed over.
    [[nodiscard]] static DesktopEntries read(const SoftwarePlaces& places);

    std::vector<DesktopEntry> entries;
    /// Of every file that looks like an entry, also one that could not be understood.
    QStringList ids;
    bool isComplete = true; ///< no folder failed, no bound was met
};

} // namespace brivane
