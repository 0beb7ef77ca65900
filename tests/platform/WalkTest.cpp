#include "platform/Walk.h"

#include "platform/DefaultFileSystem.h"
#include "platform/PathText.h"
#include "sandbox/NastyTree.h"

#include <cmath>
#include <functional>
#include <random>

#include <fcntl.h>
#include <fts.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
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
    switch (kind) {
    case WalkKind::Directory:
        return FTS_D;
    case WalkKind::DirectoryEnd:
        return FTS_DP;
    case WalkKind::UnreadableDirectory:
        return FTS_DNR;
    case WalkKind::File:
        return FTS_F;
    case WalkKind::SymbolicLink:
        return FTS_SL;
    case WalkKind::Other:
        return FTS_DEFAULT;
    case WalkKind::NoAttributes:
        return FTS_NS;
    }
    return 0;
}

std::vector<Seen> byFts(const QByteArray& path)
{
    std::vector<Seen> entries;
    QByteArray start = path;
    char* paths[] = {start.data(), nullptr};
    FTS* fts = ::fts_open(paths, FTS_NOCHDIR | FTS_PHYSICAL | FTS_XDEV, nullptr);
    while (const FTSENT* entry = ::fts_read(fts)) {
        Seen seen{entry->fts_info, static_cast<std::uint32_t>(entry->fts_level), entry->fts_path};
        if (entry->fts_info != FTS_NS) {
            seen.inode = entry->fts_statp->st_ino;
            seen.size = static_cast<std::uint64_t>(entry->fts_statp->st_size);
        }
        entries.push_back(seen);
    }
    ::fts_close(fts);
    return entries;
}

std::vector<Seen> byWalk(const QByteArray& path, WalkOptions options = {})
{
    std::vector<Seen> entries;
    Walk walk(path, options);
    while (const WalkEntry* entry = walk.next()) {
        entries.push_back({ftsKind(entry->kind), entry->depth, walk.path(), entry->attributes.inode,
                           entry->attributes.size});
    }
    return entries;
}

void expectSame(const QByteArray& path, WalkOptions options = {})
{
    const std::vector<Seen> expected = byFts(path);
    const std::vector<Seen> actual = byWalk(path, options);
    for (std::size_t i = 0; i < std::min(expected.size(), actual.size()); ++i)
        ASSERT_EQ(actual[i], expected[i]) << "at entry " << i;
    ASSERT_EQ(actual.size(), expected.size()) << path.data();
}

/// In memory where there is such a place: file systems on disks take long to make many files.
QByteArray folderForManyFiles()
{
    return ::access("/dev/shm", W_OK) == 0 ? QByteArray("/dev/shm") : QByteArray("/tmp");
}

/// An empty folder that is removed at the end, whatever it holds by then.
class Scratch {
public:
    explicit Scratch(const QByteArray& folder = folderForManyFiles())
        : m_path(folder + "/walk-XXXXXX")
    {
        EXPECT_TRUE(::mkdtemp(m_path.data()));
    }
    ~Scratch()
    {
        unlockNastyTree(m_path + "/nasty");
        EXPECT_TRUE(
            DefaultFileSystem::shared().removeItem(PathText::fromBytes(m_path)).failures.empty());
    }
    [[nodiscard]] QByteArray path() const { return m_path; }

private:
    QByteArray m_path;
};

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
        switch (random() % 8) {
        case 0:
        case 1:
        case 2:
            ASSERT_EQ(::mkdir(path.constData(), 0755), 0);
            folders.push_back(path);
            break;
        case 3:
            ASSERT_EQ(::symlink("../" + QByteArray::number(random() % 100), path.constData()), 0);
            break;
        case 4:
            ASSERT_EQ(::mkfifo(path.constData(), 0600), 0);
            break;
        default:
            const int file = ::open(path.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
            ASSERT_EQ(::ftruncate(file, static_cast<off_t>(random() % 100000)), 0);
            ::close(file);
        }
    }
}

/// Runs `body` in a child for whom permissions bind; false if it failed there.
bool passesWithoutPrivileges(const std::function<bool()>& body)
{
    const pid_t child = ::fork();
    if (child == 0) {
        if (::geteuid() == 0 &&
            (::setgroups(0, nullptr) != 0 || ::setresuid(65534, 65534, 65534) != 0))
            ::_exit(2);
        ::_exit(body() ? 0 : 1);
    }
    int status = 0;
    return ::waitpid(child, &status, 0) == child && status == 0;
}

} // namespace

TEST(Walk, AgreesWithFtsOnTheWholeOfUsr)
{
    expectSame("/usr");
}

TEST(Walk, AgreesWithFtsOnRandomTreesWithAnyReadAhead)
{
    for (unsigned seed = 1; seed <= 20; ++seed) {
        const Scratch scratch;
        buildRandomTree(scratch.path(), seed, 2000);
        expectSame(scratch.path());
        expectSame(scratch.path() + '/', {.workers = 3});
        expectSame(scratch.path(), {.readAhead = 1, .workers = 2});
    }
}

TEST(Walk, AgreesWithFtsOnTheNastyTreeAlsoWhenFoldersAreUnreadable)
{
    const Scratch scratch("/tmp");
    const QByteArray tree = scratch.path() + "/nasty";
    const QByteArray elsewhere = makeFolderOnOtherDevice(scratch.path());
    buildNastyTree(tree, {.elsewhere = elsewhere});
    expectSame(tree);
    ASSERT_EQ(::chmod(scratch.path().constData(), 0755), 0);
    EXPECT_TRUE(passesWithoutPrivileges([&] {
        const std::vector<Seen> seen = byWalk(tree);
        const auto isUnreadable = [](const Seen& one) { return one.kind == FTS_DNR; };
        return std::ranges::any_of(seen, isUnreadable) && seen == byFts(tree);
    }));
    if (!elsewhere.isEmpty())
        ::rmdir(elsewhere.constData());
}

