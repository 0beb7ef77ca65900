#pragma once

#include "app/BrivaneApp.h"
#include "app/ShellViewModel.h"
#include "core/Composition.h"
#include "core/Log.h"
#include "platform/Volumes.h"
#include "sandbox/SandboxMachine.h"
#include "scanner/ScanViewModel.h"

#include <stdexcept>

namespace brivane {

/// The program's real window. Preferences go to a sandbox; what is scanned is the machine itself.
/// GUI thread.
class RealWindow {
public:
    RealWindow()
        : m_machine(SandboxMachine::temporary())
        , m_host(m_machine.locations())
    {
        BrivaneApp::prepareProcess();
        m_app = std::make_unique<BrivaneApp>(m_composition);
        m_window = m_app->open();
        if (!m_window)
            throw std::runtime_error("there is no window");
        m_app->setOnboarded(true);
    }

    /// Whose commands the program calls.
    [[nodiscard]] const SandboxMachine& machine() const { return m_machine; }
    [[nodiscard]] QQuickWindow& window() { return *m_window; }
    [[nodiscard]] ShellViewModel& shell() { return *m_app->shell(); }
    [[nodiscard]] ScanViewModel& scan()
    {
        return *m_app->shell()->viewModel<ScanViewModel>(AppMode::scanner);
    }

private:
    LogCapture m_quiet;
    SandboxMachine m_machine;
    OwnedHost m_host;
    Composition m_composition{m_host.host()};
    std::unique_ptr<BrivaneApp> m_app;
    QQuickWindow* m_window = nullptr; ///< belongs to m_app
};

} // namespace brivane
