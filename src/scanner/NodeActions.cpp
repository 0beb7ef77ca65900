#include "scanner/NodeActions.h"

#include "core/ByteFormatter.h"
#include "platform/Pasteboard.h"
#include "platform/Workspace.h"
#include "scanner/DeleteService.h"

namespace brivane {

using namespace Qt::StringLiterals;

NodeActions::NodeActions(Host& host, DeleteService& deleteService, QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_deleteService(deleteService)
{
    connect(&deleteService, &DeleteService::pendingItemsChanged, this, &NodeActions::stagedChanged);
}

void NodeActions::reveal(const FileNodeRef& node)
{
    if (node.isValid())
        m_host.workspace.reveal(node.node()->path());
}

void NodeActions::copyPath(const FileNodeRef& node)
{
    if (node.isValid())
        m_host.pasteboard.setPath(node.node()->path());
}

void NodeActions::stage(const FileNodeRef& node)
{
    if (node.isValid())
        m_deleteService.stageForDeletion(node.node());
}

void NodeActions::unstage(const FileNodeRef& node)
{
    if (node.isValid())
        m_deleteService.unstage(node.node());
}

void NodeActions::unstageAll()
{
    m_deleteService.clearPending();
}

void NodeActions::toggleStaged(const FileNodeRef& node)
{
    if (isStaged(node))
        unstage(node);
    else
        stage(node);
}

bool NodeActions::isStaged(const FileNodeRef& node) const
{
    return node.isValid() && node.node()->markedForDeletion();
}

QStringList NodeActions::stagedLines() const
{
    QStringList lines;
    const QList<FileNodePtr> nodes = m_deleteService.pendingItems();
    for (const FileNodePtr& node : nodes)
        lines += m_host.locations.shown(node->path()) + u"  ("_s +
                 ByteFormatter::format(node->size()) + u')';
    return lines;
}

int NodeActions::stagedCount() const
{
    return static_cast<int>(m_deleteService.pendingItems().size());
}

QString NodeActions::stagedSizeText() const
{
    return ByteFormatter::format(m_deleteService.pendingSize());
}

} // namespace brivane
