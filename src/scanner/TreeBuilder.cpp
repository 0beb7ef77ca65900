#include "scanner/TreeBuilder.h"

#include <cerrno>

namespace brivane {

TreeBuilder::TreeBuilder(std::shared_ptr<FileTree> tree)
    : m_tree(std::move(tree))
    , m_right(m_tree->waitToBuild())
{
    m_open.push_back({m_tree->root()});
}

void TreeBuilder::add(const WalkEntry& entry, const Walk& walk)
{
    switch (entry.kind) {
    case WalkKind::Directory:
        if (entry.depth > 0)
            enter(entry);
        break;
    case WalkKind::DirectoryEnd:
        leave();
        break;
    case WalkKind::UnreadableDirectory:
        addIssue(entry, walk);
        leave();
        break;
    case WalkKind::File:
    case WalkKind::SymbolicLink:
        // A walk that starts at a file has no directory to hang it into.
        if (entry.depth > 0)
            addLeaf(entry);
        break;
    case WalkKind::NoAttributes:
        addIssue(entry, walk);
        break;
    case WalkKind::Other:
        break;
    }
}

void TreeBuilder::addLeaf(const WalkEntry& entry)
{
    OpenDirectory& directory = m_open.back();
    FileNode* node = m_tree->make(entry.name, false, entry.attributes.size);
    m_tree->attach(node, directory.node, entry.following);
    FileTree::addSize(directory.node, entry.attributes.size);
    directory.unsettledBytes += entry.attributes.size;
    ++directory.files;
}

void TreeBuilder::enter(const WalkEntry& entry)
{
    FileNode* node = m_tree->make(entry.name, true, 0);
    m_tree->attach(node, m_open.back().node, entry.following);
    m_open.push_back({node});
}

void TreeBuilder::leave()
{
    const OpenDirectory left = m_open.back();
    FileTree::setFileCount(left.node, left.files);
    if (m_open.size() == 1)
        return; // the root is never taken off: it is left last
    m_open.pop_back();
    OpenDirectory& parent = m_open.back();
    FileTree::addSize(parent.node, left.unsettledBytes);
    parent.unsettledBytes += left.unsettledBytes;
    parent.files += left.files;
}

void TreeBuilder::settle()
{
    for (std::size_t level = m_open.size() - 1; level > 0; --level) {
        const std::uint64_t bytes = std::exchange(m_open[level].unsettledBytes, 0);
        FileTree::addSize(m_open[level - 1].node, bytes);
        m_open[level - 1].unsettledBytes += bytes;
    }
}

void TreeBuilder::finish()
{
    FileTree::setFileCount(m_open.front().node, m_open.front().files);
    m_tree->sortAll();
}

void TreeBuilder::addIssue(const WalkEntry& entry, const Walk& walk)
{
    // What vanished between its listing and the look at it is no fault of anybody's.
    if (entry.error == ENOENT && entry.depth > 0)
        return;
    m_tree->addIssue(m_open.back().node, entry.kind == WalkKind::UnreadableDirectory,
                     {walk.path(), entry.error});
}

} // namespace brivane
