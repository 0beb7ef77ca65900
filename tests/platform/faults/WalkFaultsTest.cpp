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
    // The second calls of a folder that was removed meanwhile, and that a signal interrupted.
    for (const auto& [failing, error] : {std::pair(0, EIO), {1, EIO}, {1, ENOENT}, {1, EINTR}}) {
        int listings = 0;
        const SystemCallFaults faults([&, call = failing, code = error](const SystemCall& made) {
            const bool isListing = std::strcmp(made.name, "getdents64") == 0;
            return isListing && listings++ == call ? code : 0;
        });
        Walk walk(folder / "flat");
        ASSERT_EQ(walk.next()->kind, WalkKind::Directory);
        const WalkEntry* entry = walk.next();
        int files = 0;
        for (; entry->kind == WalkKind::File; entry = walk.next())
            ++files;
        EXPECT_EQ(entry->error, error == EIO ? EIO : 0);
        EXPECT_EQ(entry->kind == WalkKind::UnreadableDirectory, error == EIO);
        EXPECT_EQ(files == 0, failing == 0);
        EXPECT_EQ(files == entries, error == EINTR);
    }
}
