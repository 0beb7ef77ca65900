#pragma once

#include "platform/FileIdentity.h"
#include "platform/Result.h"

#include <optional>
#include <vector>

// Moving a file, or a folder with all that it holds, to a path where nothing stands.
// Any thread; blocks for as long as the disk takes.
namespace brivane {

/// Whether a link may stand for one of the folders that lead to a path.
enum class ParentLinks { Follow, Refuse };

/// What to do when source and destination are on different devices.
enum class OtherDevice { Copy, Refuse };

struct MoveOptions {
    /// When given, nothing but this object is moved; another one at the path is ESTALE.
    std::optional<FileIdentity> expected = {};
    OtherDevice otherDevice = OtherDevice::Copy; ///< Refuse fails with EXDEV
    ParentLinks toParents = ParentLinks::Follow; ///< Refuse fails with ENOTDIR
};

/// A move that took place.
struct Moved {
    /// Across devices only: what could not be removed at the source after the destination had
    /// become whole, or had changed since it was copied. It is still there.
    std::vector<FileError> leftBehind;
};

/// Moves what stands at `from` to `to`; both are absolute and have no "." and no "..".
///
/// Never replaces anything: whatever stands at `to`, be it a dangling link, is EEXIST. The parent
/// of `to` must exist. Between devices the object is copied beside `to`, with mode, owner (where
/// that is permitted), times, extended attributes, access lists, holes and hard links among what is
/// moved; it is synced, renamed into place, and only then removed at `from`. Sockets, device files
/// and mounts inside make that fail. After a failure `from` is whole and nothing stands at `to`.
[[nodiscard]] Result<Moved> moveWithoutReplacing(const QString& from, const QString& to,
                                                 const MoveOptions& options = {});

} // namespace brivane
