#include "scanner/FileTree.h"

#include "platform/Parallel.h"
#include "platform/PathText.h"
#include "platform/Worker.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <unordered_set>

namespace brivane {

namespace {

/// Slabs are aligned to their size, so that the address of a node leads to the head of its slab.
constexpr std::size_t slabSize = 1 << 20;
/// A scan of a whole disk rarely has more directories than this.
constexpr std::size_t expectedDirectories = 500'000;
constexpr std::uint32_t firstCapacity = 4;
constexpr std::size_t nodesWorthAThread = 20'000;

struct SlabHead {
    FileTree* tree;
};

constexpr std::size_t alignedUp(std::size_t bytes)
{
    return (bytes + alignof(FileNode) - 1) & ~(alignof(FileNode) - 1);
}

/// Gives back large trees. Lives to the end of the process, as the last screen's tree does.
Worker& disposer()
{
    static Worker* const worker = new Worker(QStringLiteral("tree disposal"));
    return *worker;
}

} // namespace

std::shared_ptr<FileTree> FileTree::create(const QByteArray& rootPath)
{
    // Giving back a tree of millions takes long, and the last reference is often the screen's.
    const auto dispose = [](FileTree* tree) {
        if (tree->nodeCount() < nodesWorthAThread)
            delete tree;
        else
            disposer().run([tree] { delete tree; });
    };
    return std::shared_ptr<FileTree>(new FileTree(rootPath), dispose);
}

FileTree::FileTree(const QByteArray& rootPath)
    : m_rootPath(rootPath)
    , m_id(QUuid::createUuid())
{
    m_directories.reserve(expectedDirectories);
    const QByteArray last =
        PathText::toBytes(PathText::lastComponent(PathText::fromBytes(rootPath)));
    const QByteArray& name = last.isEmpty() ? rootPath : last;
    m_root = make({name.constData(), static_cast<std::size_t>(name.size())}, true, 0);
}

FileTree::~FileTree()
{
    for (FileNode* directory : m_directories)
        std::free(directory->m_children);
    for (std::byte* slab : m_slabs)
        std::free(slab);
}

FileTree::BuildingRight::~BuildingRight()
{
    if (m_tree)
        m_tree->m_building.release();
}

FileTree::BuildingRight& FileTree::BuildingRight::operator=(BuildingRight&& other) noexcept
{
    std::swap(m_tree, other.m_tree);
    return *this;
}

FileTree::BuildingRight FileTree::waitToBuild(const std::atomic<bool>* isCancelled)
{
    constexpr int pollMilliseconds = 50;
    while (!m_building.tryAcquire(1, pollMilliseconds)) {
        if (isCancelled && *isCancelled)
            return {};
    }
    return BuildingRight(shared_from_this());
}

void* FileTree::allocate(std::size_t bytes)
{
    if (m_slabs.empty() || m_used + bytes > slabSize) {
        void* memory = std::aligned_alloc(slabSize, slabSize);
        if (!memory)
            throw std::bad_alloc();
        m_slabs.push_back(static_cast<std::byte*>(memory));
        new (memory) SlabHead{this};
        m_used = alignedUp(sizeof(SlabHead));
    }
    void* place = m_slabs.back() + m_used;
    m_used += bytes;
    return place;
}

FileTree& FileTree::of(const FileNode& node)
{
    const auto address = reinterpret_cast<std::uintptr_t>(&node);
    return *reinterpret_cast<const SlabHead*>(address & ~(slabSize - 1))->tree;
}

QUuid FileTree::idOf(const FileNode& node) const
{
    // The first half tells the tree, the second the node; version and variant bits stay as they
    // are.
    QUuid id = m_id;
    const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&node));
    for (std::size_t i = 0; i < 7; ++i)
        id.data4[i + 1] = static_cast<uchar>(address >> (8 * i));
    return id;
}

FileNode* FileTree::make(std::string_view name, bool isDirectory, std::uint64_t size)
{
    name = name.substr(0, UINT16_MAX);
    void* place = allocate(alignedUp(sizeof(FileNode) + name.size()));
    auto* node = new (place) FileNode(name, isDirectory, size);
    ++m_nodeCount;
    if (isDirectory)
        m_directories.push_back(node);
    return node;
}

void FileTree::place(FileNode* node, FileNode* parent)
{
    node->m_parent = parent;
}

