#include "scanner/VolumeSelection.h"

#include "core/Publish.h"
#include "platform/Host.h"

#include <QCoroFuture>
#include <QPointer>

namespace brivane {

using namespace std::chrono_literals;

namespace {

/// For a question to a volume that may never answer.
constexpr auto leavingPatience = 500ms;

} // namespace

VolumeSelection::VolumeSelection(Host& host)
    : m_enumerator(host.volumes)
    , m_model(host.locations.path(u"/"))
{
    refresh();
}

VolumeSelection::~VolumeSelection()
{
    m_worker.cancel();
    m_worker.leave(leavingPatience);
}

void VolumeSelection::refresh()
{
    list();
}

QCoro::Task<> VolumeSelection::list()
{
    const QPointer<VolumeSelection> self(this);
    const unsigned request = ++m_request;
    m_worker.cancel(); // the answer to an earlier question is not wanted
    const QFuture<QList<DiskInfo>> future =
        m_worker.run([enumerator = m_enumerator](const std::stop_token& stop) {
            return stop.stop_requested() ? QList<DiskInfo>() : enumerator.enumerateVolumes();
        });
    const QList<DiskInfo> found = co_await future;
    if (!self || request != m_request)
        co_return;
    m_model.setVolumes(found);
    if (!m_selected && !found.isEmpty())
        select(found.first());
}

void VolumeSelection::select(const QString& mountPoint)
{
    for (const DiskInfo& volume : m_model.volumes()) {
        if (volume.mountPoint == mountPoint)
            return select(std::optional(volume));
    }
}

void VolumeSelection::select(const std::optional<DiskInfo>& volume)
{
    publish(m_selected, volume, this, &VolumeSelection::selectedChanged);
}

QFuture<std::optional<DiskInfo>> VolumeSelection::infoFor(const QString& path)
{
    return m_worker.run(
        [path, enumerator = m_enumerator] { return enumerator.getVolumeInfo(path); });
}

QString VolumeSelection::selectedMountPoint() const
{
    return m_selected ? m_selected->mountPoint : QString();
}

} // namespace brivane
