#include "platform/FileWriting.h"
#include "support/FileTestSupport.h"
#include "support/faults/SystemCallFaults.h"

#include <cerrno>

#include <gtest/gtest.h>

using namespace brivane;

TEST(FileWritingFaults, AnyFailingCallLeavesTheOldContentAndNothingTemporary)
{
    const TestFolder folder;
    int points = 0;
    for (bool wasReached = true; wasReached && !testing::Test::HasFailure(); ++points) {
        writeFile(folder / "file", "old");
        wasReached = false;
        std::optional<Result<>> result;
        {
            const SystemCallFaults faults([&](const SystemCall& call) {
                if (call.index != points)
                    return 0;
                wasReached = true;
                return ENOSPC;
            });
            result = writeFileAtomically(text(folder / "file"), "new", 0600);
        }
        EXPECT_EQ(bool(*result), !wasReached);
        const bool mayBeNew = *result || result->error().operation == FileOperation::Sync;
        EXPECT_EQ(readFile(folder / "file"), mayBeNew ? "new" : "old") << points;
        EXPECT_EQ(snapshot(folder.path()).size(), 2U) << points;
    }
    std::printf("%d fault points\n", points - 1);
}
