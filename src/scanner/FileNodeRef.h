#pragma once

#include "scanner/FileNode.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brivane {

/// A node as a screen holds it: keeps the tree alive, so what a row or a menu was opened for is
/// what its action gets, whatever the list does meanwhile. GUI thread.
class FileNodeRef {
    Q_GADGET
    QML_VALUE_TYPE(fileNode)
    Q_PROPERTY(bool isValid READ isValid)
    Q_PROPERTY(bool isDirectory READ isDirectory)

public:
    FileNodeRef() = default;
    explicit FileNodeRef(FileNodePtr node)
        : m_node(std::move(node))
    {
    }

    [[nodiscard]] bool isValid() const { return m_node != nullptr; }
    [[nodiscard]] bool isDirectory() const { return m_node && m_node->isDirectory(); }
    [[nodiscard]] const FileNodePtr& node() const { return m_node; }

    bool operator==(const FileNodeRef&) const = default;

private:
    FileNodePtr m_node;
};

} // namespace brivane
