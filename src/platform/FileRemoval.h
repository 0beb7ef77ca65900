#pragma once

#include "platform/FileError.h"
#include "platform/FileIdentity.h"

#include <cstdint>
#include <optional>
#include <vector>

// Removing a file, or a folder with all that it holds, for good.
//
// No link is ever followed below the parent of the given path, also when a folder is swapped for a
// link in mid-removal: every step is taken from the descriptor of a folder that is known to be the
// one meant. Depth and length of paths do not matter, and few descriptors are held at a time.
// Nothing on another device or mount is touched. Any thread; blocks for as long as the disk takes.
namespace brivane {

/// What became of a removal.
struct RemovalReport {
    /// How many objects are gone by this removal, folders included.
    std::uint64_t removed = 0;
    /// Each object that is still there, with the reason. A folder that stays only because of what
    /// it holds is not listed: what it holds is. Of a folder that could not be entered, only
    /// itself is listed.
    std::vector<FileError> failures;

    [[nodiscard]] bool isComplete() const { return failures.empty(); }
};

/// Removes what stands at `path`, which is absolute and has no "." and no "..".
///
/// When `expected` is given and another object stands there by now, nothing is removed and the
/// failure is ESTALE. A mount point is left alone (EBUSY), and so is one inside (EXDEV). A failure
/// at one object does not keep the others. What somebody else removes meanwhile counts as neither.
///
/// A folder of this user's own whose mode denies what its removal takes, the one at `path` or one
/// below it, is opened up while it is emptied; where it stays it has its exact mode again, unless
/// somebody moved it in between. The mode of the folder that holds `path` is never touched: where
/// that folder may not be changed, a folder in it is not emptied either. Nor is anything beside
/// `path` touched: a Trash's record of it is DefaultFileSystem's business.
[[nodiscard]] RemovalReport removeTree(const QString& path,
                                       const std::optional<FileIdentity>& expected = {});

} // namespace brivane
