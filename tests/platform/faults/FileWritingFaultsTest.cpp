#include "platform/FileWriting.h"
#include "support/FileTestSupport.h"
#include "support/faults/SystemCallFaults.h"

#include <cerrno>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace brivane;

TEST(FileWritingFaults, AnyFailingCallLeavesTheOldContentAndNothingTemporary)
{
    const TestFolder folder;
    int points = 0;
    for (bool wasReached = true; wasReached && !testing::Test::HasFailure(); ++points) {
        writeFile(folder / "file", "old");
        const auto result = withFaultAt(
            points, wasReached, [](const SystemCall&) { return ENOSPC; },
            [&] { return writeFileAtomically(text(folder / "file"), "new", 0600); });
        EXPECT_EQ(bool(result), !wasReached);
        const bool mayBeNew = result || result.error().operation == FileOperation::Sync;
        EXPECT_EQ(readFile(folder / "file"), mayBeNew ? "new" : "old") << points;
        EXPECT_EQ(snapshot(folder.path()).size(), 2U) << points;
    }
    std::printf("%d fault points\n", points - 1);
}

TEST(FileWritingFaults, FullVolumeLeavesTheReserveThatWasThereAndFileSystemWithoutAllocationFillsIt)
{
    const TestFolder folder;
    const auto sizeOf = [&] {
        struct stat status = {};
        return ::lstat(folder / "reserve", &status) == 0 ? int(status.st_blocks * 512) : -1;
    };
    for (int round = 0; round < 4; ++round) {
        const bool canAllocate = round % 2 == 0;
        bool wasReached = true;
        for (int n = 0; wasReached && !testing::Test::HasFailure(); ++n) {
            ASSERT_TRUE(round < 2 || reserveSpace(text(folder / "reserve"), 100'000));
            const int before = sizeOf();
            wasReached = false;
            std::optional<Result<>> result;
            {
                const SystemCallFaults faults([&](const SystemCall& call) {
                    wasReached |= call.index == n;
                    const bool isAllocation = QByteArrayView(call.name) == "fallocate64";
                    return call.index == n ? ENOSPC : !canAllocate && isAllocation ? EOPNOTSUPP : 0;
                });
                result = reserveSpace(text(folder / "reserve"), 400'000);
            }
            EXPECT_EQ(bool(*result), !wasReached) << n;
            EXPECT_TRUE(wasReached ? sizeOf() == before : sizeOf() >= 400'000) << n;
            ASSERT_TRUE(releaseSpace(text(folder / "reserve")));
        }
    }
}
