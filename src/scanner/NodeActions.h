#pragma once

#include "platform/Host.h"
#include "scanner/FileNodeRef.h"

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace brivane {

class DeleteService;

/// What a screen can do with an entry of the tree: show it in the file manager, copy its path,
/// stage it for deletion. Every action takes the node that its row or menu was made for. GUI
/// thread; belongs to the view model.
class NodeActions : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The view model brings it")
    Q_PROPERTY(int stagedCount READ stagedCount NOTIFY stagedChanged)
    Q_PROPERTY(QString stagedSizeText READ stagedSizeText NOTIFY stagedChanged)

public:
    /// Both have to outlive this.
    NodeActions(Host& host, DeleteService& deleteService, QObject* parent);

    Q_INVOKABLE void reveal(const brivane::FileNodeRef& node);
    Q_INVOKABLE void copyPath(const brivane::FileNodeRef& node);
    /// Nothing happens to a protected path.
    Q_INVOKABLE void stage(const brivane::FileNodeRef& node);
    Q_INVOKABLE void unstage(const brivane::FileNodeRef& node);
    Q_INVOKABLE void unstageAll();
    /// stage() or unstage(), whichever changes something.
    Q_INVOKABLE void toggleStaged(const brivane::FileNodeRef& node);
    [[nodiscard]] Q_INVOKABLE bool isStaged(const brivane::FileNodeRef& node) const;
    /// Path and size of what is staged, a line for each, in the order of staging.
    [[nodiscard]] Q_INVOKABLE QStringList stagedLines() const;

    [[nodiscard]] int stagedCount() const;
    [[nodiscard]] QString stagedSizeText() const;

Q_SIGNALS:
    void stagedChanged();

private:
    Host& m_host;
    DeleteService& m_deleteService;
};

} // namespace brivane
