#include "components/Fonts.h"
#include "components/Motion.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Also while CTest asks for the list of tests, and never on the developer's desktop.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    brivane::registerFonts();
    brivane::Motion::instance().setEnabled(false);
    return RUN_ALL_TESTS();
}
