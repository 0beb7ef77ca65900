#pragma once

#include "platform/FileIdentity.h"
#include "platform/ParentLinks.h"
#include "platform/Result.h"

#include <functional>
#include <optional>
#include <vector>

// Moving a file, or a folder with all that it holds, to a path where nothing stands.
// Any thread; blocks for as long as the disk takes.
namespace brivane {

/// What to do when source and destination are on different devices.
enum class OtherDevice { Copy, Refuse };

struct MoveOptions {
    /// When given, nothing but this object is moved; another one at the path is ESTALE.
    std::optional<FileIdentity> expected = {};
    OtherDevice otherDevice = OtherDevice::Copy; ///< Refuse fails with EXDEV
    /// Of `to`. A link that is not followed is ENOTDIR, too many are ELOOP.
    ParentLinks toParents = ParentLinks::Follow;
    /// The name beside `to` that a copy between devices has until it is whole, so that the caller
    /// knows what a crash leaves: see makeTemporaryName(). Empty for one that nobody knows. EINVAL
    /// when isTemporaryName() denies it; what stands there already stays, and is EEXIST.
    QString temporaryName = {};
    /// Called when such a copy is whole, synced and about to get its place, with what it is by then
    /// (its time of change will differ); so that the caller knows, after a crash, that it is whole.
    std::function<void(const FileIdentity& copy)> onceWhole = {};
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
/// and mounts inside make that fail. Folders of this user's own whose mode is in the way are opened
/// up meanwhile, and have it afterwards.
///
/// After a failure `from` is whole and nothing stands at `to`, but for one case: ESTALE with `to`
/// as the error's path. Then another object took the place of the expected one at the last moment,
/// was moved instead, and could not go back; it lies at `to`. A crash leaves one of the two whole,
/// and perhaps a part under the temporary name; where the file system cannot rename without
/// replacing, perhaps an empty folder at `to`. A Trash's record of what lay in it is
/// DefaultFileSystem's business.
[[nodiscard]] Result<Moved> moveWithoutReplacing(const QString& from, const QString& to,
                                                 const MoveOptions& options = {});

} // namespace brivane
