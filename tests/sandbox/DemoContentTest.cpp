#include "demo/DemoContent.h"

#include "sandbox/SandboxMachine.h"
#include "support/FileTestSupport.h"

#include <map>

#include <gtest/gtest.h>

using namespace brivane;

TEST(DemoContent, LooksLikeAMachineOfSomeYearsAndTakesNoRoom)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    fillWithDemoContent(machine, QDateTime::fromSecsSinceEpoch(1'800'000'000, Qt::UTC));
    qint64 logical = 0;
    qint64 allocated = 0;
    std::map<off_t, int> largeOfSize;
    forEachByFts(PathText::toBytes(machine.folder()), 0, [&](const FTSENT& entry) {
        if (entry.fts_info != FTS_F)
            return;
        logical += entry.fts_statp->st_size;
        allocated += entry.fts_statp->st_blocks * 512;
        if (entry.fts_statp->st_size > 10'000'000) {
            EXPECT_EQ(++largeOfSize[entry.fts_statp->st_size], 1) << entry.fts_path;
        }
    });
    EXPECT_GT(logical, 200'000'000'000);
    EXPECT_LT(logical, 300'000'000'000);
    EXPECT_LT(allocated, 100'000'000);
}
