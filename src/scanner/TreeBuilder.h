#pragma once

#include "platform/Walk.h"
#include "scanner/FileTree.h"

namespace brivane {

/// Builds a tree from the entries of a walk and keeps its sums.
///
/// Of each open directory it knows what its parents have not been told yet. So an entry costs the
/// same at any depth; settle() passes everything on, which costs the depth once.
/// Belongs to the thread of the walk.
class TreeBuilder {
public:
    explicit TreeBuilder(std::shared_ptr<FileTree> tree);

    [[nodiscard]] FileTree& tree() { return *m_tree; }

    /// Takes the entry that `walk` has just given.
    void add(const WalkEntry& entry, const Walk& walk);
    /// Makes the sizes of all open directories what has been added below them.
    void settle();
    /// After the last entry: all sums exact, all children sorted.
    void finish();

private:
    struct OpenDirectory {
        FileNode* node = nullptr;
        std::uint64_t unsettledBytes = 0; ///< in the size of `node`, but not in its parent's
        std::int64_t files = 0;           ///< in what has been left, and directly in `node`
    };

    void addLeaf(const WalkEntry& entry);
    void enter(const WalkEntry& entry);
    void leave();
    void addIssue(const WalkEntry& entry, const Walk& walk);

    const std::shared_ptr<FileTree> m_tree;
    const FileTree::BuildingRight m_right;
    std::vector<OpenDirectory> m_open;
};

} // namespace brivane
