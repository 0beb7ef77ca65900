#include "scanner/privileged/TreeMerger.h"

#include "platform/PathText.h"

namespace brivane {

using AdminHelperScript::ScanEntry;

namespace {

std::string withoutEndSlashes(const QByteArray& path)
{
    std::string text = path.toStdString();
    while (text.ends_with('/'))
        text.pop_back();
    return text;
}

std::string_view parentOf(std::string_view path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos)
        return {};
    return path.substr(0, std::max<std::size_t>(slash, 1));
}

/// A name that would not lead to the entry, or somewhere else, is none.
bool isName(std::string_view name)
{
    return !name.empty() && name != "." && name != ".." && name.size() <= UINT16_MAX &&
           name.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos;
}

bool isConsistent(const ScanEntry& entry)
{
    return isName(entry.name) && entry.path.ends_with(entry.name) &&
           entry.path.substr(0, entry.path.size() - entry.name.size()).ends_with('/') &&
           parentOf(entry.path) == entry.parentPath;
}

} // namespace

TreeMerger::TreeMerger(FileTree::BuildingRight right)
    : m_right(std::move(right))
    , m_tree(*m_right.tree())
    , m_mark(m_tree.mark())
    , m_rootPath(withoutEndSlashes(m_tree.rootPath()))
    , m_index(m_tree.nodeCount())
{
    indexTree();
    for (const ScanIssue& issue : m_tree.issues())
        m_issuePaths.insert(issue.path.toStdString());
}

TreeMerger::~TreeMerger()
{
    if (!m_isMerged)
        m_tree.rollBack(m_mark);
}

void TreeMerger::indexTree()
{
    std::vector<FileNode*> open{m_tree.root()};
    while (!open.empty()) {
        const FileNode* directory = open.back();
        open.pop_back();
        for (FileNode* child : directory->children()) {
            m_index.insert(child);
            if (child->isDirectory())
                open.push_back(child);
        }
    }
}

bool TreeMerger::isRoot(std::string_view path) const
{
    return path == m_tree.rootPath().constData() || (!m_rootPath.empty() && path == m_rootPath);
}

bool TreeMerger::isOutside(std::string_view path) const
{
    return !m_outside.empty() && m_outside.contains(std::string(path));
}

TreeMerger::Place TreeMerger::placeOf(std::string_view path) const
{
    Place place{.isKnown = true, .node = m_tree.root()};
    if (isRoot(path))
        return place;
    if (path.starts_with(m_rootPath) && path.substr(m_rootPath.size()).starts_with('/')) {
        std::string_view rest = path.substr(m_rootPath.size());
        while (place.node && !rest.empty()) {
            rest.remove_prefix(1);
            const std::string_view name = rest.substr(0, rest.find('/'));
            rest.remove_prefix(name.size());
            place.node = m_index.find(place.node, name);
        }
        if (place.node)
            return place;
    }
    return {.isKnown = isOutside(path)};
}

const TreeMerger::Place& TreeMerger::parentPlace(std::string_view path)
{
    // Entries come folder by folder, so most share the parent of the one before.
    if (!m_lastParent.isKnown || path != m_lastParentPath) {
        m_lastParent = placeOf(path);
        m_lastParentPath = path;
    }
    return m_lastParent;
}

void TreeMerger::take(const ScanEntry& entry)
{
    if (!isConsistent(entry))
        return;
    Place parent = parentPlace(entry.parentPath);
    const bool isInTree = parent.node && m_index.find(parent.node, entry.name);
    if (isInTree || isRoot(entry.path) || isOutside(entry.path))
        return;
    if (!parent.isKnown)
        parent = makePlaceholder(entry.parentPath);
    if (parent.directory())
        noteIssues(parent, entry);
    if (entry.isDir)
        addDirectory(parent, entry.path, entry.name);
    else if (parent.directory())
        make(parent.node, entry.name, false, entry.size);
    ++m_takenCount;
}

TreeMerger::Place TreeMerger::makePlaceholder(std::string_view path)
{
    const Place parent = placeOf(parentOf(path));
    return addDirectory(parent, path, path.substr(path.rfind('/') + 1));
}

TreeMerger::Place TreeMerger::addDirectory(const Place& parent, std::string_view path,
                                           std::string_view name)
{
    if (!parent.directory() || !isName(name)) {
        m_outside.emplace(path);
        return {.isKnown = true};
    }
    FileNode* node = make(parent.node, name, true, 0);
    m_index.insert(node);
    return {.isKnown = true, .node = node};
}

FileNode* TreeMerger::make(FileNode* parent, std::string_view name, bool isDirectory,
                           std::uint64_t size)
{
    FileNode* node = m_tree.make(name, isDirectory, size);
    FileTree::place(node, parent);
    m_nodes.push_back(node);
    return node;
}

void TreeMerger::noteIssues(const Place& parent, const ScanEntry& entry)
{
    if (parent.node->isUnreadable())
        m_filledDirectories.insert(parent.node);
    if (!m_issuePaths.empty() && m_issuePaths.contains(std::string(entry.path)))
        m_solvedPaths.emplace(entry.path);
}

FileNode* TreeMerger::incompleteDirectory(const ScanIssue& issue) const
{
    const std::string_view path(issue.path.constData(),
                                static_cast<std::size_t>(issue.path.size()));
    if (m_solvedPaths.contains(std::string(path)))
        return nullptr;
    std::string_view at = path;
    FileNode* directory = placeOf(at).directory();
    while (!directory && at.size() > 1) {
        at = parentOf(at);
        directory = placeOf(at).directory();
    }
    if (!directory)
        return m_tree.root();
    const bool isFilled = at == path && m_filledDirectories.contains(directory);
    return isFilled ? nullptr : directory;
}

void TreeMerger::merge()
{
    for (FileNode* directory : m_filledDirectories)
        FileTree::markReadable(directory);
    for (FileNode* node : m_nodes)
        m_tree.attach(node, node->parent());
    m_isMerged = true;
    if (!m_solvedPaths.empty() || !m_filledDirectories.empty())
        m_tree.reviewIssues([this](const ScanIssue& issue) { return incompleteDirectory(issue); });
    m_tree.root()->recalculateSize();
    m_tree.sortAll();
}

} // namespace brivane
