#include "platform/Walk.h"
#include "sandbox/NastyTree.h"
#include "support/FileTestSupport.h"
#include "support/faults/SystemCallFaults.h"

#include <cerrno>
#include <cstring>

#include <gtest/gtest.h>

using namespace brivane;

TEST(WalkFaults, AFolderWhoseListingBreaksOffIsUnreadableAndKeepsWhatItGave)
{
    const TestFolder folder;
    constexpr int entries = 3000; // more than one call lists
    buildFlatFolder(folder / "flat", entries);
    const struct {
        int failingCall;
        int error;
        WalkKind end;
    } rows[] = {
        {0, EIO, WalkKind::UnreadableDirectory}, {1, EIO, WalkKind::UnreadableDirectory},
        {1, ENOENT, WalkKind::DirectoryEnd}, // removed meanwhile: the end, as readdir has it
        {1, EINTR, WalkKind::DirectoryEnd},      {-1, EIO, WalkKind::DirectoryEnd},
    };
    for (const auto& row : rows) {
        int listings = 0;
        const SystemCallFaults faults([&](const SystemCall& call) {
            const bool isListing = std::strcmp(call.name, "getdents64") == 0;
            return isListing && listings++ == row.failingCall ? row.error : 0;
        });
        Walk walk(folder / "flat");
        ASSERT_EQ(walk.next()->kind, WalkKind::Directory);
        int files = 0;
        const WalkEntry* entry = walk.next();
        for (; entry->kind == WalkKind::File; entry = walk.next())
            ++files;
        EXPECT_EQ(entry->kind, row.end);
        EXPECT_EQ(entry->error, row.end == WalkKind::DirectoryEnd ? 0 : row.error);
        EXPECT_EQ(walk.next(), nullptr);
        EXPECT_EQ(files == 0, row.failingCall == 0);
        EXPECT_EQ(files == entries, row.failingCall < 0 || row.error == EINTR);
    }
}
