#pragma once

#include "app/BrivaneApp.h"
#include "app/ShellViewModel.h"
#include "core/AppSettings.h"
#include "core/Composition.h"
#include "removal/QuarantineProvider.h"
#include "sandbox/AdvanceScreen.h"
#include "sandbox/HoldableClock.h"
#include "sandbox/SandboxMachine.h"
#include "sandbox/SandboxVolumes.h"
#include "sandbox/SandboxWorkspace.h"
#include "scanner/ScanViewModel.h"
#include "tests/support/AwaitTask.h"
#include "tests/support/PrintText.h"
#include "tests/support/VisualTree.h"

#include <QQuickWindow>
#include <QTest>

#include <gtest/gtest.h>

namespace brivane::testing {

enum class Access { Granted, Missing };

/// A machine with one startup disk, on which the program can be started again and again.
class AppMachine {
public:
    explicit AppMachine(Access access = Access::Granted)
        : machine(SandboxMachine::temporary())
    {
        if (access == Access::Granted)
            machine.directory(u"~/Library/Safari");
        for (const char16_t* file :
             {u"/Applications/Atlas.app/Contents/atlas", u"/Library/Deep/Down/film"})
            machine.file(file, SandboxMachine::Size{1'000'000});
    }

    /// As at each start, the preferences are read anew.
    std::unique_ptr<OwnedHost> start() const
    {
        auto volumes = std::make_unique<SandboxVolumes>(machine);
        if (!hasDisk)
            volumes->unmount(volumes->startupDisk());
        return std::make_unique<OwnedHost>(machine.locations(), std::move(volumes),
                                           std::make_unique<HoldableClock>(clockStep),
                                           std::make_unique<SandboxWorkspace>());
    }

    SandboxMachine machine;
    bool hasDisk = true;                      ///< no volume is listed otherwise
    std::chrono::microseconds clockStep{200}; ///< what each look at the clock takes
};

/// The program's window, on screen and active.
class AppWindow {
public:
    explicit AppWindow(const AppMachine& machine)
        : m_host(machine.start())
        , m_composition(host())
        , m_app(m_composition)
        , m_window(m_app.open())
    {
        if (!m_window)
            throw std::runtime_error("no window");
        if (!QTest::qWaitForWindowActive(m_window, 5000))
            throw std::runtime_error("the window did not become active");
    }
    ~AppWindow() { clock().release(); }

    /// Also waits until the volumes are listed.
    ShellViewModel& shell()
    {
        EXPECT_TRUE(waitUntil([&] { return !scan().selectedMountPoint().isEmpty(); }));
        return *m_app.shell();
    }
    ScanViewModel& scan() { return *m_app.shell()->viewModel<ScanViewModel>(AppMode::scanner); }
    bool isScanned()
    {
        return waitUntil([&] { return scan().scanState() == ScanViewModel::Completed; });
    }

    /// In the machine's home; made by the first call.
    QuarantineService& quarantine() { return m_composition.get<QuarantineProvider>().openNow(); }
    Composition& composition() { return m_composition; }
    BrivaneApp& app() { return m_app; }
    Host& host() { return m_host->host(); }
    HoldableClock& clock() { return dynamic_cast<HoldableClock&>(host().clock); }
    SandboxVolumes& volumes() { return dynamic_cast<SandboxVolumes&>(host().volumes); }
    /// What the file manager was asked to show.
    QStringList revealed() { return dynamic_cast<SandboxWorkspace&>(host().workspace).revealed(); }
    QQuickWindow& window() { return *m_window; }
    QQuickItem* item(const QString& name) const
    {
        settle();
        return findItem(*m_window, name);
    }
    bool shows(const QString& name) const
    {
        return waitUntil([&] { return item(name) != nullptr; });
    }
    bool showsText(const QString& text) const
    {
        return waitUntil([&] { return findText(*m_window, text) != nullptr; });
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        settle();
        QTest::keyClick(m_window, key, modifiers);
        settle();
    }
    /// Presses the keys of a text in ASCII.
    void type(const QString& text)
    {
        settle();
        for (const QChar character : text)
            QTest::keyClick(m_window, character.toLatin1());
    }
    /// In the middle of `target`, wherever that lies and whatever lies over it.
    void click(const QQuickItem& target, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(m_window, button, {}, centre(target));
        settle();
    }
    /// False when no item of that name comes on screen.
    bool click(const QString& name)
    {
        if (!shows(name))
            return false;
        click(*item(name));
        return true;
    }
    /// In the window's coordinates.
    QPoint centre(const QQuickItem& target)
    {
        picture(); // what has changed is laid out before each frame
        return target.mapToScene({target.width() / 2, target.height() / 2}).toPoint();
    }
    QImage picture() { return m_window->grabWindow(); }
    /// Runs what waits in the event loop right now.
    static void step() { QCoreApplication::processEvents(); }

private:
    /// Waits until the module's screen is made.
    void settle() const
    {
        EXPECT_TRUE(waitUntil([&] { return !advanceScreen(*m_window); }));
    }

    std::unique_ptr<OwnedHost> m_host;
    Composition m_composition;
    BrivaneApp m_app;
    QQuickWindow* m_window;
};

} // namespace brivane::testing
