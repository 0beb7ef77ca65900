#include "removal/SafetyChecker.h"

#include "NaiveSafetyRules.h"
#include "platform/Locations.h"
#include "platform/PathText.h"
#include "sandbox/SandboxMachine.h"
#include "support/Variable.h"

#include <algorithm>
#include <cstdio>

#include <gtest/gtest.h>

using namespace brivane;
using brivane::testing::Variable;
using namespace Qt::StringLiterals;
using Level = SafetyChecker::SafetyLevel;
using Case = Level::Case;

namespace {

const char* const levelNames[] = {"safe", "caution", "warning", "blocked"};

/// What is expected of a path: its level, and whether the cleaner may take it.
struct Row {
    QString path;
    Case level;
    bool isCleanerSafe;
};

void expectRatings(const Locations& locations, std::initializer_list<Row> rows)
{
    const SafetyChecker checker(locations);
    for (const Row& row : rows) {
        EXPECT_EQ(checker.check(row.path).which, row.level) << qPrintable(row.path);
        EXPECT_EQ(checker.isCleanerSafe(row.path), row.isCleanerSafe) << qPrintable(row.path);
    }
}

void expectAgreement(const SafetyChecker& checker, const std::string& path, const std::string& home)
{
    const QString text = QString::fromStdString(path);
    const Level level = checker.check(text);
    const naive::Rating expected = naive::check(path, home);
    EXPECT_EQ(levelNames[static_cast<int>(level.which)], expected.level) << path << " in " << home;
    EXPECT_NE(level.text.toStdString().find(expected.named), std::string::npos)
        << path << " in " << home << ": " << level.text.toStdString();
    EXPECT_EQ(level.text.isEmpty(), expected.level == "safe") << path;
    EXPECT_EQ(checker.isCleanerSafe(text), naive::isCleanerSafe(path, home))
        << path << " in " << home;
}

/// `path` with the case of one letter of its last component changed.
std::string otherCase(std::string path)
{
    path.back() = static_cast<char>(path.back() ^ 0x20);
    return path;
}

/// Spellings at and around the boundary of an entry, some of which are other names of the same.
naive::Texts variants(const std::string& entry)
{
    const auto slash = entry.rfind('/');
    const std::string parent = entry.substr(0, slash);
    const std::string name = entry.substr(slash);
    naive::Texts paths = {otherCase(entry),
                          otherCase(entry) + "/below",
                          parent + "/." + name,
                          parent + "/" + name,
                          parent + "/x/.." + name + "/below",
                          entry.substr(1),
                          entry.substr(0, entry.size() - 1)};
    for (const char* end :
         {"", "/", "//", "/.", "glued", ".app", "/Some.app", "/Some.app/Contents", "/below/deeper",
          "/key.KeyChain", "/.keychain", "/below/..", "/..", "/../glued"})
        paths.push_back(entry + end);
    for (const char* start : {"/", "/../..", "/private", "x/.."})
        paths.push_back(start + entry);
    return paths;
}

} // namespace

TEST(SafetyChecker, NoEntryOfNoTableIsReadDifferentlyAtItsBoundaries)
{
    // One home as on most machines, some behind "/private", one that is no folder of a folder.
    for (const std::string home :
         {"/Users/ann", "/var/root", "/private/tmp/home", "/private/ann", "/ann"}) {
        const SafetyChecker checker(Locations::asWritten(QString::fromStdString(home)));
        naive::Texts entries = naive::tablePaths(home);
        entries.insert(entries.end(), {home, home + "ie/.ssh", home + "X.ssh", "~/.ssh"});
        for (const std::string& entry : entries) {
            for (const std::string& path : variants(entry)) {
                expectAgreement(checker, path, home);
                expectAgreement(checker, "/private" + path, home);
            }
        }
    }
}

TEST(SafetyChecker, AHomeBehindALinkIsRatedAlikeByBothItsNames)
{
    const auto machine = SandboxMachine::temporary();
    const QString real = machine.directory(u"/data/robin.keybag");
    for (const QStringView place : {u"/home", u"/data/robin.keybag/inside"}) {
        const QString link = machine.link(place, PathText::toBytes(real));
        const SafetyChecker checker(Locations::asWritten(link));
        const std::string home = link.toStdString();
        for (const std::string& entry : naive::tablePaths(home)) {
            for (const char* end : {"", "/below", "/x.keychain", "glued"}) {
                const std::string path = entry + end;
                const QString text = QString::fromStdString(path);
                expectAgreement(checker, path, home);
                if (!path.starts_with(home))
                    continue;
                const QString other = real + QString::fromStdString(path.substr(home.size()));
                EXPECT_EQ(checker.check(other).text, checker.check(text).text) << path;
                EXPECT_EQ(checker.isCleanerSafe(other), naive::isCleanerSafe(path, home)) << path;
            }
        }
        // How grave the name of the folder itself is counts by the other one as well.
        for (const QString& name : {link, real, u"~"_s})
            EXPECT_EQ(checker.check(name).which, Case::blocked) << qPrintable(name);
        EXPECT_EQ(checker.check(real + u"X.ssh"_s).which, Case::safe) << "a neighbour";

        // The desktop's folders may be given by the other name than the home.
        const Variable homeVariable("HOME", PathText::toBytes(link));
        const Variable config("XDG_CONFIG_HOME", PathText::toBytes(real) + "/settings");
        for (const QString& name : {link, real})
            expectRatings(Locations::onLinux(), {{name + u"/settings/x"_s, Case::warning, false}});
    }
    // The real name may be one of the catalogue's, and lie in an area of the cleaner.
    for (const auto& [place, name] : {std::pair(u"/usr/share/robin"_s, u"/Movies"_s),
                                      std::pair(u"/private/var/folders/robin"_s, u"/.ssh"_s)}) {
        const QString home = machine.path(u"~");
        ASSERT_EQ(::remove(PathText::toBytes(home)), 0);
        const QString target = machine.directory(place);
        machine.link(u"~", PathText::toBytes(target));
        for (const QString& folder : {home, target})
            expectRatings(Locations::insideFolder(machine.folder()),
                          {{folder + name, Case::blocked, false}});
    }
}

