#include "scanner/FileNode.h"

#include "platform/PathText.h"
#include "scanner/FileTree.h"

#include <algorithm>
#include <cstring>

namespace brivane {

static_assert(sizeof(FileNode) == 32, "ten million nodes have to fit into memory");

FileNode::FileNode(std::string_view name, bool isDirectory, std::uint64_t size)
    : m_size(size)
    , m_nameLength(static_cast<std::uint16_t>(name.size()))
    , m_flags(isDirectory ? Directory : 0)
{
    std::memcpy(reinterpret_cast<char*>(this + 1), name.data(), name.size());
}

QUuid FileNode::id() const
{
    return tree().idOf(*this);
}

std::string_view FileNode::nameBytes() const
{
    return {reinterpret_cast<const char*>(this + 1), m_nameLength};
}

QString FileNode::name() const
{
    const std::string_view bytes = nameBytes();
    return PathText::fromBytes({bytes.data(), static_cast<qsizetype>(bytes.size())});
}

QString FileNode::path() const
{
    return PathText::fromBytes(pathBytes());
}

QByteArray FileNode::pathBytes() const
{
    std::vector<std::string_view> names;
    const FileNode* top = this;
    for (; top->m_parent; top = top->m_parent)
        names.push_back(top->nameBytes());
    QByteArray path = tree().rootPath();
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        if (!path.endsWith('/'))
            path += '/';
        path.append(name->data(), static_cast<qsizetype>(name->size()));
    }
    return path;
}

std::vector<FileNode*> FileNode::children() const
{
    const std::lock_guard lock(tree().m_mutex);
    if (!m_children)
        return {};
    return {m_children->nodes(), m_children->nodes() + m_children->count.load()};
}

std::size_t FileNode::childCount() const
{
    const std::lock_guard lock(tree().m_mutex);
    return m_children ? m_children->count.load() : 0;
}

std::span<FileNode*> FileNode::ownChildren() const
{
    if (!m_children)
        return {};
    return {m_children->nodes(), m_children->count.load()};
}

void FileNode::setFlag(Flag flag, bool on)
{
    if (on)
        m_flags.fetch_or(flag, std::memory_order_relaxed);
    else
        m_flags.fetch_and(static_cast<std::uint8_t>(~flag), std::memory_order_relaxed);
}

template<typename Enters>
std::vector<FileNode*> FileNode::directoriesBelow(Enters enters)
{
    std::vector<FileNode*> found{this};
    for (std::size_t i = 0; i < found.size(); ++i) {
        for (FileNode* child : found[i]->ownChildren()) {
            if (child->isDirectory() && enters(*child))
                found.push_back(child);
        }
    }
    return found;
}

void FileNode::recalculateSize()
{
    if (!isDirectory())
        return;
    const auto directories = directoriesBelow([](const FileNode&) { return true; });
    for (auto directory = directories.rbegin(); directory != directories.rend(); ++directory)
        (*directory)->recalculateOwnSize();
}

void FileNode::recalculateOwnSize()
{
    std::uint64_t bytes = 0;
    std::int64_t files = 0;
    for (const FileNode* child : ownChildren()) {
        bytes += child->size();
        files += child->isDirectory() ? child->fileCount() : 1;
    }
    m_size.store(bytes, std::memory_order_relaxed);
    FileTree::setFileCount(this, files);
    setFlag(Sorted, false);
}

void FileNode::sortBySize()
{
    if (isSorted())
        return;
    if (!isDirectory()) {
        setFlag(Sorted, true);
        return;
    }
    const auto directories =
        directoriesBelow([](const FileNode& node) { return !node.isSorted(); });
    for (FileNode* directory : directories)
        directory->sortOwnChildren();
    setFlag(Sorted, true);
}

void FileNode::sortOwnChildren()
{
    struct Key {
        std::uint64_t size;
        FileNode* node;
    };
    const std::span<FileNode*> children = ownChildren();
    thread_local std::vector<Key> keys;
    keys.clear();
    bool isInOrder = true;
    for (FileNode* child : children) {
        const std::uint64_t size = child->size();
        isInOrder = isInOrder && (keys.empty() || keys.back().size >= size);
        keys.push_back({size, child});
        child->setFlag(Sorted, true);
    }
    if (isInOrder)
        return;
    std::stable_sort(keys.begin(), keys.end(),
                     [](const Key& a, const Key& b) { return a.size > b.size; });
    const std::lock_guard lock(tree().m_mutex);
    std::ranges::transform(keys, children.begin(), &Key::node);
}

FileTree& FileNode::tree() const
{
    return FileTree::of(*this);
}

FileNodePtr FileNode::shared() const
{
    // The constness is the pointer's, not the node's: all nodes are made mutable.
    return {tree().shared_from_this(), const_cast<FileNode*>(this)};
}

} // namespace brivane
