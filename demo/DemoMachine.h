#pragma once

#include "platform/Host.h"
#include "sandbox/SandboxMachine.h"
#include "sandbox/SandboxVolumes.h"

#include <memory>

namespace brivane {

/// A sandbox machine that has been lived in, as a Host for the program. It is removed in the end.
class DemoMachine {
public:
    /// With the system's clock, unless another is given.
    explicit DemoMachine(std::unique_ptr<Clock> clock = nullptr);

    [[nodiscard]] Host& host() { return m_host->host(); }
    [[nodiscard]] const SandboxMachine& machine() const { return m_machine; }
    [[nodiscard]] SandboxVolumes& volumes() { return *m_volumes; }

private:
    SandboxMachine m_machine;
    SandboxVolumes* m_volumes = nullptr; ///< owned by m_host
    std::unique_ptr<OwnedHost> m_host;
};

} // namespace brivane
