#pragma once

#include <QByteArray>

#include <cstdint>

// The tree of everything that has ever tripped a walk or a removal, built in a folder of the
// caller's, and the helpers that build extreme shapes. For tests and benchmarks; any thread. What
// cannot be built throws std::system_error.
namespace brivane {

struct NastyTreeOptions {
    int levels = 300;              ///< depth of the nested chain
    bool names = true;             ///< a file and a folder for each name that is hard to handle
    bool specialFiles = true;      ///< sockets and FIFOs
    bool unreadableFolders = true; ///< folders of mode 0, one of them with a file in it
    /// When not empty, a link named "elsewhere" leads there; a second device is the usual choice.
    QByteArray elsewhere = {};
};

/// What a tree holds below its own folder. Each hard link counts as a file.
struct NastyTreeCounts {
    std::uint64_t files = 0;
    std::uint64_t folders = 0;
    std::uint64_t links = 0;
    std::uint64_t fifos = 0;
    std::uint64_t sockets = 0;
    std::uint64_t logicalBytes = 0; ///< sum of the sizes of `files`
    /// Of the above, what only those see for whom permissions do not bind.
    std::uint64_t unreadableFiles = 0;

    [[nodiscard]] std::uint64_t entries() const
    {
        return files + folders + links + fifos + sockets;
    }
};

/// Builds the tree in `folder`, which is made and must not exist yet.
NastyTreeCounts buildNastyTree(const QByteArray& folder, const NastyTreeOptions& options = {});

/// Makes every folder directly in `folder` accessible to its owner again, so that a tree with
/// unreadable folders can be cleared away without privileges.
void unlockNastyTree(const QByteArray& folder);

/// Builds `folder` with a chain of `levels` folders named "d" in it, and the file "bottom" in the
/// last. Costs the same for each level, however long the path becomes.
void buildDeepChain(const QByteArray& folder, int levels);

/// Builds `folder` with `entries` empty files in it, named "0", "1", ...
void buildFlatFolder(const QByteArray& folder, int entries);

/// Makes an empty folder on another device than `reference`, in memory. Empty when this machine has
/// none. The caller removes it.
QByteArray makeFolderOnOtherDevice(const QByteArray& reference);

} // namespace brivane
