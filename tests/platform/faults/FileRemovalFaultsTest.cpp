#include "platform/FileRemoval.h"
#include "sandbox/NastyTree.h"
#include "support/FileTestSupport.h"
#include "support/faults/SystemCallFaults.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace brivane;

namespace {

/// Deeper than the number of levels that a removal keeps open.
constexpr int levels = 20;

/// A nasty tree beside a folder that nothing may be taken from, rebuilt for each round.
class Ground {
public:
    Ground()
    {
        EXPECT_EQ(::mkdir(m_folder / "outside", 0755), 0);
        EXPECT_EQ(::mkdir(m_folder / "outside/folder", 0755), 0);
        writeFile(m_folder / "outside/folder/keep", "kept");
    }

    void build()
    {
        buildNastyTree(tree(), {.levels = levels, .elsewhere = m_folder / "outside"});
        unlockNastyTree(tree());
        for (const char* name : {"/hard links", "/chain/level"})
            EXPECT_EQ(::chmod(tree() + name, 0555), 0);
    }

    /// Whether the folders that stand and were read-only still are.
    [[nodiscard]] bool modesAreKept() const
    {
        struct stat status = {};
        return std::ranges::all_of(std::array{"/hard links", "/chain/level"}, [&](auto* name) {
            return ::stat(tree() + name, &status) != 0 || (status.st_mode & 07777) == 0555;
        });
    }

    void clear()
    {
        (void)removeTree(text(tree()));
        (void)removeTree(text(m_folder / "parked"));
        EXPECT_FALSE(stands(tree()));
    }

    [[nodiscard]] QByteArray tree() const { return m_folder / "tree"; }
    [[nodiscard]] QByteArray operator/(const char* name) const { return m_folder / name; }
    [[nodiscard]] bool outsideIsWhole() const
    {
        return stands(m_folder / "outside/folder/keep") &&
               snapshot(m_folder / "outside").size() == 3;
    }

private:
    TestFolder m_folder{makeSpaciousFolder()};
};

bool isOrIsBelow(const QByteArray& path, const QByteArray& folder)
{
    return path == folder || path.startsWith(folder + '/');
}

/// Holds a report against what is there: everything is either gone and counted, or stands and is
/// accounted for by a failure.
void checkReport(const RemovalReport& report, const QByteArray& tree, std::size_t entriesBefore,
                 const char* call)
{
    const Snapshot after = stands(tree) ? snapshot(tree) : Snapshot();
    EXPECT_EQ(report.removed, entriesBefore - after.size()) << call;
    EXPECT_LE(report.failures.size(), 1U) << call << ": one fault, one failure";
    for (const FileError& failure : report.failures)
        EXPECT_TRUE(stands(PathText::toBytes(failure.path))) << call;
    for (const auto& [below, description] : after) {
        const QByteArray path = tree + below;
        EXPECT_TRUE(std::any_of(report.failures.begin(), report.failures.end(),
                                [&](const FileError& failure) {
                                    const QByteArray failed = PathText::toBytes(failure.path);
                                    return isOrIsBelow(path, failed) || isOrIsBelow(failed, path);
                                }))
            << call << ": unexplained " << path.constData();
    }
}

/// The number of calls of one undisturbed removal, which is held against the tree as well.
int countCalls(Ground& ground)
{
    ground.build();
    const std::size_t before = snapshot(ground.tree()).size();
    int calls = 0;
    {
        const SystemCallFaults faults([](const SystemCall&) { return 0; });
        EXPECT_EQ(removeTree(text(ground.tree())).removed, before);
        calls = faults.calls();
    }
    EXPECT_TRUE(ground.outsideIsWhole());
    EXPECT_GT(calls, int(before));
    return calls;
}

void removeWithEachFault()
{
    Ground ground;
    const int calls = countCalls(ground);
    for (const int code : {EIO, EACCES}) {
        for (int n = 0; n < calls && !testing::Test::HasFailure(); ++n) {
            ground.build();
            const std::size_t before = snapshot(ground.tree()).size();
            const char* failed = "none";
            bool wasReached = false;
            const auto fail = [&](const SystemCall& call) {
                failed = call.name;
                return code;
            };
            const RemovalReport report =
                withFaultAt(n, wasReached, fail, [&] { return removeTree(text(ground.tree())); });
            checkReport(report, ground.tree(), before, failed);
            EXPECT_TRUE(ground.outsideIsWhole()) << failed;
            EXPECT_TRUE(ground.modesAreKept()) << failed;
            ground.clear();
        }
    }
    std::printf("%d fault points, two errors each\n", calls);
}

} // namespace

TEST(FileRemovalFaults, AnyFailingCallLeavesAReportThatIsTrue)
{
    removeWithEachFault();
    EXPECT_TRUE(passesUnprivileged(removeWithEachFault));
}

TEST(FileRemovalFaults, FolderSwappedOrMovedAtAnyMomentNeverLeadsOutside)
{
    Ground ground;
    const int calls = countCalls(ground);
    // Among them the folder "chain" while the removal is many levels below it.
    const char* const victims[] = {"tree", "tree/hard links", "tree/chain",
                                   "tree/chain/level/level"};
    for (const char* victim : victims) {
        for (int n = 0; n < calls && !testing::Test::HasFailure(); ++n) {
            ground.build();
            bool wasReached = false;
            const auto swap = [&](const SystemCall&) {
                if (::rename(ground / victim, ground / "parked") == 0) {
                    EXPECT_EQ(::symlink(ground / "outside", ground / victim), 0);
                }
                return 0;
            };
            (void)withFaultAt(n, wasReached, swap, [&] { return removeTree(text(ground.tree())); });
            EXPECT_TRUE(ground.outsideIsWhole()) << victim << " at call " << n;
            ground.clear();
        }
    }
}
