#include "scanner/DeleteService.h"

#include "core/ByteFormatter.h"
#include "core/Log.h"
#include "core/NotificationNames.h"
#include "platform/FileSystemProviding.h"
#include "platform/PathText.h"
#include "scanner/AtomicFlag.h"
#include "scanner/NodeFinder.h"

#include <QCoroFuture>
#include <QPointer>
#include <QSet>

#include <algorithm>
#include <cerrno>
#include <unordered_set>
#include <utility>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace brivane {

namespace {

/// For a look at a volume that may never answer.
constexpr auto leavingPatience = 500ms;

} // namespace

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

/// What became of a pending node in a new tree: null when it is gone.
struct DeleteService::Carried {
    FileNodePtr from;
    FileNodePtr to;
};

DeleteService::DeleteService(Host& host, QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_checker(host.locations)
{
}

DeleteService::~DeleteService()
{
    if (m_stop) {
        m_stop->setValue(true);
        m_worker.waitForDone();
    } else {
        m_worker.cancel();
        m_worker.leave(leavingPatience);
    }
}

SafetyChecker::SafetyLevel DeleteService::stageForDeletion(const FileNodePtr& node)
{
    const QString path = node->path();
    SafetyChecker::SafetyLevel level = m_checker.check(path);
    if (level.which == SafetyChecker::SafetyLevel::Case::blocked) {
        Log::delete_.notice(u"Blocked deletion of protected path: "_s + path);
        return level;
    }
    Pending* const before = pendingAt(node->pathBytes());
    if (before && (before->node == node || m_stop))
        return level;
    const Pending staged{node, m_worker.run([path] { return FileIdentity::of(path); })};
    if (before) {
        before->node->setMarkedForDeletion(false);
        *before = staged;
    } else {
        m_pending.push_back(staged);
    }
    node->setMarkedForDeletion(true);
    Log::delete_.info(
        u"Staged for deletion: %1 (%2)"_s.arg(node->name(), ByteFormatter::format(node->size())));
    Q_EMIT pendingItemsChanged();
    return level;
}

DeleteService::Pending* DeleteService::pendingAt(const QByteArray& path)
{
    const auto item = std::ranges::find_if(
        m_pending, [&](const Pending& pending) { return pending.node->pathBytes() == path; });
    return item == m_pending.end() ? nullptr : &*item;
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

QCoro::Task<> DeleteService::carryOver(FileNodePtr root)
{
    if (m_stop) {
        m_nextRoot = std::move(root);
        co_return;
    }
    const QPointer<DeleteService> self(this);
    const unsigned request = ++m_carryRequest;
    std::vector<Pending> items = m_pending;
    std::erase_if(items, [&](const Pending& item) { return &item.node->tree() == &root->tree(); });
    if (items.empty())
        co_return;
    const QFuture<std::vector<Carried>> future =
        m_worker.run([items = std::move(items), root](const std::stop_token& stop) {
            return findAgain(items, root, stop);
        });
    const std::vector<Carried> carried = co_await future;
    if (!self || request != m_carryRequest)
        co_return;
    if (m_stop) // a removal has begun meanwhile
        m_nextRoot = std::move(root);
    else
        exchange(carried);
}

std::vector<DeleteService::Carried> DeleteService::findAgain(const std::vector<Pending>& items,
                                                             const FileNodePtr& root,
                                                             const std::stop_token& stop)
{
    std::vector<Carried> carried;
    NodeFinder finder(root);
    for (const Pending& item : items) {
        const QByteArray path = item.node->pathBytes();
        if (stop.stop_requested() || !finder.covers(path))
            continue;
        // Found out on this same thread, before this.
        const Result<FileIdentity> staged = item.identity.result();
        const Result<FileIdentity> found = FileIdentity::of(PathText::fromBytes(path));
        if (staged && found && staged->isSameObject(*found)) {
            if (FileNodePtr node = finder.find(path))
                carried.push_back({item.node, std::move(node)});
        } else if (found || found.error().code == ENOENT || found.error().code == ENOTDIR) {
            carried.push_back({item.node, {}});
        }
    }
    return carried;
}

void DeleteService::exchange(const std::vector<Carried>& carried)
{
    for (const auto& [from, to] : carried) {
        const auto item = std::ranges::find(m_pending, from, &Pending::node);
        if (item == m_pending.end())
            continue;
        from->setMarkedForDeletion(false);
        if (to) {
            to->setMarkedForDeletion(true);
            item->node = to; // and the identity stays: it tells what was staged
        } else {
            Log::delete_.info(u"No longer there to be deleted: "_s + from->path());
            m_pending.erase(item);
        }
    }
    if (!carried.empty())
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
        if (FileNodePtr root = std::exchange(m_nextRoot, {}))
            carryOver(std::move(root));
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
