#include "scanner/TreeBrowser.h"

#include "core/Publish.h"

namespace brivane {

void TreeBrowser::setHovered(const FileNodeRef& node, bool isHovered)
{
    if (isHovered || m_hoveredNode == node)
        publish(m_hoveredNode, isHovered ? node : FileNodeRef(), this,
                &TreeBrowser::hoveredNodeChanged);
}

void TreeBrowser::drillDown(const FileNodeRef& node)
{
    if (!node.isDirectory())
        return;
    setFocusedNode(node.node());
    setSelectedNode({});
}

void TreeBrowser::drillUp()
{
    if (!m_focusedNode.isValid())
        return;
    const FileNode* focused = m_focusedNode.node().get();
    const FileNodePtr target = focused->parent() ? focused->parent()->shared() : m_rootNode.node();
    if (!target || target.get() == focused)
        return;
    setFocusedNode(target);
    setSelectedNode({});
}

void TreeBrowser::drillToRoot()
{
    if (m_focusedNode == m_rootNode)
        return;
    setFocusedNode(m_rootNode.node());
    setSelectedNode({});
}

void TreeBrowser::setSelectedNode(const FileNodeRef& node)
{
    publish(m_selectedNode, node, this, &TreeBrowser::selectedNodeChanged);
}

void TreeBrowser::setRootNode(const FileNodePtr& node)
{
    publish(m_rootNode, FileNodeRef(node), this, &TreeBrowser::rootNodeChanged);
}

void TreeBrowser::setFocusedNode(const FileNodePtr& node)
{
    if (m_focusedNode.node() == node)
        return;
    m_focusedNode = FileNodeRef(node);
    m_folderModel.setDirectory(node);
    Q_EMIT focusedNodeChanged();
}

} // namespace brivane
