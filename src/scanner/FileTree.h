#pragma once

#include "scanner/FileNode.h"

#include <QByteArray>

#include <mutex>

// A scanned tree: the memory of its nodes, and the one place that makes and joins them.
//
// Nodes and names lie in large slabs that are given back together, so a node is found in its slab
// and its tree through the slab's head. Lists of children are blocks of their own.
//
// Threads: add(), attach() and the rest that changes the tree belong to one thread at a time; the
// lock keeps readers on other threads from a list in mid-change and is held for no longer than one
// change. The root stays the same from the first report of a scan to the end of the tree.
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

    [[nodiscard]] FileNode* root() const { return m_root; }
    [[nodiscard]] const QByteArray& rootPath() const { return m_rootPath; }

    /// A node that is in no list yet. `name` is bytes, at most 65535 of them.
    FileNode* make(std::string_view name, bool isDirectory, std::uint64_t size);
    /// Appends `node` to the children of the directory `parent`. `expected` is how many more
    /// children the caller knows to come: memory is set aside for exactly these.
    void attach(FileNode* node, FileNode* parent, std::uint32_t expected = 0);
    /// Adds to the size of `node` alone.
    static void addSize(FileNode* node, std::uint64_t bytes);
    static void setFileCount(FileNode* node, std::int64_t count);

    /// Keeps an issue for the screens; sizes from `directory` up become lower bounds.
    /// `isDirectoryItself` tells that it is `directory` that could not be read.
    void addIssue(FileNode* directory, bool isDirectoryItself, ScanIssue issue);
    [[nodiscard]] std::vector<ScanIssue> issues() const;
    [[nodiscard]] std::size_t issueCount() const;

    /// Sorts the children of all directories, on all cores; the same as sortBySize() of the root.
    void sortAll();

    [[nodiscard]] std::size_t directoryCount() const { return m_directories.size(); }
    [[nodiscard]] std::size_t directoryCapacity() const { return m_directories.capacity(); }
    /// Bytes of memory that the tree holds.
    [[nodiscard]] std::size_t memoryUse() const;
    [[nodiscard]] std::size_t nodeCount() const { return m_nodeCount; }

    /// The tree that `node` belongs to.
    static FileTree& of(const FileNode& node);

private:
    friend class FileNode;

    explicit FileTree(const QByteArray& rootPath);
    void* allocate(std::size_t bytes);
    QUuid idOf(const FileNode& node) const;

    const QByteArray m_rootPath;
    const QUuid m_id;
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
