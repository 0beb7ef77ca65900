#pragma once

#include "platform/FileMove.h"
#include "platform/FileRemoval.h"
#include "platform/Result.h"

#include <QByteArrayView>

#include <sys/types.h>

namespace brivane {

/// Everything through which the program changes files. Tests put one in its place that breaks
/// exactly one call; DefaultFileSystem does the real thing.
///
/// What leaves a Trash of the desktop takes with it what the Trash has written down of it, once all
/// of it is gone from there; where that fails the outcome is the same. What is moved into a Trash
/// gets no such record.
///
/// Paths are absolute, without "." and ".."; one that is not is EINVAL. No call follows a link in
/// the last component. Calls block and may come from any thread. Failure is always a value.
class FileSystemProviding {
public:
    virtual ~FileSystemProviding() = default;

    /// Moves an item to the Trash and gives the path where it now lies; see moveToTrash().
    virtual Result<QString> trashItem(const QString& path,
                                      const std::optional<FileIdentity>& expected = {}) = 0;
    /// Removes an item and all that it holds; see removeTree().
    [[nodiscard]] virtual RemovalReport
    removeItem(const QString& path, const std::optional<FileIdentity>& expected = {}) = 0;
    /// Moves an item, never replacing; see moveWithoutReplacing().
    virtual Result<Moved> moveItem(const QString& from, const QString& to,
                                   const MoveOptions& options = {}) = 0;
    /// Makes a folder and its missing parents; see makeDirectoryWithParents().
    virtual Result<> makeDirectory(const QString& path, mode_t mode,
                                   ParentLinks links = ParentLinks::Follow) = 0;
    /// Replaces a file's content as a whole; see writeFileAtomically().
    virtual Result<> writeAtomically(const QString& path, QByteArrayView bytes, mode_t mode) = 0;
    /// Keeps room on a volume, in a file at `path`, for a day on which it is full; see
    /// reserveSpace().
    virtual Result<> reserveSpace(const QString& path, std::uint64_t bytes) = 0;
    /// Gives that room back to what is written next; see releaseSpace().
    virtual Result<> releaseSpace(const QString& path) = 0;
};

} // namespace brivane
