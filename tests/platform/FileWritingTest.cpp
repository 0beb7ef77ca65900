#include "platform/FileWriting.h"

#include "support/FileTestSupport.h"

#include <cerrno>

#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace brivane;

TEST(FileWriting, ContentIsReplacedAsAWholeAndNotThroughALink)
{
    const TestFolder folder;
    const QByteArray large(3 << 20, 'x');
    writeFile(folder / "target", "behind the link");
    ASSERT_EQ(::symlink("target", folder / "link"), 0);
    for (const char* name : {"new", "new", "link"}) {
        ASSERT_TRUE(writeFileAtomically(text(folder / name), large, 0600));
        EXPECT_EQ(readFile(folder / name), large);
        ASSERT_TRUE(writeFileAtomically(text(folder / name), "", 0640));
        EXPECT_EQ(readFile(folder / name), "");
    }
    EXPECT_EQ(modeOf(folder / "new"), 0640U);
    EXPECT_EQ(readFile(folder / "target"), "behind the link");
    EXPECT_EQ(snapshot(folder.path()).size(), 4U);
}

TEST(FileWriting, FoldersAreMadeWithParentsAndThroughLinksOnlyIfWanted)
{
    const TestFolder folder;
    writeFile(folder / "file", "");
    ASSERT_EQ(::mkdir(folder / "real", 0755), 0);
    ASSERT_EQ(::symlink("real", folder / "link"), 0);
    const auto code = [&](const QByteArray& path, ParentLinks links = ParentLinks::Follow) {
        const auto made = makeDirectoryWithParents(text(path), 0700, links);
        return made ? 0 : made.error().code;
    };
    EXPECT_EQ(code(folder / "a/b/c/d"), 0);
    EXPECT_EQ(code(folder / "a/b"), 0);
    EXPECT_EQ(modeOf(folder / "a/b"), 0700U);
    EXPECT_EQ(code(folder / "file"), ENOTDIR);
    EXPECT_EQ(code(folder / "file/x"), ENOTDIR);
    EXPECT_EQ(code(folder / "link/x", ParentLinks::Refuse), ENOTDIR);
    EXPECT_FALSE(stands(folder / "real/x"));
    EXPECT_EQ(code(folder / "link/x"), 0);
    EXPECT_TRUE(stands(folder / "real/x"));
    EXPECT_EQ(code(folder / "a/../real/y"), EINVAL);
}

TEST(FileWriting, OnlyLinksThatNobodyElseCouldHaveMadeAreTrusted)
{
    const auto check = [] {
        const TestFolder folder;
        const auto code = [&](const QByteArray& path) {
            const auto made = makeDirectoryWithParents(text(path), 0700, ParentLinks::Trusted);
            return made ? 0 : made.error().code;
        };
        ASSERT_EQ(::mkdir(folder / "real", 0755), 0);
        ASSERT_EQ(::mkdir(folder / "sub", 0755), 0);
        const std::pair<QByteArray, const char*> links[] = {
            {"real", "relative"},  {folder / "real", "absolute"}, {"../real", "sub/up"},
            {"sub/./up", "chain"}, {"nowhere", "dangling"},       {"loop", "loop"}};
        for (const auto& [target, name] : links)
            ASSERT_EQ(::symlink(target, folder / name), 0);
        for (const char* name : {"relative", "absolute", "sub/up", "chain"})
            EXPECT_EQ(code(folder / name + "/made " + QByteArray(name).replace('/', ' ')), 0)
                << name;
        EXPECT_EQ(snapshot(folder / "real").size(), 5U);
        EXPECT_EQ(code(folder / "dangling/x"), ENOENT);
        EXPECT_FALSE(stands(folder / "nowhere"));
        EXPECT_EQ(code(folder / "loop"), ELOOP);
        EXPECT_EQ(code("/proc/self"), 0) << "a link of root's";

        const bool isGroupOurs =
            qstrcmp(::getgrgid(::getegid())->gr_name, ::getpwuid(::geteuid())->pw_name) == 0;
        for (const mode_t mode : {0777U, 01777U, 0775U, 0755U}) {
            ASSERT_EQ(::chmod(folder / "sub", mode), 0);
            const bool isOurs = mode == 0755 || (mode == 0775 && isGroupOurs);
            for (const char* name : {"sub/up", "chain"})
                EXPECT_EQ(code(folder / name), isOurs ? 0 : ENOTDIR) << mode;
        }
        const QByteArray userMayWrite =
            QByteArray::fromHex("0200000001000700ffffffff02000700d204000004000500ffffffff"
                                "10000700ffffffff20000500ffffffff");
        ASSERT_EQ(::setxattr(folder / "sub", "system.posix_acl_access", userMayWrite.constData(),
                             std::size_t(userMayWrite.size()), 0),
                  0);
        EXPECT_EQ(code(folder / "sub/up"), ENOTDIR) << "a user of the access list may write";
        if (::geteuid() == 0) {
            ASSERT_EQ(::lchown(folder / "relative", 1234, 1234), 0);
            EXPECT_EQ(code(folder / "relative"), ENOTDIR) << "a link of somebody else's";
        }
    };
    check();
    EXPECT_TRUE(passesUnprivileged(check));
}

TEST(FileWriting, ReserveIsReallyAllocatedAndNothingElseIsTakenForOne)
{
    const TestFolder folder;
    const QString path = text(folder / "reserve");
    for (const std::uint64_t bytes : {300'000U, 100'000U, 700'000U}) {
        ASSERT_TRUE(reserveSpace(path, bytes));
        EXPECT_LE(*FileIdentity::of(path)->size, 2 * bytes);
        EXPECT_EQ(modeOf(folder / "reserve"), 0600U);
    }
    ASSERT_TRUE(releaseSpace(path));
    EXPECT_TRUE(releaseSpace(path)) << "one that is missing";

    writeFile(folder / "file", QByteArray(10'000, 'x'));
    ASSERT_EQ(::link(folder / "file", folder / "hard link"), 0);
    ASSERT_EQ(::symlink("file", folder / "link"), 0);
    ASSERT_EQ(::symlink("nowhere", folder / "dangling"), 0);
    ASSERT_EQ(::mkfifo(folder / "fifo", 0600), 0);
    ASSERT_EQ(::mkdir(folder / "folder", 0755), 0);
    const Snapshot before = snapshot(folder.path());
    for (const char* name : {"hard link", "link", "dangling", "fifo", "folder"}) {
        EXPECT_EQ(reserveSpace(text(folder / name), 100).error().code, EEXIST) << name;
        EXPECT_EQ(releaseSpace(text(folder / name)).error().code, EEXIST) << name;
    }
    EXPECT_EQ(difference(snapshot(folder.path()), before), "");
}
