#include "platform/FileMove.h"
#include "platform/FileRemoval.h"
#include "platform/FileWriting.h"
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
    for (const char* name : {"/read-only", "/not to be listed"}) {
        ASSERT_EQ(::mkdir(path + name, 0755), 0);
        writeFile(path + name + "/file", "content");
    }
    ASSERT_EQ(::chmod(path + "/read-only", 0555), 0);
    ASSERT_EQ(::chmod(path + "/not to be listed", 0311), 0);
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

class FileMoveFaultsBetweenDevices : public TwoDevices {
protected:
    void moveWithEachFault() const;
};

void FileMoveFaultsBetweenDevices::moveWithEachFault() const
{
    const QByteArray from = folder / "from";
    const QByteArray to = other / "to";
    const QString temporary = makeTemporaryName();
    bool wasNamed = false;
    Snapshot expected;
    int failures = 0;
    int successes = 0;
    bool wasReached = true;
    for (int n = 0; wasReached && !testing::Test::HasFailure(); ++n) {
        if (!stands(from)) {
            buildSource(from);
            expected = snapshot(from);
        }
        std::string failed;
        const auto fail = [&](const SystemCall& call) {
            wasNamed |= stands(other / temporary.toUtf8());
            failed = call.name;
            return plausibleError(call.name);
        };
        const auto moved = withFaultAt(n, wasReached, fail, [&] {
            return moveWithoutReplacing(text(from), text(to), {.temporaryName = temporary});
        });
        failed += " at call " + std::to_string(n);
        if (!moved) {
            ++failures;
            EXPECT_EQ(difference(snapshot(from), expected), "") << failed;
            EXPECT_EQ(snapshot(other.path()).size(), 1U) << failed << " left something behind";
            continue;
        }
        ++successes;
        EXPECT_EQ(difference(snapshot(to), expected), "") << failed;
        EXPECT_EQ(readFile(to + "/not to be listed/file"), "content") << failed;
        EXPECT_EQ(snapshot(other.path()).size(), expected.size() + 1) << failed;
        EXPECT_EQ(stands(from), !moved->leftBehind.empty()) << failed;
        for (const FileError& left : moved->leftBehind)
            EXPECT_TRUE(stands(PathText::toBytes(left.path))) << failed;
        (void)removeTree(text(from));
        (void)removeTree(text(to));
    }
    EXPECT_TRUE(wasNamed) << "the copy did not have the name that it was given";
    std::printf("%d fault points: %d ended in a failure, %d in a move\n", failures + successes - 1,
                failures, successes);
}

} // namespace

TEST_F(FileMoveFaultsBetweenDevices, AnyFailingCallBetweenDevicesLeavesTheTreeWholeInOnePlace)
{
    moveWithEachFault();
    for (const TestFolder* place : {&folder, &other})
        ASSERT_EQ(::chmod(place->path(), 0777), 0);
    EXPECT_TRUE(passesUnprivileged([this] { moveWithEachFault(); }));
}

TEST(FileMoveFaults, AnyFailingCallOfARenameLeavesTheFolderInOnePlaceWithItsMode)
{
    const auto renameWithEachFault = [](bool isExclusive) {
        const TestFolder folder;
        makeFolders(folder, {"from", "to"});
        bool wasReached = true;
        for (int n = 0; wasReached && !testing::Test::HasFailure(); ++n) {
            ASSERT_EQ(::mkdir(folder / "from/x", 0755), 0);
            writeFile(folder / "from/x/file", "content");
            ASSERT_EQ(::chmod(folder / "from/x", 0555), 0);
            const QString from = text(folder / "from/x");
            const MoveOptions options = {.expected = *FileIdentity::of(from)};
            std::string failed;
            std::optional<Result<Moved>> moved;
            {
                const SystemCallFaults faults([&](const SystemCall& call) {
                    const bool isRename = std::strcmp(call.name, "renameat2") == 0;
                    if (call.index == n)
                        failed = call.name;
                    return call.index == n ? EIO : isRename && !isExclusive ? EINVAL : 0;
                });
                moved = moveWithoutReplacing(from, text(folder / "to/x"), options);
            }
            wasReached = !failed.empty();
            const QByteArray place = folder / (*moved ? "to/x" : "from/x");
            EXPECT_TRUE(stands(place + "/file")) << failed << " at call " << n;
            // What is refused just when something is taken back cannot be helped.
            EXPECT_EQ(snapshot(folder.path()).size(), failed == "unlinkat" ? 6U : 5U) << failed;
            struct stat status = {};
            EXPECT_EQ(::stat(place, &status), 0);
            const bool mayBeLost = failed == "fchmod" || failed == "fchmodat";
            EXPECT_TRUE(mayBeLost || (status.st_mode & 07777) == 0555) << failed << ", " << n;
            for (const char* name : {"from/x", "to/x"})
                (void)removeTree(text(folder / name));
        }
    };
    for (const bool isExclusive : {true, false}) {
        renameWithEachFault(isExclusive);
        EXPECT_TRUE(passesUnprivileged([&] { renameWithEachFault(isExclusive); }));
    }
}

TEST_F(FileMoveFaultsBetweenDevices, NothingElseGoesInThePlaceOfTheMeantFolder)
{
    for (const QByteArray& to : {folder / "to", other / "to"}) {
        for (const bool isWayBackBlocked : {false, true}) {
            bool wasReached = true;
            for (int n = 0; wasReached && !testing::Test::HasFailure(); ++n) {
                ASSERT_EQ(::mkdir(folder / "from", 0755), 0);
                writeFile(folder / "from/meant", "");
                const MoveOptions options = {.expected = *FileIdentity::of(text(folder / "from"))};
                int renames = 0;
                wasReached = false;
                std::optional<Result<Moved>> moved;
                {
                    const SystemCallFaults faults([&](const SystemCall& call) {
                        wasReached |= call.index == n;
                        if (call.index == n && ::rename(folder / "from", folder / "inner") == 0) {
                            EXPECT_EQ(::mkdir(folder / "from", 0755), 0);
                            writeFile(folder / "from/foreign", "");
                            EXPECT_EQ(::rename(folder / "inner", folder / "from/inner"), 0);
                        }
                        renames += std::strcmp(call.name, "renameat2") == 0;
                        return isWayBackBlocked && renames == 2 ? EEXIST : 0;
                    });
                    moved = moveWithoutReplacing(text(folder / "from"), text(to), options);
                }
                const bool isToldWhere =
                    !*moved && moved->error().code == ESTALE && moved->error().path == text(to);
                EXPECT_EQ(stands(to + "/foreign"), isToldWhere) << n;
                (void)removeTree(text(folder / "from"));
                (void)removeTree(text(to));
            }
        }
    }
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
    ASSERT_EQ(::mkdir(folder / "empty", 0755), 0);
    const std::tuple<const char*, const char*, int> rows[] = {
        {"file", "taken", EEXIST},
        {"file", "free", 0},
        {"folder", "taken", EEXIST},
        {"folder", "empty", EEXIST},
        {"folder", "folder/in itself", EINVAL},
        {"folder", "free folder", 0}};
    for (const auto& [from, to, code] : rows) {
        EXPECT_EQ(move(from, to), code) << from << " to " << to;
        EXPECT_EQ(stands(folder / from), code != 0);
    }
    EXPECT_EQ(readFile(folder / "taken"), "other");
    EXPECT_EQ(readFile(folder / "free"), "content");
    EXPECT_EQ(snapshot(folder.path()).size(), 5U);
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