TEST(SafetyChecker, TheGateOpensForTheAreasOfTheCleanerAndNothingBesideThem)
{
    const QString cutOff = u"/Users/ann/Movies"_s + QChar(u'\0') + u"/x"_s;
    expectRatings(Locations::asWritten(u"/Users/ann"_s),
                  {
                      {u"~/Downloads/file"_s, Case::safe, true},
                      {u"~/Library/Caches/x.keychain"_s, Case::blocked, true},
                      {u"/var/folders/ab/x.keychain"_s, Case::blocked, true},
                      {u"~/Library/Containers/com.docker.docker/Data/vms"_s, Case::warning, true},
                      {u"~/Downloads/../.ssh/id"_s, Case::blocked, false},
                      {u"~root/Downloads/file"_s, Case::blocked, false},
                      // What names no place.
                      {QString(), Case::blocked, false},
                      {u"x/../.."_s, Case::blocked, false},
                      {cutOff, Case::blocked, false},
                  });
}

TEST(SafetyChecker, BytesSpelledOneByOneAreTheTextThatTheyMake)
{
    const QString home = u"/Users/\u00E9t\u00E9"_s;
    const SafetyChecker checker(Locations::asWritten(home));
    QString spelled = home + u"/.ssh"_s;
    spelled.replace(u"\u00E9"_s, QString(QChar(0xDCC3)) + QChar(0xDCA9));
    ASSERT_EQ(PathText::toBytes(spelled), (home + u"/.ssh"_s).toUtf8());
    EXPECT_EQ(checker.check(spelled).which, Case::blocked);
}

TEST(SafetyChecker, AMachineInAFolderIsAsProtectedAsARealOne)
{
    const Locations machine = Locations::insideFolder(u"/tmp/machine"_s);
    const Row rows[] = {
        {u"/System/Library"_s, Case::blocked, false},
        {u"/private/var/folders/x.keychain"_s, Case::blocked, true},
        {u"~/.ssh"_s, Case::blocked, false},
        {u"~/Library/Caches/x.keychain"_s, Case::blocked, true},
        {u"~/Movies"_s, Case::safe, true},
    };
    for (const auto& [path, level, isSafe] : rows) {
        const QString place = machine.path(path);
        ASSERT_TRUE(place.startsWith(u"/tmp/machine/"_s));
        expectRatings(machine, {{place, level, isSafe}});
        EXPECT_EQ(SafetyChecker(machine).check(u"/private"_s + place).which, level);
    }
}

TEST(SafetyChecker, UserDataIsProtectedWhereADesktopKeepsIt)
{
    const auto machine = SandboxMachine::temporary();
    const QString home = machine.path(u"~");
    const Variable homeVariable("HOME", PathText::toBytes(home));
    const Variable config("XDG_CONFIG_HOME", PathText::toBytes(home) + "/settings");
    // A user may put a folder anywhere: that makes nothing of it harmless.
    machine.file(u"~/settings/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/settings/loads\"\n"
                                               "XDG_DESKTOP_DIR=\"$HOME/.ssh\"\n"
                                               "XDG_PICTURES_DIR=\"$HOME/Bilder\"\n");
    const Locations desktop = Locations::onLinux();
    const std::initializer_list<Row> rows = {
        {u"~/settings/app/file"_s, Case::warning, false},
        {u"~/settingsx"_s, Case::safe, true},
        {u"~/settings/loads/x.deb"_s, Case::warning, false},
        {u"~/.ssh/id"_s, Case::blocked, false},
        {u"~/Bilder/Photos Library.photoslibrary/a"_s, Case::warning, false},
        {u"~/.local/share/keyrings/login.keyring"_s, Case::blocked, false},
        {u"~/.docker/config.json"_s, Case::warning, false},
        {u"/media/"_s + PathText::lastComponent(home), Case::blocked, false},
        // The innermost place says what it is.
        {u"~/settings/Code/CachedData"_s, Case::caution, true},
        {u"~/settings/Code/User/workspaceStorage"_s, Case::caution, true},
        {u"~/settings/Code/x.keychain"_s, Case::blocked, false},
        {u"~/settings/Codex"_s, Case::warning, false},
        {u"~/.docker/desktop"_s, Case::warning, true},
        {u"~/.cache/google-chrome"_s, Case::safe, true},
        {u"~/.npm/_cacache"_s, Case::safe, true},
        {u"~/.local/share/Trash/files/x"_s, Case::safe, true},
        {u"~/.local/share/pnpm/store"_s, Case::safe, true},
        {u"~/.local/state/x/log"_s, Case::safe, true},
        {u"~/.var/app/org.mozilla.firefox/cache"_s, Case::safe, true},
    };
    expectRatings(desktop, rows);

    // What is added for the cleaner is for it to take.
    const SafetyChecker checker(desktop);
    for (const QStringView table : {u"applicationCaches", u"foldersWithLogs", u"browserCaches",
                                    u"mailCaches", u"nodeModules", u"systemLogs", u"vsCodeCache"}) {
        for (const Locations::Addition& addition : desktop.additions(table))
            EXPECT_TRUE(checker.isCleanerSafe(addition.value)) << qPrintable(addition.value);
    }
}
