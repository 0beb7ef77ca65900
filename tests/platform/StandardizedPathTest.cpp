#include "platform/StandardizedPath.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace brivane;
using namespace Qt::StringLiterals;

TEST(StandardizedPath, OneFolderHasOneSpelling)
{
    const std::pair<QString, QString> rows[] = {
        {u"~/Movies/"_s, u"/Users/ann/Movies"_s},
        {u"~"_s, u"/Users/ann"_s},
        {u"~nobody-of-that-name/x"_s, u"~nobody-of-that-name/x"_s},
        {u"/a//b/./c/"_s, u"/a/b/c"_s},
        {u"/a/../b/.."_s, u"/"_s},
        {u"/../.."_s, u"/"_s},
        {u"//"_s, u"/"_s},
        {u"/..a/b.."_s, u"/..a/b.."_s},
        {u"a/../b/"_s, u"a/../b"_s},
        {u"."_s, QString()},
        {QString(), QString()},
        {u"/private/etc"_s, u"/etc"_s},
        {u"/private/no-such-file"_s, u"/private/no-such-file"_s},
        {u"/private"_s, u"/private"_s},
        {u"/privateer/etc"_s, u"/privateer/etc"_s},
    };
    for (const auto& [path, expected] : rows)
        EXPECT_EQ(standardizedPath(path, u"/Users/ann"_s), expected) << qPrintable(path);
}

TEST(StandardizedPath, TheParentOfALinkIsWhereTheLinkLeads)
{
    const QTemporaryDir folder;
    const QString real = folder.path() + u"/real/deep"_s;
    const QString link = folder.path() + u"/link"_s;
    ASSERT_TRUE(QDir().mkpath(real));
    ASSERT_EQ(::symlink(real.toUtf8().constData(), link.toUtf8().constData()), 0);
    EXPECT_EQ(standardizedPath(link + u"/../x"_s, {}), folder.path() + u"/real/x"_s);
    EXPECT_EQ(standardizedPath(link + u"/x"_s, {}), link + u"/x"_s);
}
