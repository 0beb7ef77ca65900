#include "platform/FileMove.h"
#include "platform/FileRemoval.h"
#include "sandbox/NastyTree.h"
#include "support/FileTestSupport.h"
#include "support/faults/SystemCallFaults.h"

#include <cerrno>
#include <cstring>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace brivane;

namespace {

void buildSource(const QByteArray& path)
{
    buildNastyTree(path, {.levels = 18, .names = false, .specialFiles = false});
    unlockNastyTree(path);
    ASSERT_EQ(::mkfifo(path + "/fifo", 0644), 0);
    ASSERT_EQ(::setxattr(path + "/plain", "user.note", "kept", 4, 0), 0);
}

/// What a full or a broken disk says to this call.
int plausibleError(const char* call)
{
    for (const char* taking : {"pwrite64", "mkdirat", "symlinkat", "linkat", "fsetxattr"}) {
        if (std::strcmp(call, taking) == 0)
            return ENOSPC;
    }
    return EIO;
}

using FileMoveFaultsBetweenDevices = TwoDevices;

} // namespace

TEST_F(FileMoveFaultsBetweenDevices, AnyFailingCallBetweenDevicesLeavesTheTreeWholeInOnePlace)
{
    const QByteArray from = folder / "from";
    const QByteArray to = other / "to";
    Snapshot expected;
    int failures = 0;
    int successes = 0;
    bool wasReached = true;
    for (int n = 0; wasReached && !testing::Test::HasFailure(); ++n) {
        if (!stands(from)) {
            buildSource(from);
            expected = snapshot(from);
        }
        wasReached = false;
        std::string failed;
        std::optional<Result<Moved>> result;
        {
            const SystemCallFaults faults([&](const SystemCall& call) {
                if (call.index != n)
                    return 0;
                wasReached = true;
                failed = call.name;
                return plausibleError(call.name);
            });
            result = moveWithoutReplacing(text(from), text(to));
        }
        failed += " at call " + std::to_string(n);
        const auto& moved = *result;
        if (!moved) {
            ++failures;
            EXPECT_EQ(difference(snapshot(from), expected), "") << failed;
            EXPECT_EQ(snapshot(other.path()).size(), 1U) << failed << " left something behind";
            continue;
        }
        ++successes;
        EXPECT_EQ(difference(snapshot(to), expected), "") << failed;
        EXPECT_EQ(snapshot(other.path()).size(), expected.size() + 1) << failed;
        EXPECT_EQ(stands(from), !moved->leftBehind.empty()) << failed;
        for (const FileError& left : moved->leftBehind)
            EXPECT_TRUE(stands(PathText::toBytes(left.path))) << failed;
        (void)removeTree(text(from));
        (void)removeTree(text(to));
    }
    std::printf("%d fault points: %d ended in a failure, %d in a move\n", failures + successes - 1,
                failures, successes);
}

TEST(FileMoveFaults, FileSystemWithoutExclusiveRenameStillReplacesNothing)
{
    const TestFolder folder;
    const auto move = [&](const char* from, const char* to) {
        const SystemCallFaults faults([](const SystemCall& call) {
            return std::strcmp(call.name, "renameat2") == 0 ? EINVAL : 0;
        });
        const auto moved = moveWithoutReplacing(text(folder / from), text(folder / to));
        return moved ? 0 : moved.error().code;
    };
    writeFile(folder / "file", "content");
    writeFile(folder / "taken", "other");
    ASSERT_EQ(::mkdir(folder / "folder", 0755), 0);
    EXPECT_EQ(move("file", "taken"), EEXIST);
    EXPECT_EQ(readFile(folder / "taken"), "other");
    EXPECT_EQ(move("file", "free"), 0);
    EXPECT_EQ(readFile(folder / "free"), "content");
    EXPECT_FALSE(stands(folder / "file"));
    EXPECT_EQ(move("folder", "free folder"), ENOTSUP);
    EXPECT_TRUE(stands(folder / "folder"));
}

TEST_F(FileMoveFaultsBetweenDevices, WhatChangesWhileItIsCopiedIsNotLost)
{
    int calls = 1;
    for (int n = 0; n < calls && !testing::Test::HasFailure(); ++n) {
        ASSERT_EQ(::mkdir(other / "from", 0755), 0);
        writeFile(other / "from/file", "old content");
        bool isChanged = false;
        {
            const SystemCallFaults faults([&](const SystemCall& call) {
                // Right before the unlink is too late: nothing can compare and unlink in one step.
                if (call.index == n && stands(other / "from/file") &&
                    std::strcmp(call.name, "unlinkat") != 0) {
                    writeFile(other / "from/file", "changed");
                    writeFile(other / "from/added", "added");
                    isChanged = true;
                }
                return 0;
            });
            (void)moveWithoutReplacing(text(other / "from"), text(folder / "to"));
            calls = faults.calls();
        }
        if (isChanged) {
            const QByteArray root = stands(other / "from/file") ? other / "from" : folder / "to";
            EXPECT_EQ(readFile(root + "/file"), "changed") << n;
            EXPECT_TRUE(stands(other / "from/added") || stands(folder / "to/added")) << n;
        }
        (void)removeTree(text(other / "from"));
        (void)removeTree(text(folder / "to"));
    }
}