void FileTree::attach(FileNode* node, FileNode* parent, std::uint32_t expected)
{
    using ChildList = FileNode::ChildList;
    node->m_parent = parent;
    ChildList* list = parent->m_children; // nobody else changes it
    const std::uint32_t count = list ? list->count.load(std::memory_order_relaxed) : 0;
    if (!list || count == list->capacity) {
        const std::uint32_t capacity =
            count + std::max({expected + 1, count / 2, expected > 0 ? 0 : firstCapacity});
        const std::size_t bytes = sizeof(ChildList) + capacity * sizeof(FileNode*);
        const std::lock_guard lock(m_mutex);
        void* memory = std::realloc(list, bytes);
        if (!memory)
            throw std::bad_alloc();
        m_listBytes += bytes - (list ? sizeof(ChildList) + count * sizeof(FileNode*) : 0);
        list = new (memory) ChildList{count, capacity};
        parent->m_children = list;
    }
    list->nodes()[count] = node;
    list->count.store(count + 1, std::memory_order_release);
}

void FileTree::addSize(FileNode* node, std::uint64_t bytes)
{
    // One thread writes, so a plain read and write do, and cost less than an atomic addition.
    node->m_size.store(node->size() + bytes, std::memory_order_relaxed);
}

void FileTree::setFileCount(FileNode* node, std::int64_t count)
{
    node->m_fileCount.store(static_cast<std::uint32_t>(count), std::memory_order_relaxed);
}

void FileTree::addIssue(FileNode* directory, bool isDirectoryItself, ScanIssue issue)
{
    if (isDirectoryItself)
        directory->setFlag(FileNode::Unreadable, true);
    // Above an incomplete directory everything is incomplete already.
    for (FileNode* node = directory; node && !node->isIncomplete(); node = node->m_parent)
        node->setFlag(FileNode::Incomplete, true);
    const std::lock_guard lock(m_mutex);
    m_issues.push_back(std::move(issue));
}

void FileTree::markReadable(FileNode* directory)
{
    directory->setFlag(FileNode::Unreadable, false);
}

void FileTree::reviewIssues(const std::function<FileNode*(const ScanIssue&)>& directoryOf)
{
    std::vector<ScanIssue> left;
    std::unordered_set<FileNode*> incomplete;
    for (ScanIssue& issue : issues()) {
        FileNode* directory = directoryOf(issue);
        if (!directory)
            continue;
        for (FileNode* node = directory; node && incomplete.insert(node).second;)
            node = node->m_parent;
        left.push_back(std::move(issue));
    }
    // Each flag goes straight to what it will be, so that no reader sees a moment in between.
    for (FileNode* directory : m_directories)
        directory->setFlag(FileNode::Incomplete, incomplete.contains(directory));
    const std::lock_guard lock(m_mutex);
    m_issues = std::move(left);
}

std::vector<ScanIssue> FileTree::issues() const
{
    const std::lock_guard lock(m_mutex);
    return m_issues;
}

std::size_t FileTree::issueCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_issues.size();
}

void FileTree::sortAll()
{
    constexpr std::size_t share = 2048; // directories that one thread takes at a time
    const std::span<FileNode*> all = m_directories;
    forEachInParallel((all.size() + share - 1) / share, [&](std::size_t part) {
        const std::size_t from = part * share;
        for (FileNode* directory : all.subspan(from, std::min(share, all.size() - from)))
            directory->sortOwnChildren();
    });
    m_root->setFlag(FileNode::Sorted, true);
}

FileTree::Mark FileTree::mark() const
{
    return {m_slabs.size(), m_used, m_directories.size(), m_nodeCount, m_listBytes};
}

void FileTree::rollBack(const Mark& mark)
{
    for (std::size_t i = mark.directories; i < m_directories.size(); ++i)
        std::free(m_directories[i]->m_children);
    for (std::size_t i = mark.slabs; i < m_slabs.size(); ++i)
        std::free(m_slabs[i]);
    m_directories.resize(mark.directories);
    m_slabs.resize(mark.slabs);
    m_used = mark.used;
    m_nodeCount = mark.nodes;
    m_listBytes = mark.listBytes;
}

std::size_t FileTree::memoryUse() const
{
    return m_slabs.size() * slabSize + m_listBytes + m_directories.size() * sizeof(FileNode*);
}

} // namespace brivane
