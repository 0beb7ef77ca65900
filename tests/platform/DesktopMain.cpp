#include <QGuiApplication>

#include <gtest/gtest.h>

/// The main of tests that have to do with the desktop: never with the developer's.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP"})
        qunsetenv(name);
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
