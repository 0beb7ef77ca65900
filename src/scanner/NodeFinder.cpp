#include "scanner/NodeFinder.h"

#include "platform/LiesIn.h"

namespace brivane {

namespace {

constexpr std::size_t expectedNodes = 256;

} // namespace

NodeFinder::NodeFinder(FileNodePtr root)
    : m_root(std::move(root))
    , m_rootPath(m_root->pathBytes())
    , m_index(expectedNodes)
{
}

bool NodeFinder::covers(const QByteArray& path) const
{
    return liesIn(path, m_rootPath);
}

FileNodePtr NodeFinder::find(const QByteArray& path)
{
    if (!covers(path))
        return {};
    const FileNode* node = m_root.get();
    for (const QByteArray& name : path.mid(m_rootPath.size()).split('/')) {
        if (name.isEmpty())
            continue;
        if (m_indexed.insert(node).second) {
            for (FileNode* child : node->children())
                m_index.insert(child);
        }
        node = m_index.find(node, std::string_view(name));
        if (!node)
            return {};
    }
    return node->shared();
}

} // namespace brivane
