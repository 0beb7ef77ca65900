#include "platform/Locations.h"

#include "platform/FileWriting.h"
#include "platform/LiesIn.h"
#include "platform/LocationAliases.h"
#include "platform/StandardizedPath.h"
#include "support/FileTestSupport.h"
#include "support/Variable.h"

#include <QFile>
#include <QTemporaryDir>

#include <set>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace brivane;
using brivane::testing::Variable;
using namespace Qt::StringLiterals;

TEST(Locations, NoPathLeavesTheSandbox)
{
    const Locations locations = Locations::insideFolder(u"/box/"_s);
    const QString root = u"/box/Macintosh HD"_s;
    const std::pair<QString, QString> rows[] = {
        {u"~"_s, root + u"/Users/robin"_s},
        {u"~/Library/Caches"_s, root + u"/Users/robin/Library/Caches"_s},
        {u"/"_s, root},
        {u"/boxes"_s, root + u"/boxes"_s},
        {root + u"/Users/robin/.npm/npm"_s, root + u"/Users/robin/.npm/npm"_s}}; // found there
    for (const auto& [from, to] : rows)
        EXPECT_EQ(locations.path(from), to);
    EXPECT_EQ(Locations::asWritten(u"/Users/a"_s).path(u"~/x"), u"/Users/a/x");
    EXPECT_EQ(Locations::asWritten(u"/Users/a"_s).path(u"~b/x"), u"~b/x");
}

TEST(Locations, WhatIsShownNamesNoSandboxFolder)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile::link(folder.path(), folder.path() + u"/link"_s));
    const Locations direct = Locations::insideFolder(folder.path());
    const Locations byLink = Locations::insideFolder(folder.path() + u"/link"_s);
    for (const QString& path : {u"/"_s, u"/Users/robin/a"_s, u"/tmp/x"_s}) {
        EXPECT_EQ(direct.shown(direct.path(path)), path);
        EXPECT_EQ(byLink.shown(byLink.path(path)), path);
        EXPECT_EQ(byLink.shown(direct.path(path)), path) << "found by its real name";
    }
    EXPECT_EQ(direct.shown(folder.path() + u"/temporary/a\nb"_s), u"/temporary/a\uFFFDb");
    EXPECT_EQ(direct.shown(folder.path() + u"s/a"_s), folder.path() + u"s/a"_s);
    EXPECT_EQ(Locations::insideFolder(u"/"_s).shown(u"/tmp/a"), u"/tmp/a");
    EXPECT_EQ(Locations::asWritten(u"/Users/a"_s).shown(u"/Users/a/b"), u"/Users/a/b");
}

TEST(LiesIn, ComponentsCountAndSlashesAtTheEndDoNot)
{
    const std::tuple<QByteArray, QByteArray, bool> rows[] = {
        {"/a/b", "/a/b", true},  {"/a/b/c", "/a/b", true}, {"/a/bc", "/a/b", false},
        {"/a/b", "/a/b/", true}, {"/a/b/", "/a/b", true},  {"/a/bc", "/a/b/", false},
        {"/a", "/a/b", false},   {"/A/b", "/a", false},    {"/", "/", true},
        {"/a", "/", true},       {"a", "/", false},        {"", "/", false},
        {"/a", "", false},       {".ssh/id", ".ssh", true}};
    for (const auto& [path, folder, isIn] : rows) {
        EXPECT_EQ(liesIn(path, folder), isIn) << path.data() << ' ' << folder.data();
        EXPECT_EQ(liesIn(QString::fromUtf8(path), QString::fromUtf8(folder)), isIn);
    }
}

