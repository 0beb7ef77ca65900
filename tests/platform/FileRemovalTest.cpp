#include "platform/FileRemoval.h"

#include "platform/DefaultFileSystem.h"
#include "support/FileTestSupport.h"

#include <QStringList>

#include <cerrno>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace brivane;
using namespace Qt::StringLiterals;

namespace {

std::vector<int> codesOf(const RemovalReport& report)
{
    std::vector<int> codes;
    for (const FileError& failure : report.failures)
        codes.push_back(failure.code);
    return codes;
}

} // namespace

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

TEST(FileRemoval, FoldersOfTheUsersOwnGoWhateverTheirModeAndKeepItWhereTheyStay)
{
    EXPECT_TRUE(passesUnprivileged([] {
        const TestFolder folder;
        const auto counts = buildNastyTree(folder / "tree");
        EXPECT_EQ(removeTree(text(folder / "tree")).removed, counts.entries() + 1);
        for (const mode_t mode : {0000U, 0111U, 0222U, 0333U, 0444U, 0555U}) {
            // Deeper than the number of levels that a removal keeps open.
            buildDeepChain(folder / "chain", 40);
            for (int level = 40; level >= 0; --level)
                ASSERT_EQ(::chmod(folder / "chain" + QByteArray("/d").repeated(level), mode), 0);
            EXPECT_EQ(removeTree(text(folder / "chain")).removed, 42U) << mode;

            ASSERT_EQ(::mkdir(folder / "parent", 0755), 0);
            ASSERT_EQ(::mkdir(folder / "parent/target", 0755), 0);
            writeFile(folder / "parent/target/file", "");
            ASSERT_EQ(::chmod(folder / "parent/target", mode), 0);
            ASSERT_EQ(::chmod(folder / "parent", 0555), 0);
            EXPECT_EQ(codesOf(removeTree(text(folder / "parent/target"))), std::vector{EACCES});
            EXPECT_EQ(modeOf(folder / "parent/target"), mode);
            ASSERT_EQ(::chmod(folder / "parent/target", 0755), 0);
            EXPECT_TRUE(stands(folder / "parent/target/file")) << "emptied, though it stays";
            EXPECT_EQ(modeOf(folder / "parent"), 0555U) << "it is not what was to be removed";
            ASSERT_EQ(::chmod(folder / "parent", 0755), 0);
            EXPECT_TRUE(removeTree(text(folder / "parent")).isComplete());
        }
    }));
}

