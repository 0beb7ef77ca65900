#include "platform/StandardizedPath.h"

#include "platform/FileWriting.h"
#include "support/FileTestSupport.h"

#include <gtest/gtest.h>
#include <unistd.h>

using namespace brivane;
using namespace Qt::StringLiterals;

TEST(StandardizedPath, OneFolderHasOneSpelling)
{
    const std::pair<QString, QString> rows[] = {
        {u"~/Movies/"_s, u"/Users/ann/Movies"_s},
        {u"~nobody-of-that-name/x"_s, u"~nobody-of-that-name/x"_s},
        {u"/a//b/./c/"_s, u"/a/b/c"_s},
        {u"/a/../b/.."_s, u"/"_s},
        {u"/../.."_s, u"/"_s},
        {u"/..a/b.."_s, u"/..a/b.."_s},
        {u"a/../b/"_s, u"a/../b"_s},
        {u"."_s, QString()},
        {QString(), QString()},
        {u"/private/etc"_s, u"/etc"_s},
        {u"/private/no-such-file"_s, u"/private/no-such-file"_s},
        {u"/private"_s, u"/private"_s},
        {u"/privateer/etc"_s, u"/privateer/etc"_s}};
    for (const auto& [path, expected] : rows)
        EXPECT_EQ(standardizedPath(path, u"/Users/ann"_s), expected) << qPrintable(path);
}

TEST(StandardizedPath, TheParentOfALinkIsWhereTheLinkLeads)
{
    const TestFolder folder;
    ASSERT_TRUE(makeDirectoryWithParents(text(folder / "real/deep"), 0700, ParentLinks::Follow));
    ASSERT_EQ(::symlink("real/deep", folder / "link"), 0);
    EXPECT_EQ(standardizedPath(text(folder / "link/../x"), {}), text(folder / "real/x"));
    EXPECT_EQ(standardizedPath(text(folder / "link/x"), {}), text(folder / "link/x"));
}
