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
    EXPECT_TRUE(shorter.isReady());
    EXPECT_FALSE(longer.isReady());
    clock.advance(1h);
    EXPECT_TRUE(longer.isReady());

    SystemClock system; // a timer that is not armed would never fire
    const QCoro::Task<> none = system.sleep(0ms);
    EXPECT_TRUE(waitUntil([&] { return none.isReady(); }));
}

TEST(Clock, ASleepEndsAtOnceWhenItIsStopped)
{
    SystemClock system;
    ManualClock manual;
    for (Clock* clock : {static_cast<Clock*>(&system), static_cast<Clock*>(&manual)}) {
        std::stop_source source;
        const QCoro::Task<> sleeping = clock->sleep(1h, source.get_token());
        EXPECT_FALSE(sleeping.isReady());
        source.request_stop();
        EXPECT_TRUE(sleeping.isReady());
        EXPECT_TRUE(clock->sleep(1h, source.get_token()).isReady());
    }
    EXPECT_EQ(manual.sleepers(), 0u);
}
