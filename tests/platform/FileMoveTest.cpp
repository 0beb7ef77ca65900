#include "platform/FileMove.h"

#include "platform/FileRemoval.h"
#include "platform/FileWriting.h"
#include "support/FileTestSupport.h"

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace brivane;
using namespace Qt::StringLiterals;

namespace {

/// An access list that lets user 1234 read; mode 0640 goes with it.
const QByteArray accessList = QByteArray::fromHex("02000000"
                                                  "01000600ffffffff"
                                                  "02000400d2040000"
                                                  "04000000ffffffff"
                                                  "10000400ffffffff"
                                                  "20000000ffffffff");

void setAttribute(const QByteArray& path, const char* name, const QByteArray& value)
{
    ASSERT_EQ(::setxattr(path, name, value.constData(), std::size_t(value.size()), 0), 0) << name;
}

int codeOf(const Result<Moved>& result)
{
    return result ? 0 : result.error().code;
}

using FileMoveBetweenDevices = TwoDevices;

} // namespace

TEST(FileMove, NothingIsEverReplaced)
{
    const TestFolder folder;
    const TestFolder other(makeFolderOnOtherDevice(folder.path()));
    for (const TestFolder* place : {&folder, &other}) {
        if (place->path().isEmpty())
            continue;
        writeFile(*place / "file", "old");
        ASSERT_EQ(::mkdir(*place / "empty folder", 0755), 0);
        ASSERT_EQ(::symlink("nowhere", *place / "dangling"), 0);
        ASSERT_EQ(::mkdir(folder / "a folder", 0755), 0);
        writeFile(folder / "a file", "new");
        const Snapshot before = snapshot(place->path());
        for (const char* from : {"a file", "a folder"}) {
            for (const char* to : {"file", "empty folder", "dangling"}) {
                EXPECT_EQ(codeOf(moveWithoutReplacing(text(folder / from), text(*place / to))),
                          EEXIST)
                    << from << " to " << to;
            }
        }
        EXPECT_EQ(difference(snapshot(place->path()), before), "");
        EXPECT_EQ(readFile(folder / "a file"), "new");
        ASSERT_EQ(::rmdir(folder / "a folder"), 0);
    }
}

