#include "scanner/DeleteService.h"

#include "core/ByteFormatter.h"
#include "core/Log.h"
#include "core/NotificationNames.h"
#include "platform/FileSystemProviding.h"
#include "scanner/AtomicFlag.h"

#include <QCoroFuture>
#include <QPointer>
#include <QSet>

#include <algorithm>
#include <unordered_set>
#include <utility>

using namespace Qt::StringLiterals;

namespace brivane {

/// What the worker has to remove.
struct DeleteService::Order {
    enum class Match { Whole, ObjectOnly };

    FileNodePtr node;
    QFuture<Result<FileIdentity>> identity;
    Match match;
};

/// What became of it.
struct DeleteService::Report {
    Outcome outcome;
    std::unordered_set<FileNodePtr> removed;
    bool isAnythingGone = false; ///< also when only part of a folder is
};

DeleteService::DeleteService(Host& host, QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_checker(host.locations)
{
}

DeleteService::~DeleteService()
{
    if (m_stop)
        m_stop->setValue(true);
    m_worker.waitForDone();
}

SafetyChecker::SafetyLevel DeleteService::stageForDeletion(const FileNodePtr& node)
{
    const QString path = node->path();
    SafetyChecker::SafetyLevel level = m_checker.check(path);
    if (level.which == SafetyChecker::SafetyLevel::Case::blocked) {
        Log::delete_.notice(u"Blocked deletion of protected path: "_s + path);
        return level;
    }
    if (std::ranges::find(m_pending, node, &Pending::node) != m_pending.end())
        return level;
    m_pending.push_back({node, m_worker.run([path] { return FileIdentity::of(path); })});
    node->setMarkedForDeletion(true);
    Log::delete_.info(
        u"Staged for deletion: %1 (%2)"_s.arg(node->name(), ByteFormatter::format(node->size())));
    Q_EMIT pendingItemsChanged();
    return level;
}

void DeleteService::unstage(const FileNodePtr& node)
{
    const auto item = std::ranges::find(m_pending, node, &Pending::node);
    if (item == m_pending.end() || m_stop)
        return;
    node->setMarkedForDeletion(false);
    m_pending.erase(item);
    Q_EMIT pendingItemsChanged();
}

void DeleteService::clearPending()
{
    if (m_stop)
        m_stop->setValue(true);
    for (const Pending& item : std::exchange(m_pending, {}))
        item.node->setMarkedForDeletion(false);
    Q_EMIT pendingItemsChanged();
}

QCoro::Task<DeleteService::Outcome> DeleteService::executeDeletion()
{
    if (m_stop)
        co_return Outcome();
    const QPointer<DeleteService> self(this);
    NotificationCenter& notifications = m_host.notifications;
    const auto stop = std::make_shared<AtomicFlag>();
    m_stop = stop;
    const QFuture<Report> future =
        m_worker.run([orders = orders(), &fileSystem = m_host.fileSystem, stop] {
            return carryOut(orders, fileSystem, *stop);
        });
    const Report report = co_await future;
    if (self) {
        m_stop.reset();
        // Others may have been staged meanwhile, and those wait for the next call.
        std::erase_if(m_pending,
                      [&](const Pending& item) { return report.removed.contains(item.node); });
        Q_EMIT pendingItemsChanged();
    }
    if (report.isAnythingGone)
        notifications.post(NotificationNames::diskSpaceChanged);
    co_return report.outcome;
}

QList<FileNodePtr> DeleteService::pendingItems() const
{
    QList<FileNodePtr> nodes;
    nodes.reserve(static_cast<qsizetype>(m_pending.size()));
    for (const Pending& item : m_pending)
        nodes += item.node;
    return nodes;
}

quint64 DeleteService::pendingSize() const
{
    quint64 bytes = 0;
    for (const Pending& item : m_pending)
        bytes += item.node->size();
    return bytes;
}

std::vector<DeleteService::Order> DeleteService::orders() const
{
    // Where something staged goes that lies in a staged folder, the folder changes by our own
    // doing.
    QSet<const FileNode*> losers;
    for (const Pending& item : m_pending) {
        for (const FileNode* folder = item.node->parent(); folder; folder = folder->parent())
            losers.insert(folder);
    }
    std::vector<Order> orders;
    orders.reserve(m_pending.size());
    for (const Pending& item : m_pending)
        orders.push_back(
            {item.node, item.identity,
             losers.contains(item.node.get()) ? Order::Match::ObjectOnly : Order::Match::Whole});
    return orders;
}

DeleteService::Report DeleteService::carryOut(const std::vector<Order>& orders,
                                              FileSystemProviding& fileSystem,
                                              const AtomicFlag& stop)
{
    Report report;
    for (const Order& order : orders) {
        if (stop.value())
            break;
        const QString path = order.node->path();
        // Found out on this same thread, before this.
        const Result<FileIdentity> staged = order.identity.result();
        bool isGone = false;
        if (staged) {
            FileIdentity expected = *staged;
            if (order.match == Order::Match::ObjectOnly)
                expected = {.device = expected.device, .inode = expected.inode};
            isGone = bool(fileSystem.trashItem(path, expected));
            if (isGone) {
                report.isAnythingGone = true;
            } else {
                const RemovalReport removal = fileSystem.removeItem(path, expected);
                isGone = removal.isComplete();
                report.isAnythingGone |= removal.removed > 0;
            }
        }
        if (isGone) {
            ++report.outcome.removedCount;
            report.removed.insert(order.node);
        } else {
            report.outcome.failedPaths += path;
        }
    }
    return report;
}

} // namespace brivane
