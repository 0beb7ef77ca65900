#include "core/Composition.h"

#include "platform/Host.h"

#include <QtGlobal>

#include <algorithm>

namespace brivane {

Composition::Composition(Host& host)
    : m_host(host)
{
}

Composition& Composition::shared()
{
    static auto* const composition = new Composition(Host::shared());
    return *composition;
}

Composition::~Composition()
{
    while (!m_services.empty()) {
        // Out of the list first: what ends may no longer be found.
        const std::shared_ptr<void> service = std::move(m_services.back().second);
        m_services.pop_back();
    }
}

Composition::Making::Making(Composition& composition, std::type_index type)
    : m_types(composition.m_making)
{
    if (std::ranges::find(m_types, type) != m_types.end())
        qFatal("To make %s, itself is needed", type.name());
    m_types.push_back(type);
}

void* Composition::find(std::type_index type) const
{
    const auto found =
        std::ranges::find(m_services, type, [](const auto& entry) { return entry.first; });
    return found != m_services.end() ? found->second.get() : nullptr;
}

void Composition::keep(std::type_index type, std::shared_ptr<void> service)
{
    m_services.emplace_back(type, std::move(service));
}

} // namespace brivane
