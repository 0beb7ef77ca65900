#include "removal/QuarantineProvider.h"

#include "core/AppSettings.h"
#include "core/Composition.h"
#include "platform/Host.h"

#include <QCoroFuture>
#include <QPointer>

namespace brivane {

QuarantineProvider::QuarantineProvider(Host& host, const AppSettings& settings)
    : m_host(host)
    , m_settings(settings)
{
}

std::unique_ptr<QuarantineProvider> QuarantineProvider::make(Composition& composition)
{
    return std::make_unique<QuarantineProvider>(composition.host(), composition.get<AppSettings>());
}

QCoro::Task<QuarantineService*> QuarantineProvider::open()
{
    if (m_service)
        co_return m_service.get();
    if (!m_opening) {
        m_opening = m_worker.run([&host = m_host, dir = quarantineDir()] {
            return std::make_shared<QuarantineContents>(QuarantineContents::read(host, dir));
        });
    }
    const QPointer<QuarantineProvider> self(this);
    const auto opening = *m_opening;
    co_await opening;
    co_return self ? &self->openNow() : nullptr;
}

QuarantineService& QuarantineProvider::openNow()
{
    if (!m_service) {
        QuarantineContents contents = m_opening ? std::move(*m_opening->result())
                                                : QuarantineContents::read(m_host, quarantineDir());
        m_service = std::make_unique<QuarantineService>(m_host, m_settings, quarantineDir(),
                                                        std::move(contents));
    }
    return *m_service;
}

QString QuarantineProvider::quarantineDir() const
{
    return m_host.locations.path(u"~/.Brivane_Quarantine");
}

} // namespace brivane
