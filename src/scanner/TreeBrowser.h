#pragma once

#include "scanner/FileNodeRef.h"
#include "scanner/FolderModel.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brivane {

/// Where in the tree of a scan somebody is looking: which directory is shown, what is under the
/// pointer, what is selected. GUI thread; the tree may grow meanwhile.
class TreeBrowser : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application brings it")
    Q_PROPERTY(bool hasTree READ hasTree NOTIFY rootNodeChanged)
    Q_PROPERTY(brivane::FileNodeRef rootNode READ rootNode NOTIFY rootNodeChanged)
    Q_PROPERTY(brivane::FileNodeRef focusedNode READ focusedNode NOTIFY focusedNodeChanged)
    Q_PROPERTY(brivane::FileNodeRef hoveredNode READ hoveredNode NOTIFY hoveredNodeChanged)
    Q_PROPERTY(brivane::FileNodeRef selectedNode READ selectedNode WRITE setSelectedNode NOTIFY
                   selectedNodeChanged)
    /// What lies in the directory that is shown.
    Q_PROPERTY(brivane::FolderModel* folder READ folderModel CONSTANT)

public:
    /// The pointer came to, or left, what stands for `node`. In any order: who left is forgotten
    /// only if nobody else has come.
    Q_INVOKABLE void setHovered(const brivane::FileNodeRef& node, bool isHovered);
    /// Shows `node`, a directory, in the list and the charts.
    Q_INVOKABLE void drillDown(const brivane::FileNodeRef& node);
    /// Shows the parent of the directory that is shown.
    Q_INVOKABLE void drillUp();
    /// Shows the root of the scan again.
    Q_INVOKABLE void drillToRoot();

    [[nodiscard]] FolderModel* folderModel() { return &m_folderModel; }
    [[nodiscard]] bool hasTree() const { return m_rootNode.isValid(); }
    [[nodiscard]] const FileNodeRef& rootNode() const { return m_rootNode; }
    [[nodiscard]] const FileNodeRef& focusedNode() const { return m_focusedNode; }
    [[nodiscard]] const FileNodeRef& hoveredNode() const { return m_hoveredNode; }
    [[nodiscard]] const FileNodeRef& selectedNode() const { return m_selectedNode; }
    void setSelectedNode(const FileNodeRef& node);

Q_SIGNALS:
    void rootNodeChanged();
    void focusedNodeChanged();
    void hoveredNodeChanged();
    void selectedNodeChanged();

protected:
    using QObject::QObject;

    void setRootNode(const FileNodePtr& node);
    void setFocusedNode(const FileNodePtr& node);

private:
    FolderModel m_folderModel;
    FileNodeRef m_rootNode;
    FileNodeRef m_focusedNode;
    FileNodeRef m_hoveredNode;
    FileNodeRef m_selectedNode;
};

} // namespace brivane
