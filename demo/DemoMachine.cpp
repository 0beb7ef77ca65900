#include "demo/DemoMachine.h"

#include "demo/DemoContent.h"
#include "demo/DemoWorkspace.h"

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

/// The desktop that the demo runs on, with programs of the demo machine running on it.
class DemoWorkspace final : public Workspace {
public:
    void reveal(const QString& path) override { m_desktop->reveal(path); }

    std::vector<RunningApplication> runningApplications() override
    {
        return {
            {u"com.google.Chrome"_s, u"Google Chrome"_s, true},
            {u"com.example.foldcraft"_s, u"Foldcraft Studio"_s, true},
            {u"com.example.reelbarn"_s, u"Reelbarn Helper"_s, false},
        };
    }

private:
    const std::unique_ptr<Workspace> m_desktop = ofThisMachine();
};

} // namespace

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
