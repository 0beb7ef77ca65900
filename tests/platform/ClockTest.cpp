#include "platform/Clock.h"

#include "support/AwaitTask.h"

#include <gtest/gtest.h>

using namespace brivane;
using namespace std::chrono_literals;

TEST(Clock, ASleepEndsWhenItIsOverAndAtOnceWhenItIsStopped)
{
    SystemClock clock;
    const QCoro::Task<> none = clock.sleep(0ms);
    EXPECT_TRUE(brivane::testing::waitUntil([&] { return none.isReady(); }));
    std::stop_source source;
    const QCoro::Task<> sleeping = clock.sleep(1h, source.get_token());
    EXPECT_FALSE(sleeping.isReady());
    source.request_stop();
    EXPECT_TRUE(sleeping.isReady());
    EXPECT_TRUE(clock.sleep(1h, source.get_token()).isReady());
}
