#include "platform/FileRemoval.h"

#include "FileTestSupport.h"
#include "sandbox/NastyTree.h"

#include <cerrno>

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace brivane;
using namespace Qt::StringLiterals;

TEST(FileRemoval, NastyTreeGoesWithoutAnythingThatItsLinksLeadTo)
{
    const TestFolder folder;
    ASSERT_EQ(::mkdir(folder / "outside", 0755), 0);
    writeFile(folder / "outside/keep", "kept");
    const auto counts = buildNastyTree(folder / "tree", {.elsewhere = folder / "outside"});
    EXPECT_EQ(counts.entries() + 1,
              snapshot(folder / "tree").size() + (::geteuid() == 0 ? 0 : counts.unreadableFiles));
    unlockNastyTree(folder / "tree");

    const RemovalReport report = removeTree(text(folder / "tree"));
    EXPECT_TRUE(report.isComplete()) << report.failures[0].text().toStdString();
    EXPECT_EQ(report.removed, counts.entries() + 1);
    EXPECT_FALSE(stands(folder / "tree"));
    EXPECT_EQ(readFile(folder / "outside/keep"), "kept");
}

TEST(FileRemoval, LinkAtThePathGoesAloneEvenWithASlashBehindIt)
{
    const TestFolder folder;
    ASSERT_EQ(::mkdir(folder / "target", 0755), 0);
    writeFile(folder / "target/keep", "kept");
    for (const char* spelling : {"link", "link/", "link//"}) {
        ASSERT_EQ(::symlink("target", folder / "link"), 0);
        EXPECT_EQ(removeTree(text(folder / spelling)).removed, 1U);
        EXPECT_FALSE(stands(folder / "link"));
    }
    EXPECT_TRUE(stands(folder / "target/keep"));
}

TEST(FileRemoval, UnreadableFolderIsReportedAndTheOthersGo)
{
    EXPECT_TRUE(passesUnprivileged([] {
        const TestFolder folder;
        const auto counts = buildNastyTree(folder / "tree");
        const RemovalReport report = removeTree(text(folder / "tree"));
        ASSERT_EQ(report.failures.size(), 1U);
        EXPECT_EQ(report.failures[0].code, EACCES);
        EXPECT_EQ(report.failures[0].path, text(folder / "tree/unreadable"));
        EXPECT_EQ(report.removed, counts.entries() - 2);
        EXPECT_EQ(snapshot(folder / "tree").size(), 2U);
    }));
}

TEST(FileRemoval, TenThousandLevelsNeedFewDescriptors)
{
    const TestFolder folder(makeSpaciousFolder());
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit few = {64, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    buildDeepChain(folder / "deep", 10'000);
    const RemovalReport report = removeTree(text(folder / "deep"));
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_TRUE(report.isComplete());
    EXPECT_EQ(report.removed, 10'002U);
    EXPECT_FALSE(stands(folder / "deep"));
}

TEST(FileRemoval, FolderOfManyEntriesLosesThemAll)
{
    const TestFolder folder(makeSpaciousFolder());
    buildFlatFolder(folder / "flat", 200'000);
    EXPECT_EQ(removeTree(text(folder / "flat")).removed, 200'001U);
    EXPECT_FALSE(stands(folder / "flat"));
}

TEST(FileRemoval, PathBeyondPathMaxIsReached)
{
    const TestFolder folder(makeSpaciousFolder());
    buildDeepChain(folder / "deep", 3'000);
    const QByteArray bottom = folder / "deep" + QByteArray("/d").repeated(3'000) + "/bottom";
    EXPECT_EQ(removeTree(text(bottom)).removed, 1U);
    EXPECT_EQ(removeTree(text(bottom)).failures.at(0).code, ENOENT);
}

TEST(FileRemoval, WhatTookThePlaceOfTheMeantObjectStays)
{
    const TestFolder folder;
    struct Case {
        const char* what;
        std::function<void(const QByteArray&)> change;
    };
    const Case cases[] = {
        {"rewritten", [](const QByteArray& path) { writeFile(path, "other"); }},
        {"another file",
         [](const QByteArray& path) {
             ASSERT_EQ(::rename(path, path + ".old"), 0);
             writeFile(path, "first");
         }},
        {"a folder",
         [](const QByteArray& path) {
             ASSERT_EQ(::unlink(path), 0);
             ASSERT_EQ(::mkdir(path, 0755), 0);
         }},
        {"a link",
         [](const QByteArray& path) {
             ASSERT_EQ(::rename(path, path + ".old"), 0);
             ASSERT_EQ(::symlink("object.old", path), 0);
         }},
    };
    for (const Case& c : cases) {
        const QByteArray path = folder / "object";
        (void)removeTree(text(path));
        writeFile(path, "first");
        const auto identity = FileIdentity::of(text(path));
        ASSERT_TRUE(identity);
        c.change(path);
        const RemovalReport report = removeTree(text(path), *identity);
        ASSERT_EQ(report.failures.size(), 1U) << c.what;
        EXPECT_EQ(report.failures[0].code, ESTALE) << c.what;
        EXPECT_EQ(report.removed, 0U) << c.what;
        EXPECT_TRUE(stands(path)) << c.what;
    }
    const auto identity = FileIdentity::of(text(folder / "object"));
    EXPECT_TRUE(removeTree(text(folder / "object"), *identity).isComplete());
}

TEST(FileRemoval, SpellingsThatHideWhatIsMeantAreRefused)
{
    const TestFolder folder;
    writeFile(folder / "file", "");
    ASSERT_EQ(::mkdir(folder / "sub", 0755), 0);
    const QString base = text(folder.path());
    const QString paths[] = {u""_s,
                             u"/"_s,
                             u"//"_s,
                             u"file"_s,
                             base + u"/sub/../file"_s,
                             base + u"/./file"_s,
                             base + u"/sub/."_s,
                             base + u"/sub/.."_s,
                             base + u"/file"_s + QChar(u'\0') + u"more"_s,
                             base + u"/"_s + QChar(0xD801)};
    for (const QString& path : paths) {
        const RemovalReport report = removeTree(path);
        ASSERT_EQ(report.failures.size(), 1U) << path.toStdString();
        EXPECT_TRUE(report.failures[0].code == EINVAL || report.failures[0].code == EILSEQ);
    }
    EXPECT_EQ(snapshot(folder.path()).size(), 3U);
}

TEST(FileRemoval, MountInsideIsLeft)
{
    const TestFolder folder;
    for (const char* name : {"outside", "tree", "tree/mount", "tree/other"})
        ASSERT_EQ(::mkdir(folder / name, 0755), 0);
    writeFile(folder / "outside/keep", "kept");
    if (::geteuid() != 0)
        GTEST_SKIP() << "mounting takes privileges";
    const pid_t child = ::fork(); // a bind mount has the same device as what is around it
    if (child == 0) {
        if (::unshare(CLONE_NEWNS) != 0 ||
            ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount(folder / "outside", folder / "tree/mount", nullptr, MS_BIND, nullptr) != 0) {
            ::_exit(77);
        }
        const RemovalReport inside = removeTree(text(folder / "tree"));
        const RemovalReport itself = removeTree(text(folder / "tree/mount"));
        const bool right = inside.removed == 1 && inside.failures.size() == 1 &&
                           inside.failures[0].code == EXDEV && itself.removed == 0 &&
                           itself.failures.at(0).code == EBUSY;
        ::_exit(right ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    if (WEXITSTATUS(status) == 77)
        GTEST_SKIP() << "this machine does not let us mount";
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_TRUE(stands(folder / "outside/keep"));
    EXPECT_FALSE(stands(folder / "tree/other"));
}
