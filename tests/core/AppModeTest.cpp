#include "core/AppMode.h"

#include <QMetaEnum>

#include <gtest/gtest.h>

using namespace brivane;

TEST(AppMode, TheSidebarHoldsEveryModuleOnce)
{
    QList<AppMode::Mode> held;
    for (const AppMode::NavSection section : AppMode::allSections())
        held += AppMode::modes(section);
    std::sort(held.begin(), held.end());
    EXPECT_EQ(held, AppMode::allModes());
    EXPECT_EQ(held.size(), QMetaEnum::fromType<AppMode::Mode>().keyCount());
}
