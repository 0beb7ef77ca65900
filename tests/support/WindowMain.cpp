#include "app/BrivaneApp.h"
#include "components/Motion.h"

#include <QApplication>

#include <gtest/gtest.h>

// The address sanitizer asks for these. The software renderer of Qt 6.4 does not give back the
// textures of images when a window closes, and only whole stacks tell that from leaks of ours.
extern "C" const char* __asan_default_options();
extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __asan_default_options()
{
    return "fast_unwind_on_malloc=0";
}

extern "C" const char* __lsan_default_suppressions()
{
    return "leak:QSGRenderContext::textureForFactory\n";
}

int main(int argc, char** argv)
{
    // Also while CTest asks for the list of tests, and never on the developer's desktop.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    brivane::BrivaneApp::prepareProcess();
    brivane::Motion::instance().setEnabled(false);
    return RUN_ALL_TESTS();
}