TEST(Locations, AliasesTakeTheLongestWholeComponents)
{
    const Variable home("HOME", "//home/./bob/../ann/");
    const Variable cache("XDG_CACHE_HOME", "/fast/cache");
    const Variable configuration("XDG_CONFIG_HOME", "relative/is/ignored");
    const Variable data("XDG_DATA_HOME", "");
    const Locations locations = Locations::onLinux();
    const std::pair<QString, QString> rows[] = {
        {u"~"_s, u"/home/ann"_s},
        {u"~/Library/Caches"_s, u"/fast/cache"_s},
        {u"~/Library/Caches/a/b"_s, u"/fast/cache/a/b"_s},
        {u"~/Library/CachesOld"_s, u"/home/ann/Library/CachesOld"_s},
        {u"~/Library/Preferences/x.plist"_s, u"/home/ann/.config/x.plist"_s},
        {u"~/Library/Preferences/com.brivane.app.plist"_s,
         u"/home/ann/.config/brivane/com.brivane.app.plist"_s},
        {u"~/Library/Caches/Google/Chrome/Default"_s, u"/fast/cache/google-chrome/Default"_s},
        {u"/opt/homebrew/bin/node"_s, u"/home/linuxbrew/.linuxbrew/bin/node"_s},
        {u"~/Downloads"_s, u"/home/ann/Downloads"_s}, // the desktop tells of no other
        {u"~/.Trash"_s, u"/home/ann/.local/share/Trash/files"_s}};
    for (const auto& [from, to] : rows)
        EXPECT_EQ(locations.path(from), to);
    for (const char* holdsHome : {"/", "/home/", "/home/ann"}) {
        const Variable noCache("XDG_CACHE_HOME", holdsHome);
        EXPECT_EQ(Locations::onLinux().path(u"~/Library/Caches"), u"/home/ann/.cache"_s);
    }
}

