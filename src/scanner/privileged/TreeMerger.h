#pragma once

#include "scanner/FileTree.h"
#include "scanner/privileged/AdminHelperScript.h"
#include "scanner/privileged/NodeIndex.h"

#include <string>
#include <unordered_set>

namespace brivane {

/// Adds to a tree what the helper has seen and the tree does not have.
///
/// Entries are taken one by one, and become nodes of the tree at once, but no list of children has
/// them, so that no reader comes upon them. merge() then puts them into their places, as good as in
/// one go. Without it they are given back in the end, and the tree is as it was.
///
/// The rules: an entry whose path is known changes nothing. One whose parent is not known gets a
/// folder as its parent, which is put into its own parent if that one is known; otherwise it, and
/// all that comes below it, is counted and not kept.
///
/// Belongs to one thread at a time; other threads may read the tree meanwhile.
class TreeMerger {
public:
    /// `right` is for the tree that is added to.
    explicit TreeMerger(FileTree::BuildingRight right);
    TreeMerger(const TreeMerger&) = delete;
    TreeMerger& operator=(const TreeMerger&) = delete;
    ~TreeMerger();

    /// An entry whose path is not its parent's path and its name cannot come from the helper, and
    /// is passed over.
    void take(const AdminHelperScript::ScanEntry& entry);
    /// How many entries were not known.
    [[nodiscard]] std::int64_t takenCount() const { return m_takenCount; }

    /// Once, in the end. Sums and order of the whole tree are right afterwards, and folders that
    /// were unreadable and have been filled are no issue any more.
    void merge();

private:
    /// What stands at a path.
    struct Place {
        bool isKnown = false;
        FileNode* node = nullptr; ///< null for a known path that is not in the tree

        [[nodiscard]] FileNode* directory() const
        {
            return node && node->isDirectory() ? node : nullptr;
        }
    };

    void indexTree();
    [[nodiscard]] bool isRoot(std::string_view path) const;
    [[nodiscard]] bool isOutside(std::string_view path) const;
    [[nodiscard]] Place placeOf(std::string_view path) const;
    const Place& parentPlace(std::string_view path);
    Place makePlaceholder(std::string_view path);
    Place addDirectory(const Place& parent, std::string_view path, std::string_view name);
    FileNode* make(FileNode* parent, std::string_view name, bool isDirectory, std::uint64_t size);
    void noteIssues(const Place& parent, const AdminHelperScript::ScanEntry& entry);
    [[nodiscard]] FileNode* incompleteDirectory(const ScanIssue& issue) const;

    const FileTree::BuildingRight m_right;
    FileTree& m_tree;
    const FileTree::Mark m_mark;
    const std::string m_rootPath;   ///< without a slash at its end: "" for "/"
    NodeIndex m_index;              ///< all nodes there were, and the directories made since
    std::vector<FileNode*> m_nodes; ///< what has been made, in that order
    std::unordered_set<std::string> m_outside; ///< known paths of directories not in the tree
    std::string m_lastParentPath;
    Place m_lastParent;
    std::unordered_set<std::string> m_issuePaths;
    std::unordered_set<std::string> m_solvedPaths;     ///< issues of entries that have been taken
    std::unordered_set<FileNode*> m_filledDirectories; ///< unreadable, and have been read now
    std::int64_t m_takenCount = 0;
    bool m_isMerged = false;
};

} // namespace brivane
