#pragma once

#include "scanner/privileged/NodeIndex.h"

#include <QByteArray>

#include <unordered_set>

namespace brivane {

/// Finds nodes of one tree by their paths; looks through each directory on the way once. Keeps the
/// tree. Belongs to one thread, which may be another than that of the tree.
class NodeFinder {
public:
    /// `root` is the root of its tree.
    explicit NodeFinder(FileNodePtr root);

    /// Whether `path` is that of the root, or lies below it.
    [[nodiscard]] bool covers(const QByteArray& path) const;
    /// Null when the tree has no such node.
    [[nodiscard]] FileNodePtr find(const QByteArray& path);

private:
    const FileNodePtr m_root;
    const QByteArray m_rootPath;
    NodeIndex m_index;
    std::unordered_set<const FileNode*> m_indexed;
};

} // namespace brivane
