#include "app/BrivaneApp.h"
#include "components/Motion.h"
#include "platform/DefaultFileSystem.h"
#include "platform/Host.h"
#include "platform/Volumes.h"
#include "sandbox/SandboxMachine.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Also while CTest asks for the list of tests, and never on the developer's desktop.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    brivane::BrivaneApp::prepareProcess();
    brivane::Motion::instance().setEnabled(false);
    // What is shared by the whole process keeps away from this user's preferences.
    const auto machine = brivane::SandboxMachine::temporary();
    brivane::OwnedHost host(machine.locations(), brivane::DefaultFileSystem::shared());
    brivane::Host::setShared(host.host());
    return RUN_ALL_TESTS();
}
