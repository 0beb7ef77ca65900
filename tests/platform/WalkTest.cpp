#include "platform/Walk.h"

#include "platform/FileIdentity.h"
#include "platform/linux/LinuxVolumes.h"
#include "support/FileTestSupport.h"

#include <cmath>
#include <functional>
#include <map>
#include <random>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace brivane;

namespace {

struct Seen {
    int kind = 0; // as in fts_info
    std::uint32_t depth = 0;
    QByteArray path;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;

    bool operator==(const Seen&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Seen& seen)
{
    return out << seen.kind << ' ' << seen.depth << ' ' << seen.path.toPercentEncoding("/").data()
               << ' ' << seen.inode << ' ' << seen.size;
}

int ftsKind(WalkKind kind)
{
    static const std::map<WalkKind, int> kinds = {{WalkKind::Directory, FTS_D},
                                                  {WalkKind::DirectoryEnd, FTS_DP},
                                                  {WalkKind::UnreadableDirectory, FTS_DNR},
                                                  {WalkKind::File, FTS_F},
                                                  {WalkKind::SymbolicLink, FTS_SL},
                                                  {WalkKind::Other, FTS_DEFAULT},
                                                  {WalkKind::NoAttributes, FTS_NS}};
    return kinds.at(kind);
}

std::vector<Seen> byFts(const QByteArray& path)
{
    std::vector<Seen> entries;
    forEachByFts(path, FTS_XDEV, [&](const FTSENT& entry) {
        Seen seen{entry.fts_info, static_cast<std::uint32_t>(entry.fts_level), entry.fts_path};
        if (entry.fts_info != FTS_NS) {
            seen.inode = entry.fts_statp->st_ino;
            seen.size = static_cast<std::uint64_t>(entry.fts_statp->st_size);
        }
        entries.push_back(seen);
    });
    return entries;
}

/// Does not enter the folders that `skips`.
std::vector<Seen> byWalk(
    const QByteArray& path, WalkOptions options = {},
    const std::function<bool(const WalkEntry&)>& skips = [](const WalkEntry&) { return false; })
{
    std::vector<Seen> entries;
    Walk walk(path, options);
    while (const WalkEntry* entry = walk.next()) {
        entries.push_back({ftsKind(entry->kind), entry->depth, walk.path(), entry->attributes.inode,
                           entry->attributes.size});
        if (entry->kind == WalkKind::Directory && entry->depth > 0 && skips(*entry))
            walk.skipSubtree();
    }
    return entries;
}

/// Without its attributes, a directory below the start need only be there.
void forgetDirectories(std::vector<Seen>& entries)
{
    for (Seen& seen : entries) {
        if (seen.depth > 0 && (seen.kind == FTS_D || seen.kind == FTS_DP || seen.kind == FTS_DNR))
            seen.inode = seen.size = 0;
    }
}

void expectSame(const QByteArray& path, WalkOptions options = {})
{
    std::vector<Seen> expected = byFts(path);
    std::vector<Seen> actual = byWalk(path, options);
    if (!options.directoryAttributes) {
        forgetDirectories(expected);
        forgetDirectories(actual);
    }
    for (std::size_t i = 0; i < std::min(expected.size(), actual.size()); ++i)
        ASSERT_EQ(actual[i], expected[i]) << "at entry " << i;
    ASSERT_EQ(actual.size(), expected.size()) << path.data();
}

/// Random folders, files, links and FIFOs, `entries` of them.
void buildRandomTree(const QByteArray& root, unsigned seed, int entries)
{
    std::mt19937 random(seed);
    std::vector<QByteArray> folders{root};
    for (int i = 0; i < entries; ++i) {
        // The square prefers late folders, which makes the tree deep.
        const double place = std::sqrt(static_cast<double>(random() % 10000) / 10000);
        const auto at = static_cast<std::size_t>(place * static_cast<double>(folders.size()));
        const QByteArray prefix = random() % 5 == 0 ? "." : "";
        const QByteArray path = folders[at] + '/' + prefix + QByteArray::number(i);
        const auto kind = random() % 8;
        if (kind < 3) {
            ASSERT_EQ(::mkdir(path.constData(), 0755), 0);
            folders.push_back(path);
        } else if (kind == 3) {
            ASSERT_EQ(::symlink("../" + QByteArray::number(random() % 100), path.constData()), 0);
        } else if (kind == 4) {
            ASSERT_EQ(::mkfifo(path.constData(), 0600), 0);
        } else {
            writeFile(path, "");
            ASSERT_EQ(::truncate(path.constData(), static_cast<off_t>(random() % 100000)), 0);
        }
    }
}

class WalkTest : public testing::Test {
protected:
    const TestFolder m_folder{makeSpaciousFolder()};
};

} // namespace

TEST_F(WalkTest, AgreesWithFtsOnTheWholeOfUsr)
{
    expectSame("/usr");
    expectSame("/usr", {.directoryAttributes = false});
}

TEST_F(WalkTest, AgreesWithFtsOnRandomTreesWithAnyReadAhead)
{
    for (unsigned seed = 1; seed <= 20; ++seed) {
        const QByteArray tree = m_folder / QByteArray::number(seed);
        ASSERT_EQ(::mkdir(tree, 0755), 0);
        buildRandomTree(tree, seed, 2000);
        expectSame(tree);
        expectSame(tree + '/', {.workers = 3});
        expectSame(tree, {.readAhead = 1, .workers = 2});
        expectSame(tree, {.directoryAttributes = false});
    }
}

TEST_F(WalkTest, WhatNeedsNoAttributesIsThereAllTheSame)
{
    buildRandomTree(m_folder.path(), 5, 5000);
    const auto isNeeded = [](std::string_view name) { return name.ends_with('7'); };
    std::vector<Seen> expected = byFts(m_folder.path());
    for (Seen& seen : expected) {
        const bool isFolder = seen.kind == FTS_D || seen.kind == FTS_DP;
        if (!isFolder && !isNeeded(seen.path.toStdString()))
            seen.inode = seen.size = 0;
    }
    EXPECT_EQ(byWalk(m_folder.path(), {.needsAttributes = isNeeded, .workers = 3}), expected);
}

TEST_F(WalkTest, AgreesWithFtsOnTheNastyTreeAlsoWhenFoldersAreUnreadable)
{
    const TestFolder folder; // on a disk
    const TestFolder elsewhere(makeFolderOnOtherDevice(folder.path()));
    const QByteArray tree = folder / "nasty";
    buildNastyTree(tree, {.elsewhere = elsewhere.path()});
    expectSame(tree);
    expectSame(tree, {.directoryAttributes = false});
    ASSERT_EQ(::chmod(folder.path(), 0755), 0);
    EXPECT_TRUE(passesUnprivileged([&] {
        EXPECT_TRUE(std::ranges::count(byFts(tree), FTS_DNR, &Seen::kind) > 0);
        expectSame(tree);
    }));
}

TEST_F(WalkTest, StartsThatAreNoFolderGiveOneEntry)
{
    writeFile(m_folder / "file", "");
    ASSERT_EQ(::symlink("/usr", m_folder / "link"), 0);
    for (const QByteArray& start :
         {m_folder / "file", m_folder / "link", m_folder / "nothing", QByteArray("/dev/null")})
        expectSame(start);
    for (const QByteArray& start : {QByteArray(), m_folder.path() + '\0'})
        EXPECT_EQ(Walk(start).next()->kind, WalkKind::NoAttributes);
}

TEST_F(WalkTest, StartsBeyondTheLongestPathAreTheSameAsByAShortOne)
{
    ASSERT_EQ(::mkdir(m_folder / "tree", 0755), 0);
    buildRandomTree(m_folder / "tree", 5, 200);
    ASSERT_EQ(::symlink("tree", m_folder / "link"), 0);
    for (const char* step : {"/.", "//"}) {
        const QByteArray way = m_folder.path() + QByteArray(step).repeated(2 * PATH_MAX);
        for (const char* name : {"/", "/tree", "/tree//", "/link", "/link/", "/nothing"}) {
            std::vector<Seen> expected = byWalk(m_folder.path() + name);
            for (Seen& seen : expected)
                seen.path.replace(0, m_folder.path().size(), way);
            EXPECT_EQ(byWalk(way + name), expected) << name;
        }
    }
}

TEST_F(WalkTest, TimesBeyondWhatNanosecondsCanSayAreTheFarthestThatTheyCan)
{
    const QByteArray path = m_folder / "file";
    writeFile(path, "");
    for (const auto& [seconds, expected] : {std::pair(9'223'372'037L, INT64_MAX),
                                            {-9'223'372'037L, INT64_MIN},
                                            {-1L, -999'999'999L}}) {
        const timespec times[] = {{seconds, 1}, {seconds, 1}};
        ASSERT_EQ(::utimensat(AT_FDCWD, path, times, 0), 0);
        if (!snapshot(path)[""].contains(QByteArray::number(seconds)))
            GTEST_SKIP() << "the file system knows no such time";
        EXPECT_EQ(Walk(path).next()->attributes.modifiedAt, expected);
        EXPECT_EQ(FileIdentity::of(text(path))->modifiedAt, expected);
    }
}

TEST_F(WalkTest, SkippedAndHiddenSubtreesAreLeftOutAndTheRestIsWhole)
{
    buildRandomTree(m_folder.path(), 7, 5000);
    for (const unsigned divisor : {2U, 3U, 7U}) {
        const auto skips = [divisor](std::string_view name) {
            return std::hash<std::string_view>()(name) % divisor == 0;
        };
        std::vector<Seen> expected;
        std::uint32_t skippedFrom = UINT32_MAX;
        for (const Seen& seen : byFts(m_folder.path())) {
            if (seen.depth > skippedFrom)
                continue;
            const bool isSkipped =
                seen.kind == FTS_D && seen.depth > 0 &&
                skips(seen.path.mid(seen.path.lastIndexOf('/') + 1).toStdString());
            if (isSkipped || seen.kind == FTS_DP)
                skippedFrom = isSkipped ? seen.depth : UINT32_MAX;
            expected.push_back(seen);
        }
        EXPECT_EQ(byWalk(m_folder.path(), {.readAhead = 500, .workers = 2},
                         [&](const WalkEntry& entry) { return skips(entry.name); }),
                  expected);
    }
    std::vector<Seen> visible = byFts(m_folder.path());
    std::erase_if(visible, [&](const Seen& seen) {
        return seen.path.mid(m_folder.path().size()).contains("/.");
    });
    EXPECT_EQ(byWalk(m_folder.path(), {.includeHidden = false}), visible);
}

TEST_F(WalkTest, EndsAtOnceWhereverItIsCancelled)
{
    buildRandomTree(m_folder.path(), 3, 5000);
    // The smallest read-ahead makes the workers wait, the usual one lets them finish.
    for (const int entries : {1, 10, 1000, 5000}) {
        std::atomic<bool> cancelled{false};
        const std::uint32_t readAhead = entries % 1000 == 0 ? 65536 : 100;
        Walk walk(m_folder.path(), {.cancelled = &cancelled, .readAhead = readAhead});
        int seen = 0;
        while (seen < entries && walk.next())
            ++seen;
        ASSERT_EQ(seen, entries);
        cancelled = true;
        EXPECT_FALSE(walk.next());
    }
}

TEST_F(WalkTest, DepthAndWidthNeedFewDescriptorsAndNoStack)
{
    const QByteArray chain = m_folder / "chain";
    buildDeepChain(chain, 10000);
    const QByteArray flat = m_folder / "flat";
    buildFlatFolder(flat, 200000);
    // Every level holds folders that wait while the walk is further down.
    const QByteArray comb = m_folder / "comb";
    QByteArray level = comb;
    for (int i = 0; i < 400; ++i) {
        for (const char* name : {"", "/z1", "/z2"})
            ASSERT_EQ(::mkdir(level + name, 0755), 0);
        level += "/d";
    }
    struct rlimit before;
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const struct rlimit few = {200, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    const auto count = [](const QByteArray& path) {
        Walk walk(path);
        std::size_t entries = 0;
        while (const WalkEntry* entry = walk.next())
            entries += entry->error == 0 ? 1 : 0;
        return entries;
    };
    EXPECT_EQ(count(chain), 2U * 10001 + 1);
    EXPECT_EQ(count(flat), 200002U);
    EXPECT_EQ(count(comb), 2U * 3 * 400);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    expectSame(comb);
}

TEST_F(WalkTest, BindMountsAreShownAndNotEntered)
{
    makeFolders(m_folder, {"source", "source/inside", "target", "later"});
    const auto passed = passesWithMount(m_folder / "source", m_folder / "target", [&] {
        for (const bool isAsked : {true, false}) {
            int inside = 0;
            int mountPoints = 0;
            Walk walk(m_folder.path(), {.directoryAttributes = isAsked});
            ASSERT_TRUE(walk.next());
            // The table of mounts that the second walk knows does not have this one.
            if (!isAsked) {
                ASSERT_EQ(
                    ::mount(m_folder / "source", m_folder / "later", nullptr, MS_BIND, nullptr), 0);
            }
            while (const WalkEntry* entry = walk.next()) {
                inside += entry->kind == WalkKind::Directory && entry->name == "inside";
                mountPoints += entry->kind == WalkKind::Directory && entry->isMountPoint;
            }
            EXPECT_EQ(inside, 1);
            EXPECT_EQ(mountPoints, 1);
        }
    });
    if (!passed)
        GTEST_SKIP() << "this machine does not let us mount";
    EXPECT_TRUE(*passed);
}

TEST_F(WalkTest, DoesWithTheThreadsThatItGetsAsVolumesDo)
{
    ASSERT_EQ(::chmod(m_folder.path(), 0755), 0);
    buildNastyTree(m_folder / "tree", {.levels = 30});
    // For whom permissions bind, limits do as well.
    EXPECT_TRUE(passesUnprivileged([&] {
        struct rlimit limit = {};
        ASSERT_EQ(::getrlimit(RLIMIT_NPROC, &limit), 0);
        for (limit.rlim_cur = 0; limit.rlim_cur < 8; ++limit.rlim_cur) {
            ASSERT_EQ(::setrlimit(RLIMIT_NPROC, &limit), 0);
            expectSame(m_folder.path(), {.readAhead = 100, .workers = 4});
            if (limit.rlim_cur == 0) {
                EXPECT_THROW(std::thread([] {}).join(), std::system_error);
                EXPECT_EQ(LinuxVolumes().volumeInfo(QStringLiteral("/"))->totalCapacity, 0U);
            }
        }
    }));
}
