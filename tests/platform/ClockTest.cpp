#include "support/AwaitTask.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

using namespace brivane;
using namespace brivane::testing;
using namespace std::chrono_literals;

TEST(Clock, ASleepThatIsOverWakesItsSleeper)
{
    SystemClock clock;
    const QCoro::Task<> none = clock.sleep(0ms);
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