TEST(Walk, StartsThatAreNoFolderGiveOneEntry)
{
    const Scratch scratch;
    const QByteArray file = scratch.path() + "/file";
    ::close(::open(file.constData(), O_CREAT | O_CLOEXEC, 0600));
    const QByteArray link = scratch.path() + "/link";
    ASSERT_EQ(::symlink("/usr", link.constData()), 0);
    for (const QByteArray& start :
         {file, link, scratch.path() + "/nothing", QByteArray("/dev/null")})
        expectSame(start);
}

TEST(Walk, SkippedSubtreesAreLeftOutAndTheRestIsWhole)
{
    const Scratch scratch;
    buildRandomTree(scratch.path(), 7, 5000);
    for (const unsigned divisor : {2U, 3U, 7U}) {
        const auto skips = [divisor](std::string_view name) {
            return std::hash<std::string_view>()(name) % divisor == 0;
        };
        std::vector<Seen> expected;
        std::uint32_t skippedFrom = UINT32_MAX;
        for (const Seen& seen : byFts(scratch.path())) {
            const bool isEnd = seen.kind == FTS_DP && seen.depth == skippedFrom;
            if (seen.depth > skippedFrom)
                continue;
            expected.push_back(seen);
            if (isEnd)
                skippedFrom = UINT32_MAX;
            else if (seen.kind == FTS_D && seen.depth > 0 &&
                     skips(seen.path.mid(seen.path.lastIndexOf('/') + 1).data()))
                skippedFrom = seen.depth;
        }
        std::vector<Seen> actual;
        Walk walk(scratch.path(), {.readAhead = 500, .workers = 2});
        while (const WalkEntry* entry = walk.next()) {
            actual.push_back({ftsKind(entry->kind), entry->depth, walk.path(),
                              entry->attributes.inode, entry->attributes.size});
            if (entry->kind == WalkKind::Directory && entry->depth > 0 && skips(entry->name))
                walk.skipSubtree();
        }
        EXPECT_EQ(actual, expected);
    }
}

TEST(Walk, HiddenEntriesAreLeftOutWithWhatTheyHold)
{
    const Scratch scratch;
    buildRandomTree(scratch.path(), 11, 3000);
    std::vector<Seen> expected = byFts(scratch.path());
    std::erase_if(expected, [&](const Seen& seen) {
        return seen.path.mid(scratch.path().size()).contains("/.");
    });
    EXPECT_EQ(byWalk(scratch.path(), {.includeHidden = false}), expected);
}

TEST(Walk, EndsAtOnceWhereverItIsCancelled)
{
    const Scratch scratch;
    buildRandomTree(scratch.path(), 3, 5000);
    // The smallest read-ahead makes the workers wait, the usual one lets them finish.
    for (const int entries : {1, 10, 1000, 5000}) {
        std::atomic<bool> cancelled{false};
        const std::uint32_t readAhead = entries % 1000 == 0 ? 65536 : 100;
        Walk walk(scratch.path(), {.cancelled = &cancelled, .readAhead = readAhead});
        int seen = 0;
        while (seen < entries && walk.next())
            ++seen;
        ASSERT_EQ(seen, entries);
        cancelled = true;
        EXPECT_FALSE(walk.next());
    }
}

TEST(Walk, DepthAndWidthNeedFewDescriptorsAndNoStack)
{
    const Scratch scratch;
    const QByteArray chain = scratch.path() + "/chain";
    buildDeepChain(chain, 10000);
    const QByteArray flat = scratch.path() + "/flat";
    buildFlatFolder(flat, 200000);
    // Every level holds folders that wait while the walk is further down.
    const QByteArray comb = scratch.path() + "/comb";
    QByteArray level = comb;
    for (int i = 0; i < 400; ++i) {
        ASSERT_EQ(::mkdir(level.constData(), 0755), 0);
        ASSERT_EQ(::mkdir(level + "/z1", 0755), 0);
        ASSERT_EQ(::mkdir(level + "/z2", 0755), 0);
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

TEST(Walk, BindMountsAreShownAndNotEntered)
{
    const Scratch scratch;
    const QByteArray source = scratch.path() + "/source";
    const QByteArray target = scratch.path() + "/target";
    ASSERT_EQ(::mkdir(source.constData(), 0755), 0);
    ASSERT_EQ(::mkdir(source + "/inside", 0755), 0);
    ASSERT_EQ(::mkdir(target.constData(), 0755), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        if (::unshare(CLONE_NEWNS) != 0 ||
            ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount(source.constData(), target.constData(), nullptr, MS_BIND, nullptr) != 0)
            ::_exit(77);
        int inside = 0;
        int mountPoints = 0;
        Walk walk(scratch.path());
        while (const WalkEntry* entry = walk.next()) {
            inside += entry->kind == WalkKind::Directory && entry->name == "inside";
            mountPoints += entry->kind == WalkKind::Directory && entry->isMountPoint;
        }
        ::_exit(inside == 1 && mountPoints == 1 ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 77)
        GTEST_SKIP() << "this process may not mount";
    EXPECT_EQ(status, 0);
}