TEST(FileRemoval, DepthAndWidthNeedFewDescriptorsAlsoBeyondPathMax)
{
    const TestFolder folder(makeSpaciousFolder());
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit few = {64, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    buildDeepChain(folder / "deep", 10'000);
    buildFlatFolder(folder / "flat", 200'000);
    const QString bottom = text(folder / "deep" + QByteArray("/d").repeated(10'000) + "/bottom");
    EXPECT_EQ(removeTree(bottom).removed, 1U);
    EXPECT_EQ(codesOf(removeTree(bottom)), std::vector{ENOENT});
    EXPECT_EQ(removeTree(text(folder / "deep")).removed, 10'001U);
    EXPECT_EQ(removeTree(text(folder / "flat")).removed, 200'001U);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(snapshot(folder.path()).size(), 1U);
}

TEST(FileRemoval, WhatTookThePlaceOfTheMeantObjectStays)
{
    const TestFolder folder;
    const QByteArray path = folder / "object";
    const std::function<void()> changes[] = {[&] { writeFile(path, "other"); },
                                             [&] {
                                                 ASSERT_EQ(::rename(path, folder / "old"), 0);
                                                 writeFile(path, "first");
                                             },
                                             [&] {
                                                 ASSERT_EQ(::rename(path, folder / "old"), 0);
                                                 ASSERT_EQ(::mkdir(path, 0755), 0);
                                             },
                                             [&] {
                                                 ASSERT_EQ(::rename(path, folder / "old"), 0);
                                                 ASSERT_EQ(::symlink("old", path), 0);
                                             }};
    for (const auto& change : changes) {
        writeFile(path, "first");
        const FileIdentity meant = *FileIdentity::of(text(path));
        change();
        EXPECT_EQ(codesOf(removeTree(text(path), meant)), std::vector{ESTALE});
        EXPECT_TRUE(stands(path));
        EXPECT_TRUE(removeTree(text(path), *FileIdentity::of(text(path))).isComplete());
    }
}

TEST(FileRemoval, SpellingsThatHideWhatIsMeantAreRefused)
{
    const TestFolder folder;
    writeFile(folder / "file", "");
    ASSERT_EQ(::mkdir(folder / "sub", 0755), 0);
    const QString base = text(folder.path());
    QStringList paths = {u""_s, u"/"_s, u"//"_s, u"file"_s};
    paths += base + u"/file"_s + QChar(u'\0') + u"more"_s;
    paths += base + u"/"_s + QChar(0xD801);
    for (const QString& spelling : {u"/sub/../file"_s, u"/./file"_s, u"/sub/."_s, u"/sub/.."_s})
        paths += base + spelling;
    for (const QString& path : paths) {
        const std::vector<int> codes = codesOf(removeTree(path));
        EXPECT_TRUE(codes == std::vector{EINVAL} || codes == std::vector{EILSEQ})
            << path.toStdString();
    }
    EXPECT_EQ(snapshot(folder.path()).size(), 3U);
}

TEST(FileRemoval, MountInsideIsLeft)
{
    const TestFolder folder;
    makeFolders(folder, {"outside", "tree", "tree/mount", "tree/other"});
    writeFile(folder / "outside/keep", "kept");
    // A bind mount has the same device as what is around it.
    const auto passed = passesWithMount(folder / "outside", folder / "tree/mount", [&] {
        const RemovalReport inside = removeTree(text(folder / "tree"));
        EXPECT_EQ(inside.removed, 1U);
        EXPECT_EQ(codesOf(inside), std::vector{EXDEV});
        EXPECT_FALSE(stands(folder / "tree/other"));
        const RemovalReport itself = removeTree(text(folder / "tree/mount"));
        EXPECT_EQ(itself.removed, 0U);
        EXPECT_EQ(codesOf(itself), std::vector{EBUSY});
    });
    if (!passed)
        GTEST_SKIP() << "this machine does not let us mount";
    EXPECT_TRUE(*passed);
    EXPECT_TRUE(stands(folder / "outside/keep"));
}

TEST(TrashRecord, LeavesWithItsThingAndNothingElseDoes)
{
    DefaultFileSystem disk;
    const QByteArray longName(250, 'n');
    const std::pair<const char*, bool> trashes[] = {
        {"Trash", true},      {".Trash-7", true},   {".Trash/7", true},  {"Trashy", false},
        {".Trash-me", false}, {".Trashy/7", false}, {".Trash/me", false}};
    for (const auto& [trash, isTrash] : trashes) {
        const TestFolder folder;
        makeFolders(folder, {".Trash", ".Trashy", trash});
        const QByteArray top = folder / trash;
        const auto record = [&](const char* name) { return top + "/info/" + name + ".trashinfo"; };
        for (const char* name : {"/files", "/info", "/files/inside", "/files/folder"})
            ASSERT_EQ(::mkdir(top + name, 0755), 0);
        for (const char* name : {"removed", "moved", "taken", "inside", "kept"})
            writeFile(record(name), "record");
        for (const char* name : {"removed", "moved", "taken", "link", "folder/inside"})
            writeFile(top + "/files/" + name, "thing");
        writeFile(top + "/files/" + longName, "thing");
        ASSERT_EQ(::symlink("kept.trashinfo", record("link")), 0);
        ASSERT_EQ(::mkdir(record("folder"), 0755), 0);

        const QString files = text(top + "/files/");
        EXPECT_TRUE(disk.removeItem(files + u"/removed/"_s).isComplete());
        EXPECT_TRUE(disk.moveItem(files + u"moved"_s, text(folder / "away")));
        // These have no record of their own, or none that may go.
        EXPECT_FALSE(disk.moveItem(files + u"taken"_s, text(folder / "away")));
        EXPECT_TRUE(disk.removeItem(files + u"folder/inside"_s).isComplete());
        for (const QString& name : {u"folder"_s, u"link"_s, text(longName)})
            EXPECT_TRUE(disk.removeItem(files + name).isComplete());
        for (const char* name : {"removed", "moved"})
            EXPECT_EQ(stands(record(name)), !isTrash) << trash;
        for (const char* name : {"taken", "inside", "kept", "link", "folder"})
            EXPECT_TRUE(stands(record(name))) << trash << ' ' << name;

        // Neither is anything touched where a link leads.
        for (const char* name : {"files", "info"}) {
            writeFile(top + "/files/taken", "thing");
            const QByteArray real = folder / name;
            ASSERT_EQ(::rename(top + '/' + name, real), 0);
            ASSERT_EQ(::symlink(real, top + '/' + name), 0);
            EXPECT_TRUE(disk.removeItem(files + u"taken"_s).isComplete());
            EXPECT_TRUE(stands(record("taken"))) << trash;
            ASSERT_EQ(::unlink(top + '/' + name), 0);
            ASSERT_EQ(::rename(real, top + '/' + name), 0);
        }
    }
}
