#pragma once

#include "platform/FileMove.h"
#include "platform/Result.h"

#include <QByteArrayView>

#include <cstdint>

#include <sys/types.h>

// Making folders and writing small files such that a crash leaves the old or the new, never a part.
// Any thread; all block for as long as the disk takes.
namespace brivane {

/// Replaces the content of the file at `path`, or makes it, with mode `mode` less the umask.
///
/// A reader sees the old or the new content, and so does whoever comes after a crash. A link at
/// `path` is replaced, not followed. After a failure the old content stands and nothing else is
/// left, with one exception: when syncing the folder is what failed (FileOperation::Sync), the new
/// content may stand already, whole, but is not known to survive a crash.
Result<> writeFileAtomically(const QString& path, QByteArrayView bytes, mode_t mode);

/// Makes the folder `path` with all missing parents, each with mode `mode` less the umask. A folder
/// that is there already is success and keeps its mode. A link among the parents or at the end
/// that `links` refuses is ENOTDIR; behind one that is followed nothing is made. After a failure
/// the folders made so far stay.
Result<> makeDirectoryWithParents(const QString& path, mode_t mode,
                                  ParentLinks links = ParentLinks::Follow);

/// Sees to it that a file at `path` takes up at least `bytes` bytes of its volume, and not more
/// than twice as many, on the disk when this returns. What it holds has no meaning; its mode is
/// 0600. EEXIST when something else stands there: a link, a folder, a file with other links or of
/// another user. After a failure, ENOSPC above all, what was reserved before still is, and a file
/// that was not there is not there.
Result<> reserveSpace(const QString& path, std::uint64_t bytes);

/// Removes the file that reserveSpace() made, and syncs, so that what is written next has its room:
/// on tmpfs at once; on ext4 and XFS when the journal is written, which is waited for; on btrfs
/// with its next transaction, which it brings forward by itself when a write finds no room. A file
/// that is missing is success. EEXIST as above, and nothing is removed.
Result<> releaseSpace(const QString& path);

/// A name that nothing has yet, for which isTemporaryName() holds.
[[nodiscard]] QString makeTemporaryName();

/// Whether a file of this name is one that the writing or moving here makes for a moment, and that
/// a crash may have left behind.
[[nodiscard]] bool isTemporaryName(const QString& name);

} // namespace brivane
