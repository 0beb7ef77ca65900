#include <QCoreApplication>

#include <gtest/gtest.h>

/// The main of test programs whose code needs an event loop, but no screen.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
