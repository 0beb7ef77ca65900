#include "platform/SystemLog.h"

#include <gtest/gtest.h>

using namespace brivane;

TEST(Log, ANameInALineCannotStartALineOfItsOwn)
{
    testing::internal::CaptureStderr();
    writeToSystemLog(u"com.brivane.app", u"delete", LogLevel::Default, u"Gone: a\nb\x1B[2J");
    const std::string text = testing::internal::GetCapturedStderr();
    if (text.empty())
        GTEST_SKIP() << "the line went to the journal of this machine";
    EXPECT_EQ(text, "com.brivane.app delete default: Gone: a\uFFFDb\uFFFD[2J\n");
}
