#include "demo/DemoMachine.h"

#include "demo/DemoContent.h"
#include "demo/DemoWorkspace.h"

namespace brivane {

using namespace Qt::StringLiterals;

DemoMachine::DemoMachine(std::unique_ptr<Clock> clock)
    : m_machine(SandboxMachine::temporary())
{
    fillWithDemoContent(m_machine, QDateTime::currentDateTimeUtc());
    auto volumes = std::make_unique<SandboxVolumes>(m_machine);
    m_volumes = volumes.get();
    const QString drive = m_machine.directory(u"/Volumes/Archive"_s);
    volumes->mount(drive, SandboxVolumes::externalDrive(u"Archive"_s));
    m_host = std::make_unique<OwnedHost>(m_machine.locations(), std::move(volumes),
                                         std::move(clock), std::make_unique<DemoWorkspace>());
}

} // namespace brivane
