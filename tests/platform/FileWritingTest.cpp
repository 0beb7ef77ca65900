#include "platform/FileWriting.h"

#include "support/FileTestSupport.h"

#include <cerrno>

#include <gtest/gtest.h>
#include <sys/stat.h>
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
    struct stat status = {};
    ASSERT_EQ(::stat(folder / "new", &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
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
    struct stat status = {};
    ASSERT_EQ(::stat(folder / "a/b", &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700U);
    EXPECT_EQ(code(folder / "file"), ENOTDIR);
    EXPECT_EQ(code(folder / "file/x"), ENOTDIR);
    EXPECT_EQ(code(folder / "link/x", ParentLinks::Refuse), ENOTDIR);
    EXPECT_FALSE(stands(folder / "real/x"));
    EXPECT_EQ(code(folder / "link/x"), 0);
    EXPECT_TRUE(stands(folder / "real/x"));
    EXPECT_EQ(code(folder / "a/../real/y"), EINVAL);
}
