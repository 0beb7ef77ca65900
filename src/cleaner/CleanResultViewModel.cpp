#include "cleaner/CleanResultViewModel.h"

#include "core/ByteFormatter.h"
#include "core/Publish.h"

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace brivane {

DiskSpaceChange DiskSpaceChange::of(quint64 total, quint64 free, quint64 freedBytes)
{
    if (total == 0)
        return {};
    const quint64 beforeFree = free - std::min(free, freedBytes);
    const auto taken = [total](quint64 stillFree) {
        return (static_cast<double>(total) - static_cast<double>(stillFree)) /
               static_cast<double>(total);
    };
    return {.before = taken(beforeFree), .after = taken(free)};
}

QString DiskSpaceChange::percent(double fraction)
{
    return QString(QString::number(static_cast<int>(fraction * 100)) + u'%');
}

QString DiskSpaceChange::dropText() const
{
    return QString(u"↓ "_s + QString::number((before - after) * 100, 'f', 1) + u'%');
}

CleanResultViewModel::CleanResultViewModel(CleanerService::CleanResult result, CleanRoute route,
                                           CategorySizes selected, qint64 purgeDays,
                                           const Locations& locations, QObject* parent)
    : QObject(parent)
    , m_result(std::move(result))
    , m_route(route)
    , m_selected(std::move(selected))
    , m_purgeDays(purgeDays)
    , m_failures(m_result.failed, m_result.reasons, locations)
{
    std::ranges::stable_sort(m_selected, std::greater(), &CategorySizes::value_type::second);
}

void CleanResultViewModel::setDiskSpace(quint64 total, quint64 free)
{
    if (m_result.freedBytes == 0)
        return;
    m_diskSpace = DiskSpaceChange::of(total, free, m_result.freedBytes);
    m_hasDiskSpace = true;
    Q_EMIT diskSpaceChanged();
}

void CleanResultViewModel::setHasLocalSnapshots(bool areThere)
{
    publish(m_hasLocalSnapshots, areThere, this, &CleanResultViewModel::hasLocalSnapshotsChanged);
}

QString CleanResultViewModel::freedText() const
{
    return ByteFormatter::format(m_result.freedBytes);
}

QString CleanResultViewModel::failedText() const
{
    return m_result.failed.isEmpty() ? QString() : QString::number(m_result.failed.size());
}

QString CleanResultViewModel::stoppedText() const
{
    return m_result.notReached == 0
               ? QString()
               : u"Stopped before the end — %1 not reached"_s.arg(m_result.notReached);
}

QString CleanResultViewModel::alongsideText() const
{
    return m_result.alongside == 0
               ? QString()
               : u"%1 more went along — they were listed twice, or lay in others"_s.arg(
                     m_result.alongside);
}

QString CleanResultViewModel::beforeText() const
{
    return DiskSpaceChange::percent(m_diskSpace.before);
}

QString CleanResultViewModel::afterText() const
{
    return DiskSpaceChange::percent(m_diskSpace.after);
}

QVariantList CleanResultViewModel::breakdown() const
{
    QVariantList rows;
    for (const auto& [name, size] : m_selected)
        rows += QVariantMap{{u"name"_s, name}, {u"sizeText"_s, ByteFormatter::format(size)}};
    return rows;
}

QString CleanResultViewModel::quarantineText() const
{
    if (m_route != CleanRoute::quarantine || m_result.cleaned == 0)
        return {};
    return u"Files moved to Quarantine — restore within %1 days"_s.arg(m_purgeDays);
}

QString CleanResultViewModel::snapshotsText() const
{
    if (!m_hasLocalSnapshots)
        return {};
    return u"Local Time Machine snapshots exist — freed space may appear gradually (see Snapshots tab)"_s;
}

} // namespace brivane
