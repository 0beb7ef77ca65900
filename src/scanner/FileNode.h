#pragma once

#include <QString>
#include <QUuid>

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

// One entry of a scanned tree: a file, a symbolic link or a directory.
//
// Nodes live in the memory of their FileTree and are made only by it; a node costs 32 bytes, its
// name, and one slot in its parent's list. What a screen would rarely ask for is computed: the id
// from the place of the node in its tree, the path from the names up to the root.
//
// Ownership: the tree owns all of its nodes and goes with the last reference to any of them.
// FileNodePtr is such a reference; a plain pointer is valid as long as someone holds one.
//
// Threads: one thread builds a tree. Any other may read it meanwhile: `size`, `fileCount` and the
// flags are atomic and lag behind by a moment, and children() copies the list under the lock that
// is taken to move or reorder one, so a reader never sees it in mid-change. What is appended counts
// only once it is there.
namespace brivane {

class FileNode;
class FileTree;
using FileNodePtr = std::shared_ptr<FileNode>;

class FileNode {
public:
    FileNode(const FileNode&) = delete;
    FileNode& operator=(const FileNode&) = delete;

    /// Differs for any two nodes of any two trees; equality of nodes is equality of this.
    [[nodiscard]] QUuid id() const;
    [[nodiscard]] QString name() const;
    [[nodiscard]] std::string_view nameBytes() const;
    [[nodiscard]] QString path() const;
    [[nodiscard]] QByteArray pathBytes() const;
    [[nodiscard]] bool isDirectory() const { return hasFlag(Directory); }

    /// Bytes: the logical length of a file or link, for a directory the sum over what it holds.
    [[nodiscard]] std::uint64_t size() const { return m_size.load(std::memory_order_relaxed); }
    /// How many entries below a directory are not directories; 0 on a file.
    [[nodiscard]] std::int64_t fileCount() const
    {
        return m_fileCount.load(std::memory_order_relaxed);
    }
    /// Null at the root.
    [[nodiscard]] FileNode* parent() const { return m_parent; }
    /// A copy of the list as it is at this moment; empty on a file.
    [[nodiscard]] std::vector<FileNode*> children() const;
    /// How many children there are, without a copy.
    [[nodiscard]] std::size_t childCount() const;

    [[nodiscard]] bool markedForDeletion() const { return hasFlag(MarkedForDeletion); }
    void setMarkedForDeletion(bool marked) { setFlag(MarkedForDeletion, marked); }
    /// The children of every directory of the subtree are in order of size.
    [[nodiscard]] bool isSorted() const { return hasFlag(Sorted); }
    /// The directory could not be opened.
    [[nodiscard]] bool isUnreadable() const { return hasFlag(Unreadable); }
    /// Something in the subtree could not be read, so its size is a lower bound.
    [[nodiscard]] bool isIncomplete() const { return hasFlag(Incomplete); }

    /// Sets size and file count of every directory of the subtree from what they hold, and clears
    /// isSorted on them. Does nothing on a file. For the thread that builds the tree.
    void recalculateSize();
    /// Puts the children of every directory of the subtree into descending order of size, equal
    /// sizes in the order that they had. Stops at what is sorted. For the thread that builds.
    void sortBySize();

    [[nodiscard]] FileTree& tree() const;
    /// A reference that keeps the tree.
    [[nodiscard]] FileNodePtr shared() const;

private:
    friend class FileTree;

    enum Flag : std::uint8_t {
        Directory = 1,
        MarkedForDeletion = 2,
        Sorted = 4,
        Unreadable = 8,
        Incomplete = 16,
    };

    /// The children of a directory; the slots follow.
    struct ChildList {
        std::atomic<std::uint32_t> count; ///< grows without the lock
        std::uint32_t capacity;

        FileNode** nodes() { return reinterpret_cast<FileNode**>(this + 1); }
    };

    FileNode(std::string_view name, bool isDirectory, std::uint64_t size);

    [[nodiscard]] bool hasFlag(Flag flag) const
    {
        return (m_flags.load(std::memory_order_relaxed) & flag) != 0;
    }
    void setFlag(Flag flag, bool on);
    /// The list itself, for the thread that builds: nobody else changes it.
    [[nodiscard]] std::span<FileNode*> ownChildren() const;
    /// This directory and those below it that `enters` accepts, each before what it holds.
    template<typename Enters>
    std::vector<FileNode*> directoriesBelow(Enters enters);
    void recalculateOwnSize();
    void sortOwnChildren();

    FileNode* m_parent = nullptr;
    ChildList* m_children = nullptr; ///< null while a directory is empty
    std::atomic<std::uint64_t> m_size;
    std::atomic<std::uint32_t> m_fileCount{0};
    std::uint16_t m_nameLength;
    std::atomic<std::uint8_t> m_flags;
    // The bytes of the name follow.
};

} // namespace brivane
