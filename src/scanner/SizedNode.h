#pragma once

#include "scanner/FileNode.h"

namespace brivane {

/// A node with the size that it had at one moment: the tree may be growing. The node is valid as
/// long as someone holds its tree.
struct SizedNode {
    FileNode* node = nullptr;
    std::uint64_t size = 0; ///< bytes
};

/// The children of `directory` that are not empty, largest first, equal sizes in the order of the
/// tree. The tree stays as it is. Any thread; for a directory of many thousands, one of the pool.
std::vector<SizedNode> childrenBySize(const FileNode& directory);

} // namespace brivane
