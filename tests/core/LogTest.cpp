#include "core/Log.h"

#include <gtest/gtest.h>

using namespace brivane;
using namespace Qt::StringLiterals;

TEST(Log, LinesKeepChannelAndLevel)
{
    const LogCapture outer;
    {
        const LogCapture capture;
        Log::perf.info(u"done %s"_s);
        Log::delete_.error(u"failed"_s);
        const std::vector<LogLine> lines = capture.lines();
        ASSERT_EQ(lines.size(), 2u);
        EXPECT_EQ(lines[0].subsystem, u"com.brivane.app");
        EXPECT_EQ(lines[0].category, u"performance");
        EXPECT_EQ(lines[0].level, LogLevel::Info);
        EXPECT_EQ(lines[0].text, u"done %s");
        EXPECT_EQ(lines[1].category, u"delete");
        EXPECT_EQ(lines[1].level, LogLevel::Error);
    }
    Log::scanner.notice(u"later"_s);
    EXPECT_EQ(outer.lines().size(), 1u);
}

TEST(Log, ANameInALineCannotStartALineOfItsOwn)
{
    testing::internal::CaptureStderr();
    writeToSystemLog(u"com.brivane.app", u"delete", LogLevel::Default, u"Gone: a\nb\x1B[2J");
    const std::string text = testing::internal::GetCapturedStderr();
    if (text.empty())
        GTEST_SKIP() << "the line went to the journal of this machine";
    EXPECT_EQ(text, "com.brivane.app delete default: Gone: a\uFFFDb\uFFFD[2J\n");
}
