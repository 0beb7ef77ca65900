#pragma once

#include "scanner/FileNode.h"

namespace brivane {

/// A node with the size that it had at one moment: the tree may be growing. The node is valid as
/// long as someone holds its tree.
struct SizedNode {
    FileNode* node = nullptr;
    std::uint64_t size = 0; ///< bytes
};

/// The children of `directory`, largest first, equal sizes in the order of the tree. Those of size
/// 0 are left out, but for folders that could not be read, which come last. The tree stays as it
/// is. Any thread; for a directory of many thousands, not the GUI's.
std::vector<SizedNode> childrenBySize(const FileNode& directory);

/// Those of childrenBySize() that a chart shows: the ones with a size.
std::span<const SizedNode> withSize(std::span<const SizedNode> children);

} // namespace brivane
