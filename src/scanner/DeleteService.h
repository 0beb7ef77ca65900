#pragma once

#include "platform/FileIdentity.h"
#include "platform/Host.h"
#include "platform/Worker.h"
#include "removal/SafetyChecker.h"
#include "scanner/FileNode.h"

#include <QCoroTask>
#include <QFuture>
#include <QList>
#include <QObject>
#include <QStringList>

namespace brivane {

class AtomicFlag;

/// Keeps the list of nodes that the user has staged for removal, and removes them.
///
/// GUI thread; whatever touches the disk runs on a thread of the service's own, in the order in
/// which it was asked for. A staged node keeps its tree alive, until another scan has found it
/// again. What is removed is the object that was staged: one that has changed or been replaced
/// since is left alone and counts as failed.
class DeleteService : public QObject {
    Q_OBJECT

public:
    struct Outcome {
        qsizetype removedCount = 0;
        QStringList failedPaths;
    };

    explicit DeleteService(Host& host, QObject* parent = nullptr);
    /// Waits for the item that is being removed, if one is; those after it stay where they are.
    ~DeleteService() override;

    /// Appends `node`, which is not null, to the pending ones and marks it, unless its path is
    /// `blocked` or it is pending already. Where another tree's node for the path is pending, this
    /// one takes its place, but not while a removal is under way. Gives the rating of its path in
    /// every case.
    SafetyChecker::SafetyLevel stageForDeletion(const FileNodePtr& node);

    /// Unmarks `node` and forgets it, if it is pending. Not while a removal is under way, which has
    /// its orders: then nothing happens.
    void unstage(const FileNodePtr& node);

    /// Unmarks all pending nodes and forgets them. A removal that is under way ends after the item
    /// that it is at.
    void clearPending();

    /// Looks for what is pending in the tree of `root`, which has been scanned since. Its node for
    /// the same path and object takes the place of the old one. What is gone or was replaced is not
    /// pending any more; what lies elsewhere, or cannot be looked at, stays as it is. What was
    /// staged once counts once, and is removed only if it is what it was then. Returns at once; if
    /// a removal is under way, that ends first.
    QCoro::Task<> carryOver(FileNodePtr root);

    /// Removes the pending nodes, in order: to the Trash or, where that fails, for good. What
    /// failed stays pending and marked; it is named in the result. Removed nodes stay in their
    /// tree. Posts diskSpaceChanged if anything is gone. Does nothing while an earlier call has not
    /// ended.
    QCoro::Task<Outcome> executeDeletion();

    /// In the order in which they were staged.
    [[nodiscard]] QList<FileNodePtr> pendingItems() const;
    /// Bytes: the sum over the pending nodes.
    [[nodiscard]] quint64 pendingSize() const;

Q_SIGNALS:
    void pendingItemsChanged();

private:
    struct Pending {
        FileNodePtr node;
        QFuture<Result<FileIdentity>> identity; ///< of the time when it was staged
    };
    struct Order;
    struct Report;
    struct Carried;

    Pending* pendingAt(const QByteArray& path);
    static std::vector<Carried> findAgain(const std::vector<Pending>& items,
                                          const FileNodePtr& root, const std::stop_token& stop);
    void exchange(const std::vector<Carried>& carried);
    [[nodiscard]] std::vector<Order> orders() const;
    static Report carryOut(const std::vector<Order>& orders, FileSystemProviding& fileSystem,
                           const AtomicFlag& stop);

    Host& m_host;
    SafetyChecker m_checker;
    std::vector<Pending> m_pending;
    std::shared_ptr<AtomicFlag> m_stop; ///< of the removal that is under way, null when none is
    FileNodePtr m_nextRoot;             ///< to carry over to, once a removal has ended
    unsigned m_carryRequest = 0;        ///< the last tree is the one that counts
    Worker m_worker{QStringLiteral("staged removal")};
};

} // namespace brivane
