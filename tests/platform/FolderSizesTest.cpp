#include "platform/FolderSizes.h"

#include "support/FileTestSupport.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace brivane;
using namespace Qt::StringLiterals;

namespace {

std::uint64_t bytesByFts(const QByteArray& path)
{
    std::uint64_t bytes = 0;
    forEachByFts(path, FTS_XDEV, [&](const FTSENT& entry) {
        if (entry.fts_info == FTS_F)
            bytes += static_cast<std::uint64_t>(entry.fts_statp->st_size);
    });
    return bytes;
}

} // namespace

TEST(FolderSizes, EachPathIsWhatFtsFindsInItAlsoWhereTheyOverlap)
{
    const TestFolder folder;
    const NastyTreeCounts counts = buildNastyTree(folder / "nasty", {.unreadableFolders = false});
    buildFlatFolder(folder / "flat", 300);
    writeFile(folder / "file", "12345");
    ASSERT_EQ(::symlink("nasty", folder / "link"), 0);
    QStringList paths = {text(folder.path()), text(folder / "file"), text(folder / "link"),
                         text(folder / "missing"), text(folder.path())};
    for (const QString& name : namesIn(text(folder / "nasty")))
        paths += text(folder / "nasty") + u'/' + name;

    FolderSizes sizes;
    QFuture<FolderSize> measuring = sizes.measure(paths);
    measuring.waitForFinished();
    ASSERT_EQ(measuring.resultCount(), paths.size());
    for (int i = 0; i < paths.size(); ++i)
        EXPECT_EQ(measuring.resultAt(i).bytes, bytesByFts(PathText::toBytes(paths[i]))) << i;
    EXPECT_EQ(measuring.resultAt(0).bytes, counts.logicalBytes + 5);
    EXPECT_EQ(measuring.resultAt(0).files, counts.files + 301);
    EXPECT_EQ(measuring.resultAt(1).start, WalkKind::File);
    EXPECT_EQ(measuring.resultAt(2).start, WalkKind::SymbolicLink);
    EXPECT_EQ(measuring.resultAt(3).start, WalkKind::NoAttributes);
    EXPECT_EQ(measuring.resultAt(3).unreadable, 0);
    const std::vector<FolderSize> withLinks =
        FolderSizes::measureNow({text(folder / "link")}, {.includeLinks = true});
    EXPECT_EQ(withLinks.front().bytes, 5);
}

TEST(FolderSizes, WhatIsExcludedCountsNowhereAndItsNamesakesDo)
{
    const TestFolder folder;
    for (const char* name : {"a", "a/out", "a/out/deep", "b", "b/out", "a/.hidden"})
        ASSERT_EQ(::mkdir(folder / name, 0700), 0);
    QByteArray content;
    for (const char* name : {"a/out/deep/one", "a/two", "b/out/three", "b/four", "a/.hidden/five"})
        writeFile(folder / name, content += 'x');
    const std::vector<FolderSize> sizes = FolderSizes::measureNow(
        {text(folder.path()), text(folder / "a/out/deep"), text(folder / "b")},
        {.includeHidden = false, .excluded = {text(folder / "a/out"), text(folder / "b/four")}});
    EXPECT_EQ(sizes[0].bytes, 5);
    EXPECT_EQ(sizes[1].bytes, 0);
    EXPECT_EQ(sizes[2].bytes, 3);
}

TEST(FolderSizes, AStopIsHeardAndEveryPathStillHasAResult)
{
    const TestFolder folder;
    buildFlatFolder(folder / "flat", 5);
    const auto stop = std::make_unique<std::stop_source>();
    std::size_t told = 0;
    const std::vector<FolderSize> sizes =
        FolderSizes::measureNow(QStringList(200, text(folder / "flat")), {}, stop->get_token(),
                                [&](std::size_t, const FolderSize&) {
                                    ++told;
                                    stop->request_stop();
                                });
    EXPECT_EQ(told, sizes.size());
    EXPECT_TRUE(sizes.back().isStopped);
    EXPECT_EQ(sizes.back().files, 0);
}

TEST(FolderSizes, AllTogetherNeedFewDescriptors)
{
    // Every level holds folders that wait while the walk is further down.
    const TestFolder folder(makeSpaciousFolder());
    QByteArray level = folder.path();
    for (int i = 0; i < 200; ++i, level += "/d") {
        if (i > 0) {
            ASSERT_EQ(::mkdir(level, 0700), 0);
        }
        for (const char* name : {"/z1", "/z2"})
            ASSERT_EQ(::mkdir(level + name, 0700), 0);
        writeFile(level + "/z1/file", "1");
    }
    struct rlimit before;
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const struct rlimit few = {64, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    for (const FolderSize& size : FolderSizes::measureNow(QStringList(8, text(folder.path())))) {
        EXPECT_EQ(size.unreadable, 0);
        EXPECT_EQ(size.bytes, 200);
    }
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
}

TEST(FolderSizes, WhatCannotBeReadIsTold)
{
    const TestFolder folder;
    ASSERT_EQ(::chmod(folder.path(), 0755), 0);
    const NastyTreeCounts counts = buildNastyTree(folder / "nasty");
    EXPECT_TRUE(passesUnprivileged([&] {
        const FolderSize size = FolderSizes::measureNow({text(folder / "nasty")}).front();
        EXPECT_EQ(size.files, counts.files - counts.unreadableFiles);
        EXPECT_GT(size.unreadable, 0);
    }));
}
