#pragma once

#include "scanner/FileNode.h"

#include <QByteArray>
#include <QSemaphore>

#include <functional>
#include <mutex>

// A scanned tree: the memory of its nodes, and the one place that makes and joins them.
//
// Nodes and names lie in large slabs that are given back together, so a node is found in its slab
// and its tree through the slab's head. Lists of children are blocks of their own.
//
// Threads: make(), attach() and the rest that changes the tree belong to one thread at a time: to
// whoever has the BuildingRight. The lock keeps readers on other threads from a list that moves or
// is put into order, and is held for no longer than that. The root stays the same from the first
// report of a scan to the end of the tree.
namespace brivane {

/// An entry that a scan could not read.
struct ScanIssue {
    QByteArray path; ///< bytes
    int error = 0;   ///< errno
};

class FileTree : public std::enable_shared_from_this<FileTree> {
public:
    /// A tree with a directory for `rootPath` (bytes, kept as given) as its root. The root is named
    /// by the last component, or by the whole path when that is empty.
    static std::shared_ptr<FileTree> create(const QByteArray& rootPath);
    ~FileTree();
    FileTree(const FileTree&) = delete;
    FileTree& operator=(const FileTree&) = delete;

    /// Is held by whoever changes the tree: a walk that winds down after it was stopped and the
    /// next one to add to its tree take turns by it. May go from one thread to another, and keeps
    /// the tree.
    class BuildingRight {
    public:
        BuildingRight() = default;
        BuildingRight(BuildingRight&& other) noexcept = default;
        BuildingRight& operator=(BuildingRight&& other) noexcept;
        ~BuildingRight();

        [[nodiscard]] FileTree* tree() const { return m_tree.get(); } ///< null when it was not got

    private:
        friend class FileTree;
        explicit BuildingRight(std::shared_ptr<FileTree> tree)
            : m_tree(std::move(tree))
        {
        }

        std::shared_ptr<FileTree> m_tree;
    };

    /// The right to change the tree, as soon as nobody else has it. Gives up, with an empty one,
    /// within a tenth of a second after `isCancelled` has become true.
    [[nodiscard]] BuildingRight waitToBuild(const std::atomic<bool>* isCancelled = nullptr);

    [[nodiscard]] FileNode* root() const { return m_root; }
    [[nodiscard]] const QByteArray& rootPath() const { return m_rootPath; }

    /// A node that is in no list yet. `name` is bytes, at most 65535 of them.
    FileNode* make(std::string_view name, bool isDirectory, std::uint64_t size);
    /// Appends `node` to the children of the directory `parent`. `expected` is how many more
    /// children the caller knows to come: memory is set aside for exactly these.
    void attach(FileNode* node, FileNode* parent, std::uint32_t expected = 0);
    /// Gives `node` its place without listing it there: it knows its path, yet no reader comes upon
    /// it before it is attached.
    static void place(FileNode* node, FileNode* parent);
    /// Adds to the size of `node` alone.
    static void addSize(FileNode* node, std::uint64_t bytes);
    static void setFileCount(FileNode* node, std::int64_t count);

    /// Keeps an issue for the screens; sizes from `directory` up become lower bounds.
    /// `isDirectoryItself` tells that it is `directory` that could not be read.
    void addIssue(FileNode* directory, bool isDirectoryItself, ScanIssue issue);
    /// What could not be read before has been.
    static void markReadable(FileNode* directory);
    /// Asks for each issue which directory it still leaves incomplete. Where there is none any more
    /// the issue goes, and what has no issue below it any more is complete.
    void reviewIssues(const std::function<FileNode*(const ScanIssue&)>& directoryOf);
    [[nodiscard]] std::vector<ScanIssue> issues() const;
    [[nodiscard]] std::size_t issueCount() const;

    /// Sorts the children of all directories, on all cores; the same as sortBySize() of the root.
    void sortAll();

    [[nodiscard]] std::size_t directoryCount() const { return m_directories.size(); }
    [[nodiscard]] std::size_t directoryCapacity() const { return m_directories.capacity(); }
    /// Bytes of memory that the tree holds.
    [[nodiscard]] std::size_t memoryUse() const;
    [[nodiscard]] std::size_t nodeCount() const { return m_nodeCount; }

    /// How far the tree has come.
    struct Mark {
        std::size_t slabs;
        std::size_t used;
        std::size_t directories;
        std::size_t nodes;
        std::size_t listBytes;
    };
    [[nodiscard]] Mark mark() const;
    /// Gives back all nodes made since; none of them may have been attached to an older one.
    void rollBack(const Mark& mark);

    /// The tree that `node` belongs to.
    static FileTree& of(const FileNode& node);

private:
    friend class FileNode;

    explicit FileTree(const QByteArray& rootPath);
    void* allocate(std::size_t bytes);
    QUuid idOf(const FileNode& node) const;

    const QByteArray m_rootPath;
    const QUuid m_id;
    QSemaphore m_building{1};
    mutable std::mutex m_mutex; ///< guards every list of children, and m_issues
    std::vector<std::byte*> m_slabs;
    std::size_t m_used = 0;               ///< bytes of the last slab
    std::vector<FileNode*> m_directories; ///< every directory that was made, in that order
    std::vector<ScanIssue> m_issues;
    std::size_t m_nodeCount = 0;
    std::size_t m_listBytes = 0;
    FileNode* m_root = nullptr;
};

} // namespace brivane
