#pragma once

#include "platform/FileMove.h"
#include "platform/Result.h"

#include <QByteArrayView>

#include <sys/types.h>

// Making folders and writing small files such that a crash leaves the old or the new, never a part.
// Any thread; both block for as long as the disk takes.
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

/// Whether a file of this name is one that the writing or moving here makes for a moment, and that
/// a crash may have left behind.
[[nodiscard]] bool isTemporaryName(const QString& name);

} // namespace brivane