TEST(Locations, AUserFolderIsWhereTheDesktopSaysAndNeverTheHomeOrAboveIt)
{
    const QString none = u"~/Downloads"_s;
    const std::pair<QByteArray, QString> rows[] = {
        {"\"$HOME/T\xC3\xA9l\xC3\xA9"
         "chargements\"",
         u"/home/ann/T\u00E9l\u00E9chargements"_s},
        {R"(  "$HOME/a \"b\" \$c\\d/"  # told)", uR"(/home/ann/a "b" $c\d)"_s},
        {R"("/data//./x/../down=loads/")", u"/data/down=loads"_s},
        {"\"/\xFF\"", PathText::fromBytes("/\xFF")},
        {R"("$HOME/")", none},
        {R"("$HOME/x/..")", none},
        {R"("/")", none},
        {R"("/home")", none},
        {R"("/real/./ann")", none},
        // No entries.
        {R"("$HOMEX/a")", none},
        {R"("${HOME}/a")", none},
        {R"("\$HOME/a")", none},
        {R"("relative")", none},
        {R"("/no/end\")", none},
        {R"('/a')", none},
        {QByteArray("\"/a\0b\"", 7), none},
        {"\"", none},
        {"", none}};
    for (const auto& [value, downloads] : rows) {
        const QByteArray content = "# XDG_DOWNLOAD_DIR=\"/no\"\n=\n\nXDG_MUSIC_DIR=\"/m\"\n"
                                   " XDG_DOWNLOAD_DIR = " +
                                   value + "\nXDG_VIDEOS_DIR=\"/v\"";
        const UserFolders found = parseUserFolders(content, u"/home/ann"_s, u"/real/ann"_s);
        EXPECT_EQ(found.downloads, downloads == none ? QString() : downloads) << value.data();
        EXPECT_EQ(found.music + found.videos, u"/m/v") << value.data();
    }

    const TestFolder folder;
    const QByteArray file = folder / "user-dirs.dirs";
    const Variable home("HOME", folder.path());
    const Variable configuration("XDG_CONFIG_HOME", folder.path());
    const auto downloads = [] { return Locations::onLinux().path(u"~/Downloads/a"); };
    const QString asWritten = text(folder / "Downloads/a");
    const QByteArray line = "XDG_DOWNLOAD_DIR=\"$HOME/Stuff\"\n";
    EXPECT_EQ(downloads(), asWritten);
    writeFile(file, line);
    EXPECT_EQ(downloads(), text(folder / "Stuff/a"));
    ASSERT_EQ(::truncate(file, 1 << 20), 0);
    EXPECT_EQ(downloads(), asWritten);
    ASSERT_EQ(::unlink(file), 0);
    ASSERT_EQ(::mkfifo(file, 0600), 0);
    EXPECT_EQ(downloads(), asWritten);
}

TEST(Locations, WhatADesktopAddsLiesInItsOwnFoldersAndIsReportedOnce)
{
    const TestFolder folder;
    const Variable home("HOME", folder.path());
    const Variable cache("XDG_CACHE_HOME", "/fast/Cache");
    const Variable configuration("XDG_CONFIG_HOME", folder.path());
    const auto values = [](const Locations& locations, QStringView table) {
        QStringList all;
        for (const Locations::Addition& addition : locations.additions(table))
            all += addition.value;
        return all;
    };
    const Locations plain = Locations::onLinux();
    EXPECT_EQ(values(plain, u"screenshots").last(), text(folder / "Pictures"));
    EXPECT_TRUE(values(plain, u"browserCaches").contains(u"/fast/Cache/chromium"_s));
    EXPECT_TRUE(values(plain, u"runningApplications").contains(u"/fast/cache/chromium"_s));
    EXPECT_TRUE(values(plain, u"vsCodeCache").contains(text(folder / "VSCodium/logs")));
    EXPECT_TRUE(values(Locations::asWritten(u"/Users/a"_s), u"browserCaches").isEmpty());

    const QStringList covered = values(plain, u"cachesCoveredElsewhere");
    for (const QStringView table : {u"browserCaches", u"mailCaches", u"nodeModules"}) {
        for (const QString& place : values(plain, table)) {
            for (const QString& above :
                 {u"/fast/Cache"_s, text(folder / ".var/app"), text(folder / "snap")}) {
                if (liesIn(place, above)) {
                    EXPECT_TRUE(covered.contains(
                        place.section(u'/', above.count(u'/') + 1, above.count(u'/') + 1)))
                        << qPrintable(place);
                }
            }
        }
    }

    writeFile(folder / "user-dirs.dirs", "XDG_PICTURES_DIR=\"/p\"\nXDG_SCREENSHOTS_DIR=\"/s\"\n");
    const QStringList named = values(Locations::onLinux(), u"screenshots");
    EXPECT_EQ(named.first() + named.last(), u"/s/p");
}

TEST(Locations, NoAliasIsListedTwiceOrLeadsToAnother)
{
    std::set<QString> seen;
    const auto aliases =
        resolvedAliases({u"/h"_s, u"/h/.cache"_s, u"/h/.config"_s, u"/h/.local"_s});
    for (const ResolvedAlias& alias : aliases) {
        EXPECT_TRUE(seen.insert(alias.cataloguePath.toString()).second)
            << qPrintable(alias.cataloguePath.toString());
        for (const ResolvedAlias& other : aliases)
            EXPECT_FALSE(alias.target.startsWith(other.cataloguePath)) << qPrintable(alias.target);
    }
}

TEST(Locations, TheRealHomeIsWhereTheLinksOnTheWayLead)
{
    const TestFolder folder;
    ASSERT_EQ(::mkdir(folder / "real", 0700), 0);
    ASSERT_EQ(::symlink("real", folder / "link"), 0);
    for (const char* below : {"", "/missing/robin", "/caf\xE9"}) {
        const Locations locations = Locations::asWritten(text(folder / "link" + below));
        EXPECT_EQ(locations.home(), text(folder / "link" + below));
        EXPECT_EQ(locations.realHome(), text(folder / "real" + below));
    }
}

TEST(Locations, TemporaryFilesAreNeverOpenToOthers)
{
    const TestFolder folder;
    const Variable runtime("XDG_RUNTIME_DIR", folder.path());
    const QByteArray wanted = folder / "brivane";
    const auto isTaken = [&] { return Locations::onLinux().temporaryDirectory() == text(wanted); };
    EXPECT_TRUE(isTaken());
    EXPECT_EQ(modeOf(wanted), 0700u);

    ASSERT_EQ(::chmod(wanted, 0777), 0);
    EXPECT_TRUE(isTaken());
    EXPECT_EQ(modeOf(wanted), 0700u);

    ASSERT_EQ(::rmdir(wanted), 0);
    ASSERT_EQ(::symlink("/tmp", wanted), 0);
    EXPECT_FALSE(isTaken());

    ASSERT_EQ(::chmod(folder.path(), 0777), 0); // anyone may rename in it
    ASSERT_EQ(::unlink(wanted), 0);
    EXPECT_FALSE(isTaken());

    ASSERT_EQ(::chmod(folder.path(), 0700), 0);
    ASSERT_EQ(::symlink("/tmp", folder / "temporary"), 0);
    const Locations locations = Locations::insideFolder(text(folder.path()));
    const QString unique = locations.temporaryDirectory();
    EXPECT_TRUE(unique.startsWith(text(folder / "temporary-"))) << qPrintable(unique);
    EXPECT_EQ(modeOf(PathText::toBytes(unique)), 0700u);
    EXPECT_EQ(locations.temporaryDirectory(), unique);
}

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
