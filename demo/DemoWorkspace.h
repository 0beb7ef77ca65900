#pragma once

#include "platform/Workspace.h"

namespace brivane {

/// The desktop of this machine, but for the programs that run: those are the demo machine's, which
/// has two open whose caches Smart Clean finds.
class DemoWorkspace final : public Workspace {
public:
    void reveal(const QString& path) override { m_real->reveal(path); }
    [[nodiscard]] std::vector<RunningApplication> runningApplications() override
    {
        const auto text = [](QStringView name) { return name.toString(); };
        return {{text(u"com.google.Chrome"), text(u"Chrome"), true},
                {text(u"com.example.reelbarn"), text(u"Reelbarn"), true},
                {text(u"com.example.pigeonbox.fetch"), text(u"Pigeon Fetch"), false}};
    }

private:
    std::unique_ptr<Workspace> m_real = Workspace::ofThisMachine();
};

} // namespace brivane
