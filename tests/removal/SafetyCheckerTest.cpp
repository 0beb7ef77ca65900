#include "removal/SafetyChecker.h"

#include "NaiveSafetyRules.h"
#include "platform/Locations.h"
#include "platform/PathText.h"

#include <QScopeGuard>

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

using namespace brivane;
using namespace Qt::StringLiterals;
using Level = SafetyChecker::SafetyLevel;
using Case = Level::Case;

namespace {

const std::string users = "/Users/ann";
const char* const levelNames[] = {"safe", "caution", "warning", "blocked"};

Level check(const QString& path)
{
    static const SafetyChecker checker(Locations::asWritten(u"/Users/ann"_s));
    return checker.check(path);
}

bool isCleanerSafe(const QString& path)
{
    static const SafetyChecker checker(Locations::asWritten(u"/Users/ann"_s));
    return checker.isCleanerSafe(path);
}

void expectAgreement(const SafetyChecker& checker, const std::string& path, const std::string& home)
{
    const QString text = QString::fromStdString(path);
    const Level level = checker.check(text);
    const naive::Rating actual = {levelNames[static_cast<int>(level.which)],
                                  level.text.toStdString()};
    const naive::Rating expected = naive::check(path, home);
    EXPECT_EQ(actual.level, expected.level) << path << " in " << home;
    EXPECT_EQ(actual.text, expected.text) << path << " in " << home;
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
std::vector<std::string> variants(const std::string& entry)
{
    const auto slash = entry.rfind('/');
    const std::string parent = entry.substr(0, slash);
    const std::string name = entry.substr(slash);
    return {entry,
            entry + "/",
            entry + "//",
            entry + "/.",
            entry + "glued",
            entry + ".app",
            entry + "/Some.app",
            entry + "/Some.app/Contents",
            entry + "/below/deeper",
            entry + "/key.KeyChain",
            entry + "/.keychain",
            entry + "/below/..",
            entry + "/..",
            entry + "/../glued",
            otherCase(entry),
            otherCase(entry) + "/below",
            "/" + entry,
            parent + "/." + name,
            parent + "/" + name,
            parent + "/x/.." + name + "/below",
            "/../.." + entry,
            "/private" + entry,
            "/private" + entry + "/below",
            "/private/private" + entry,
            entry.substr(1),
            "x/.." + entry,
            entry.substr(0, entry.size() - 1)};
}

const QString prefixText =
    u" are protected by System Integrity Protection (SIP). They cannot be deleted."_s;
const QString cautionText =
    u" may affect system services or applications. Review before deleting."_s;

} // namespace

TEST(SafetyChecker, NoEntryOfNoTableIsReadDifferentlyAtItsBoundaries)
{
    // One home as on most machines, one behind "/private", one that is no folder of a folder.
    for (const std::string home : {"/Users/ann", "/var/root", "/tmp/machine/home", "/ann"}) {
        const SafetyChecker checker(Locations::asWritten(QString::fromStdString(home)));
        std::vector<std::string> entries = naive::tablePaths(home);
        entries.insert(entries.end(), {home, home + "ie/.ssh", home + "X.ssh", "~/.ssh"});
        for (const std::string& entry : entries) {
            for (const std::string& path : variants(entry))
                expectAgreement(checker, path, home);
        }
    }
}

TEST(SafetyChecker, NoRandomPathIsReadDifferently)
{
    std::vector<std::string> components = {".",
                                           "..",
                                           "",
                                           "x",
                                           "Some.app",
                                           "a.keychain-db",
                                           "b.KEYBAG",
                                           "local",
                                           "Applications",
                                           "folders",
                                           "Downloads",
                                           ".Trash",
                                           "Logs",
                                           "private",
                                           "var",
                                           "tmp",
                                           "usr",
                                           "~",
                                           "Volumes",
                                           "\xC3\xA9t\xC3\xA9"};
    std::vector<std::string> starts = naive::tablePaths(users);
    for (const std::string& path : starts)
        components.push_back(path.substr(path.rfind('/') + 1));
    starts.insert(starts.end(), {"", "/", "~", "/private", users, users + "/Library", "relative"});

    const SafetyChecker checker(Locations::asWritten(QString::fromStdString(users)));
    std::mt19937 random(20260101);
    const auto pick = [&](const std::vector<std::string>& list) {
        return list[std::uniform_int_distribution<std::size_t>(0, list.size() - 1)(random)];
    };
    for (int i = 0; i < 10'000; ++i) {
        std::string path = pick(starts);
        for (auto more = random() % 5; more > 0; --more)
            path += "/" + pick(components);
        expectAgreement(checker, path, users);
    }
}

TEST(SafetyChecker, TheUserReadsTheTextOfTheRuleThatCameFirst)
{
    const std::tuple<QString, Case, QString> rows[] = {
        {u"~/.ssh/id_rsa"_s, Case::blocked,
         u"'.ssh' contains security credentials (passwords, keys, tokens). Deleting it will lock "
         u"you out of services."_s},
        {u"~/Library/Caches/x.KEYCHAIN"_s, Case::blocked,
         u"This file (keychain) contains encryption keys or passwords. Deleting it will cause "
         u"irreversible data loss."_s},
        {u"/var"_s, Case::blocked,
         u"'var' is a system-critical directory. Deleting it will break macOS."_s},
        {u"/etc/hosts"_s, Case::safe, {}},
        {u"/System/Applications/Mail.app"_s, Case::blocked,
         u"'Mail.app' is a system application and cannot be deleted."_s},
        {u"/Applications/Some.app"_s, Case::caution,
         u"'Some.app' is an installed application. Uninstall properly to remove all associated "
         u"data."_s},
        {u"/Applications/Some.app/Contents"_s, Case::caution,
         u"Files in /Applications/"_s + cautionText},
        {u"/Applications"_s, Case::safe, {}},
        {u"/usr/local/bin/tool"_s, Case::caution,
         u"Files in /usr/local/ are user-installed (e.g., Homebrew). Deleting may break installed "
         u"tools."_s},
        {u"/usr/lib/libc.dylib"_s, Case::blocked, u"Files in /usr/lib/"_s + prefixText},
        {u"~/Library/Application Support/Some/deep/file"_s, Case::caution,
         u"Application data for 'Some'. Deleting may reset the app or cause data loss."_s},
        {u"~/Library/Application Support/AddressBook"_s, Case::warning,
         u"'Library/Application Support/AddressBook' contains important user data. Deleting it "
         u"may cause data loss. Make a backup first."_s},
        {u"~/Library/Application Support"_s, Case::safe, {}},
        {u"~/Library/Caches/file"_s, Case::safe, {}},
        {u"/Library/Caches/file"_s, Case::caution, u"Files in /Library/Caches/"_s + cautionText},
        {u"/Users/annie/.ssh"_s, Case::safe, {}},
    };
    for (const auto& [path, which, text] : rows)
        EXPECT_EQ(check(path), (Level{which, text})) << qPrintable(path);
}

TEST(SafetyChecker, TheGateOpensForTheAreasOfTheCleanerAndNothingBesideThem)
{
    const std::pair<QString, bool> rows[] = {
        {u"~/Downloads/file"_s, true},
        {u"~/Downloads"_s, true},
        {u"~/Library/Caches/x.keychain"_s, true},
        {u"/private/var/folders/ab/x.keychain"_s, true},
        {u"/var/folders/ab/x.keychain"_s, false},
        {u"~/Library/Containers/com.docker.docker/Data"_s, true},
        {u"~/Library/Containers/com.docker.docker/Data/vms"_s, true},
        {u"~/Library/Containers/com.docker.docker/Database"_s, false},
        {u"~/Library/Containers/com.docker.docker"_s, false},
        {u"~/Library/Caches/../Mail"_s, false},
        {u"~/Downloads/../.ssh/id"_s, false},
        {u"~root/Downloads/file"_s, false},
        {u"Library/Caches/file"_s, false},
    };
    for (const auto& [path, expected] : rows)
        EXPECT_EQ(isCleanerSafe(path), expected) << qPrintable(path);
}

TEST(SafetyChecker, WhatNamesNoPlaceIsNeverPassed)
{
    const QString cutOff = u"/Users/ann/Movies"_s + QChar(u'\0') + u"/x"_s;
    for (const QString& path : {QString(), u"."_s, u".."_s, u"./"_s, u"System"_s, u"x/../.."_s,
                                u"~root"_s, u" /System"_s, cutOff}) {
        EXPECT_EQ(check(path).which, Case::blocked) << qPrintable(path);
        EXPECT_FALSE(isCleanerSafe(path)) << qPrintable(path);
    }
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
    const SafetyChecker checker(machine);
    const std::tuple<QString, Case, bool> rows[] = {
        {u"/System/Library"_s, Case::blocked, false},
        {u"/var"_s, Case::blocked, false},
        {u"/Applications/Some.app"_s, Case::caution, true},
        {u"/private/var/folders/x.keychain"_s, Case::blocked, true},
        {u"~/.ssh"_s, Case::blocked, false},
        {u"~/Library/Mail"_s, Case::warning, false},
        {u"~/Library/Caches/x.keychain"_s, Case::blocked, true},
        {u"~/Movies"_s, Case::safe, true},
    };
    for (const auto& [path, which, isSafe] : rows) {
        const QString place = machine.path(path);
        ASSERT_TRUE(place.startsWith(u"/tmp/machine/"_s));
        EXPECT_EQ(checker.check(place).which, which) << qPrintable(place);
        EXPECT_EQ(checker.check(u"/private"_s + place).which, which) << qPrintable(place);
        EXPECT_EQ(checker.isCleanerSafe(place), isSafe) << qPrintable(place);
    }
    EXPECT_EQ(checker.check(u"/System/Library"_s).which, Case::blocked);
}

TEST(SafetyChecker, UserDataIsProtectedWhereADesktopKeepsIt)
{
    const QByteArray home = qgetenv("HOME");
    const QByteArray config = qgetenv("XDG_CONFIG_HOME");
    const auto restore = qScopeGuard([&] {
        qputenv("HOME", home);
        config.isNull() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", config);
    });
    qputenv("HOME", "/home/ann");
    qputenv("XDG_CONFIG_HOME", "/home/ann/settings");
    const SafetyChecker checker(Locations::onLinux());
    const std::pair<QString, Case> rows[] = {
        {u"/home/ann/settings"_s, Case::warning},
        {u"/home/ann/settings/app/file"_s, Case::warning},
        {u"/home/ann/settingsx"_s, Case::safe},
        {u"/home/ann/Library/Preferences/file"_s, Case::warning},
        {u"/home/ann/.ssh/id"_s, Case::blocked},
        {u"/home/ann/Movies"_s, Case::safe},
        {u"/media/ann"_s, Case::blocked},
    };
    for (const auto& [path, which] : rows)
        EXPECT_EQ(checker.check(path).which, which) << qPrintable(path);
}
