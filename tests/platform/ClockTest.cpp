#include "support/AwaitTask.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

using namespace brivane;
using namespace brivane::testing;
using namespace std::chrono_literals;

TEST(Clock, ASleeperWakesWhenItsTimeHasComeNotBefore)
{
    ManualClock clock;
    const QCoro::Task<> longer = clock.sleep(200ms);
    const QCoro::Task<> shorter = clock.sleep(100ms);
    clock.advance(99ms);
    EXPECT_EQ(clock.sleepers(), 2u);
    clock.advance(1ms);
    EXPECT_TRUE(waitUntil([&] { return shorter.isReady(); }));
    EXPECT_FALSE(longer.isReady());
    clock.advance(1h);
    EXPECT_TRUE(waitUntil([&] { return longer.isReady(); }));

    SystemClock system; // a timer that is not armed would never fire
    const QCoro::Task<> none = system.sleep(0ms);
    EXPECT_TRUE(waitUntil([&] { return none.isReady(); }));
}