TEST_F(FileMoveBetweenDevices, EverythingIsKept)
{
    buildNastyTree(folder / "tree", {.specialFiles = false});
    unlockNastyTree(folder / "tree");
    ASSERT_EQ(::mkfifo(folder / "tree/fifo", 0622), 0);
    const QByteArray plain = folder / "tree/plain";
    for (const off_t size : {0, 1, 4096, (1 << 20) + 1, 9 << 20}) { // the last ends with a hole
        const QByteArray sized = folder / "tree/" + QByteArray::number(qint64(size));
        writeFile(sized, QByteArray(std::min<off_t>(size, 1 << 20), 'x'));
        ASSERT_EQ(::truncate(sized, size), 0);
    }
    ASSERT_EQ(::chmod(plain, 06640), 0);
    setAttribute(plain, "user.note", "kept \xFF");
    setAttribute(plain, "system.posix_acl_access", accessList);
    setAttribute(folder / "tree/chain", "user.on folder", "kept");
    ASSERT_EQ(::chmod(folder / "tree/chain/level", 0500), 0);
    const std::array<timespec, 2> times = {timespec{1'000'000'000, 123'456'789},
                                           timespec{1'100'000'000, 987'654'321}};
    for (const char* name : {"tree/plain", "tree/dangling link", "tree/fifo", "tree/chain", "tree"})
        ASSERT_EQ(::utimensat(AT_FDCWD, folder / name, times.data(), AT_SYMLINK_NOFOLLOW), 0);
    struct stat before = {};
    ASSERT_EQ(::stat(folder / "tree/sparse", &before), 0);
    const Snapshot expected = snapshot(folder / "tree");
    ASSERT_EQ(::utimensat(AT_FDCWD, plain, times.data(), 0), 0); // reading it has set the first

    const auto moved = moveWithoutReplacing(text(folder / "tree"), text(other / "moved"));
    ASSERT_TRUE(moved) << moved.error().text().toStdString();
    EXPECT_TRUE(moved->leftBehind.empty());
    EXPECT_FALSE(stands(folder / "tree"));
    struct stat status = {};
    ASSERT_EQ(::stat(other / "moved/plain", &status), 0);
    EXPECT_EQ(status.st_atim.tv_nsec, 123'456'789);
    ASSERT_EQ(::stat(other / "moved/sparse", &status), 0);
    EXPECT_LE(status.st_blocks, before.st_blocks + 64);
    EXPECT_EQ(difference(snapshot(other / "moved"), expected), "");
    EXPECT_EQ(snapshot(other.path()).size(), expected.size() + 1) << "something temporary is left";
}

TEST_F(FileMoveBetweenDevices, WhatCannotBeCopiedLeavesTheSourceWholeAndNoRemains)
{
    buildNastyTree(folder / "tree"); // with a socket in it
    unlockNastyTree(folder / "tree");
    const Snapshot before = snapshot(folder / "tree");
    const auto moved = moveWithoutReplacing(text(folder / "tree"), text(other / "moved"));
    ASSERT_EQ(codeOf(moved), ENOTSUP);
    EXPECT_EQ(moved.error().path, text(folder / "tree/socket"));
    EXPECT_EQ(difference(snapshot(folder / "tree"), before), "");
    EXPECT_EQ(snapshot(other.path()).size(), 1U);
    EXPECT_EQ(codeOf(moveWithoutReplacing(text(folder / "tree"), text(other / "moved"),
                                          {.otherDevice = OtherDevice::Refuse})),
              EXDEV);
}

TEST_F(FileMoveBetweenDevices, FolderOfTheUsersOwnMovesWhateverItsModeAndKeepsIt)
{
    for (const TestFolder* place : {&folder, &other})
        ASSERT_EQ(::chmod(place->path(), 0777), 0);
    EXPECT_TRUE(passesUnprivileged([&] {
        ASSERT_EQ(::mkdir(folder / "closed", 0555), 0);
        ASSERT_EQ(::mkdir(folder / "there", 0777), 0);
        for (const mode_t mode : {0000U, 0111U, 0222U, 0444U, 0500U, 02555U}) {
            const QByteArray from = folder / "tree";
            for (const QByteArray& made : {from, from + "/inner"})
                ASSERT_EQ(::mkdir(made, 0755), 0);
            writeFile(from + "/inner/file", "content");
            for (const QByteArray& made : {from + "/inner", from})
                ASSERT_EQ(::chmod(made, mode), 0);
            const FileIdentity before = *FileIdentity::of(text(from));
            EXPECT_EQ(codeOf(moveWithoutReplacing(text(from), text(folder / "closed/x"))), EACCES);
            EXPECT_EQ(FileIdentity::of(text(from))->changedAt, before.changedAt)
                << "was opened up although that does not help";
            // By a rename, to the other device, and back from it.
            for (const auto& [start, to] : {std::pair(from, folder / "there/x"),
                                            {folder / "there/x", other / "x"},
                                            {other / "x", from}})
                ASSERT_EQ(codeOf(moveWithoutReplacing(text(start), text(to))), 0) << mode;
            for (const QByteArray& moved : {from, from + "/inner"}) {
                EXPECT_EQ(modeOf(moved), mode);
                ASSERT_EQ(::chmod(moved, 0700), 0);
            }
            EXPECT_EQ(readFile(from + "/inner/file"), "content");
            EXPECT_TRUE(removeTree(text(from)).isComplete());
        }
    }));
    EXPECT_EQ(snapshot(other.path()).size(), 1U);
}

TEST_F(FileMoveBetweenDevices, NameThatACopyMayNotTakeIsLeft)
{
    writeFile(folder / "file", "content");
    const QString taken = makeTemporaryName();
    writeFile(other.path() + '/' + taken.toUtf8(), "other");
    const Snapshot before = snapshot(other.path());
    for (const QString& name : {u"plain"_s, taken + u"/x"_s, taken}) {
        const auto moved = moveWithoutReplacing(text(folder / "file"), text(other / "file"),
                                                {.temporaryName = name});
        EXPECT_EQ(codeOf(moved), name == taken ? EEXIST : EINVAL);
    }
    EXPECT_EQ(difference(snapshot(other.path()), before), "");
}

TEST_F(FileMoveBetweenDevices, PathsBeyondPathMaxAreReached)
{
    buildDeepChain(folder / "deep", 3'000);
    const auto moved = moveWithoutReplacing(text(folder / "deep"), text(other / "deep"));
    ASSERT_TRUE(moved) << moved.error().reason().toStdString();
    EXPECT_FALSE(stands(folder / "deep"));
    EXPECT_EQ(
        FileIdentity::of(text(other / "deep" + QByteArray("/d").repeated(3'000) + "/bottom"))->size,
        0U);
}

TEST(FileMove, MeantObjectInAnotherFolderThatTookThePlaceOfItsOwnStays)
{
    const TestFolder folder;
    makeFolders(folder, {"own", "outside"});
    writeFile(folder / "own/file", "content");
    ASSERT_EQ(::link(folder / "own/file", folder / "outside/file"), 0);
    const QString path = text(folder / "own/file");
    const FileIdentity meant = *FileIdentity::of(path);
    ASSERT_EQ(::rename(folder / "own", folder / "parked"), 0);
    ASSERT_EQ(::symlink("outside", folder / "own"), 0);
    EXPECT_EQ(codeOf(moveWithoutReplacing(path, text(folder / "to"), {.expected = meant})), ESTALE);
    EXPECT_FALSE(removeTree(path, meant).isComplete());
    EXPECT_TRUE(stands(folder / "outside/file"));
    EXPECT_TRUE(removeTree(text(folder / "parked/file"), meant).isComplete());
}

TEST(FileMove, OnlyTheMeantObjectAndOnlyTheMeantWay)
{
    const TestFolder folder;
    writeFile(folder / "file", "shown");
    ASSERT_EQ(::mkdir(folder / "real", 0755), 0);
    ASSERT_EQ(::symlink("real", folder / "link"), 0);
    const QString from = text(folder / "file");
    const QString throughLink = text(folder / "link/file");

    MoveOptions meant = {.expected = *FileIdentity::of(from)};
    writeFile(folder / "file", "rewritten");
    EXPECT_EQ(codeOf(moveWithoutReplacing(from, text(folder / "real/file"), meant)), ESTALE);
    EXPECT_EQ(codeOf(moveWithoutReplacing(from, throughLink, {.toParents = ParentLinks::Refuse})),
              ENOTDIR);
    EXPECT_EQ(codeOf(moveWithoutReplacing(text(folder / "real"), text(folder / "real/in"))),
              EINVAL);
    EXPECT_EQ(readFile(folder / "file"), "rewritten");

    meant.expected = *FileIdentity::of(from);
    EXPECT_EQ(codeOf(moveWithoutReplacing(from, throughLink, meant)), 0);
    EXPECT_EQ(readFile(folder / "real/file"), "rewritten");
}
