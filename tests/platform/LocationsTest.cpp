#include "platform/Locations.h"

#include "platform/LocationAliases.h"

#include <QTemporaryDir>

#include <set>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace brivane;
using namespace Qt::StringLiterals;

namespace {

/// Sets variables of the environment for one test.
class LocationsTest : public testing::Test {
protected:
    void set(const char* name, const QByteArray& value)
    {
        m_before.push_back({name, qEnvironmentVariableIsSet(name), qgetenv(name)});
        qputenv(name, value);
    }

    void TearDown() override
    {
        for (const Before& before : m_before) {
            if (before.wasSet)
                qputenv(before.name, before.value);
            else
                qunsetenv(before.name);
        }
    }

    QTemporaryDir m_folder;

private:
    struct Before {
        const char* name;
        bool wasSet;
        QByteArray value;
    };
    std::vector<Before> m_before;
};

mode_t modeOf(const QString& path)
{
    struct stat facts = {};
    return ::lstat(path.toUtf8().constData(), &facts) == 0 ? facts.st_mode : 0;
}

} // namespace

TEST_F(LocationsTest, NoPathLeavesTheSandbox)
{
    const Locations locations = Locations::insideFolder(u"/box/"_s);
    const std::pair<QString, QString> rows[] = {
        {u"~"_s, u"/box/Macintosh HD/Users/robin"_s},
        {u"~/Library/Caches"_s, u"/box/Macintosh HD/Users/robin/Library/Caches"_s},
        {u"/"_s, u"/box/Macintosh HD"_s},
        {u"/usr/bin/tmutil"_s, u"/box/Macintosh HD/usr/bin/tmutil"_s},
        {u"/boxes"_s, u"/box/Macintosh HD/boxes"_s},
        {u"/box/Macintosh HD/Users/robin/.npm/npm"_s,
         u"/box/Macintosh HD/Users/robin/.npm/npm"_s}, // found there before: stays
    };
    for (const auto& [from, to] : rows)
        EXPECT_EQ(locations.path(from), to);
    EXPECT_EQ(Locations::asWritten(u"/Users/a"_s).path(u"~/x"), u"/Users/a/x");
    EXPECT_EQ(Locations::asWritten(u"/Users/a"_s).path(u"~b/x"), u"~b/x");
    EXPECT_EQ(Locations::asWritten(u"/Users/a"_s).path(u"/bin/ps"), u"/bin/ps");
}

TEST_F(LocationsTest, AliasesTakeTheLongestWholeComponents)
{
    set("HOME", "/home/ann/");
    set("XDG_CACHE_HOME", "/fast/cache");
    set("XDG_CONFIG_HOME", "relative/is/ignored");
    set("XDG_DATA_HOME", "");
    const Locations locations = Locations::onLinux();
    const std::pair<QString, QString> rows[] = {
        {u"~"_s, u"/home/ann"_s},
        {u"~/Library/Caches"_s, u"/fast/cache"_s},
        {u"~/Library/Caches/a/b"_s, u"/fast/cache/a/b"_s},
        {u"~/Library/CachesOld"_s, u"/home/ann/Library/CachesOld"_s},
        {u"~/Library/Preferences/x.plist"_s, u"/home/ann/.config/x.plist"_s},
        {u"~/Library/Preferences/com.brivane.app.plist"_s,
         u"/home/ann/.config/brivane/com.brivane.app.plist"_s},
        {u"~/.Trash"_s, u"/home/ann/.local/share/Trash/files"_s},
        {u"/Volumes"_s, u"/media/ann"_s},
        {u"/opt/homebrew"_s, u"/opt/homebrew"_s},
    };
    for (const auto& [from, to] : rows)
        EXPECT_EQ(locations.path(from), to);
}

TEST_F(LocationsTest, NoAliasIsListedTwiceOrLeadsToAnother)
{
    const AliasBases bases{u"/h"_s, u"/h/.cache"_s, u"/h/.config"_s, u"/h/.local/share"_s};
    const std::vector<ResolvedAlias> aliases = resolvedAliases(bases);
    std::set<QString> seen;
    for (const ResolvedAlias& alias : aliases) {
        EXPECT_TRUE(seen.insert(alias.cataloguePath.toString()).second)
            << qPrintable(alias.cataloguePath.toString());
        EXPECT_TRUE(alias.target.startsWith(u'/') && !alias.target.endsWith(u'/'))
            << qPrintable(alias.target);
        for (const ResolvedAlias& other : aliases)
            EXPECT_FALSE(alias.target.startsWith(other.cataloguePath)) << qPrintable(alias.target);
    }
}

TEST_F(LocationsTest, TemporaryFilesAreNeverOpenToOthers)
{
    const QString wanted = m_folder.path() + u"/brivane"_s;
    set("XDG_RUNTIME_DIR", m_folder.path().toUtf8());

    EXPECT_EQ(Locations::onLinux().temporaryDirectory(), wanted);
    EXPECT_EQ(modeOf(wanted) & 07777, 0700u);

    ASSERT_EQ(::chmod(wanted.toUtf8().constData(), 0777), 0);
    EXPECT_EQ(Locations::onLinux().temporaryDirectory(), wanted);
    EXPECT_EQ(modeOf(wanted) & 07777, 0700u);

    ASSERT_EQ(::rmdir(wanted.toUtf8().constData()), 0);
    ASSERT_EQ(::symlink("/tmp", wanted.toUtf8().constData()), 0);
    EXPECT_NE(Locations::onLinux().temporaryDirectory(), wanted);

    ASSERT_EQ(::chmod(m_folder.path().toUtf8().constData(), 0777), 0); // anyone may rename in it
    ASSERT_EQ(::unlink(wanted.toUtf8().constData()), 0);
    EXPECT_NE(Locations::onLinux().temporaryDirectory(), wanted);
}

TEST_F(LocationsTest, AForeignTemporaryDirectoryIsReplacedByAUniqueOne)
{
    const QString wanted = m_folder.path() + u"/temporary"_s;
    ASSERT_EQ(::symlink("/tmp", wanted.toUtf8().constData()), 0);
    const Locations locations = Locations::insideFolder(m_folder.path());
    const QString unique = locations.temporaryDirectory();
    EXPECT_TRUE(unique.startsWith(wanted + u"-"_s)) << qPrintable(unique);
    EXPECT_EQ(modeOf(unique), mode_t(S_IFDIR | 0700));
    EXPECT_EQ(locations.temporaryDirectory(), unique);
}
