#include "scanner/DiskScanner.h"

#include "platform/Clock.h"
#include "platform/PathText.h"
#include "sandbox/Permissions.h"
#include "sandbox/SandboxMachine.h"
#include "scanner/FileNodes.h"
#include "scanner/ScanResult.h"
#include "support/FileTestSupport.h"

#include <QElapsedTimer>

#include <chrono>
#include <map>
#include <thread>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace brivane;
using namespace brivane::testing;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

/// Goes on by a fixed step at every look, and the scanner looks once an entry: so a test knows at
/// which entry a report is due.
class SteppingClock final : public Clock {
public:
    explicit SteppingClock(std::chrono::milliseconds step = 0ms)
        : m_step(step)
    {
    }
    [[nodiscard]] QDateTime now() const override { return QDateTime::fromSecsSinceEpoch(0); }
    [[nodiscard]] std::chrono::nanoseconds monotonicNow() const override { return m_now += m_step; }
    [[nodiscard]] QCoro::Task<> sleep(std::chrono::milliseconds, std::stop_token) override
    {
        co_return;
    }

private:
    const std::chrono::milliseconds m_step;
    mutable std::chrono::nanoseconds m_now{0};
};

/// What the tree below `path` has to be, worked out over the paths that fts gives.
FactsByPath naiveFacts(const QByteArray& path)
{
    FactsByPath tree;
    forEachByFts(path, FTS_XDEV, [&](const FTSENT& entry) {
        const QByteArray entryPath = entry.fts_path;
        const QByteArray parent = entryPath.left(entryPath.lastIndexOf('/'));
        const bool isLeaf = entry.fts_info == FTS_F || entry.fts_info == FTS_SL;
        if (!isLeaf && entry.fts_info != FTS_D)
            return;
        tree[entryPath].isDirectory = !isLeaf;
        if (entry.fts_level > 0)
            tree[parent].children.push_back(entryPath);
        for (QByteArray up = entryPath; isLeaf && up.size() >= path.size();
             up.truncate(up.lastIndexOf('/'))) {
            tree[up].size += static_cast<std::uint64_t>(entry.fts_statp->st_size);
            tree[up].files += up == entryPath ? 0 : 1;
        }
    });
    for (auto& [folder, facts] : tree)
        std::ranges::stable_sort(facts.children, std::greater(),
                                 [&](const QByteArray& child) { return tree[child].size; });
    return tree;
}

std::uint64_t sumOfFiles(const FileNode& node)
{
    if (!node.isDirectory())
        return node.size();
    std::uint64_t sum = 0;
    for (const FileNode* child : node.children())
        sum += sumOfFiles(*child);
    return sum;
}

/// Files in folders of folders: `width` of each on every one of `depth` levels.
void fill(const SandboxMachine& machine, const QString& folder, int width, int depth)
{
    for (int i = 0; i < width; ++i) {
        machine.file(folder + u"/file%1"_s.arg(i), SandboxMachine::Size{(i * 7919 + depth) % 5000});
        if (depth > 0)
            fill(machine, folder + u"/folder%1"_s.arg(i), width, depth - 1);
    }
}

/// The text with which a scan fails; empty when it does not.
QString failure(DiskScanner& scanner, const QString& path, const DiskScanner::Progress& report = {})
{
    try {
        scanner.scan(path, report);
    } catch (const DiskScanner::ScanError& error) {
        return error.errorDescription();
    }
    return {};
}

} // namespace

TEST(DiskScanner, TheTreeIsWhatFtsSaysOnTheNastyTree)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    const QByteArray path = PathText::toBytes(machine.path(u"/nasty"));
    buildNastyTree(path, {.levels = 100});
    SteppingClock clock;
    const FileNodePtr root = DiskScanner(clock).scan(PathText::fromBytes(path));
    EXPECT_EQ(differenceOf(factsOf(root.get()), naiveFacts(path)), "");
    EXPECT_TRUE(root->isSorted());
}

TEST(DiskScanner, EveryReportShowsSizesThatAddUp)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    fill(machine, u"/data"_s, 5, 4);
    // A report every 50 entries: half a second at a hundredth of a second for an entry.
    SteppingClock clock(10ms);
    DiskScanner scanner(clock);
    int reports = 0;
    std::int64_t before = 0;
    bool isComplete = false;
    const std::atomic<bool> isInAHurry = true;
    const FileNodePtr root =
        scanner.scan(machine.path(u"/data"), [&](const ScanProgress& progress) {
            ++reports;
            EXPECT_FALSE(isComplete);
            isComplete = progress.isComplete;
            const FileNode& tree = *progress.partialTree;
            EXPECT_EQ(tree.size(), sumOfFiles(tree));
            EXPECT_EQ(progress.bytesProcessed, tree.size());
            if (progress.isComplete) {
                EXPECT_EQ(tree.tree().waitToBuild(&isInAHurry).tree(), nullptr) << "two may build";
                return;
            }
            EXPECT_EQ(tree.fileCount(), progress.filesScanned);
            EXPECT_EQ(progress.filesScanned - before, 50);
            EXPECT_TRUE(progress.currentPath.startsWith(machine.path(u"/data")));
            before = progress.filesScanned;
        });
    EXPECT_TRUE(isComplete);
    EXPECT_NE(root->tree().waitToBuild(&isInAHurry).tree(), nullptr);
    // 3905 files, 781 folders twice.
    EXPECT_EQ(root->fileCount(), 3905);
    EXPECT_EQ(reports, (3905 + 2 * 781) / 50 + 1);
}

TEST(DiskScanner, CountsAsTheScreensShowIt)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    machine.file(u"/data/target"_s, SandboxMachine::Size{100});
    machine.link(u"/data/dangling"_s, "nowhere");
    ASSERT_EQ(::link(PathText::toBytes(machine.path(u"/data/target")),
                     PathText::toBytes(machine.path(u"/data/second"))),
              0);
    SteppingClock clock;
    ScanProgress last;
    const FileNodePtr root = DiskScanner(clock).scan(
        machine.path(u"/data"), [&](const ScanProgress& progress) { last = progress; });
    EXPECT_EQ(last.filesScanned, 5) << "a folder counts twice";
    EXPECT_EQ(last.bytesProcessed, 200U) << "a link has no bytes";
    EXPECT_EQ(std::pair(root->fileCount(), root->size()), std::pair(std::int64_t{3}, 207UL));
}

TEST(DiskScanner, ACancelEndsARunningAndAPausedWalkAndKeepsWhatWasFound)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    fill(machine, u"/data"_s, 4, 4);
    SteppingClock clock(10ms);
    DiskScanner scanner(clock);
    for (const bool isPausedFirst : {false, true}) {
        FileNodePtr partial;
        QElapsedTimer time;
        std::jthread canceller;
        const auto report = [&](const ScanProgress& progress) {
            if (partial)
                return;
            partial = progress.partialTree;
            time.start();
            if (!isPausedFirst)
                return scanner.cancel();
            scanner.pause();
            canceller = std::jthread([&] { scanner.cancel(); });
        };
        EXPECT_EQ(failure(scanner, machine.path(u"/data"), report), u"Scan was cancelled.");
        // Far above what is promised, so that a busy machine does not fail it.
        EXPECT_LT(time.elapsed(), 2000);
        ASSERT_TRUE(partial);
        EXPECT_GT(partial->size(), 0U);
        EXPECT_EQ(partial->size(), sumOfFiles(*partial));
    }
    // A cancel before the walk has no effect on it.
    scanner.cancel();
    EXPECT_EQ(scanner.scan(machine.path(u"/data"))->fileCount(), 4 * 341);
}

TEST(DiskScanner, DepthWidthAndNamesHaveNoLimitOfOurs)
{
    const TestFolder folder(makeSpaciousFolder());
    const QByteArray& data = folder.path();
    buildDeepChain(data + "/chain", 10'000);
    buildFlatFolder(data + "/flat", 1'000'000);
    const QByteArray name = "\n\xFF\xE2\x80\xAE" + QByteArray(250, 'n');
    writeFile(folder / name, "");
    SteppingClock clock(1ms);
    const FileNodePtr root = DiskScanner(clock).scan(PathText::fromBytes(data));
    EXPECT_EQ(root->fileCount(), 1'000'002);
    const FileNode* flat = childOf(*root, "flat");
    EXPECT_EQ(flat->childCount(), 1'000'000U);
    EXPECT_EQ(childOf(*root, name.toStdString())->pathBytes(), data + '/' + name);
    FileNode* deepest = childOf(*root, "chain");
    while (deepest->isDirectory())
        deepest = deepest->children().front();
    EXPECT_EQ(deepest->nameBytes(), "bottom");
    EXPECT_EQ(deepest->pathBytes().count('/'), data.count('/') + 10'002);
    // What a node costs beyond its name.
    const FileTree& tree = root->tree();
    std::size_t names = 0;
    for (const FileNode* child : flat->children())
        names += child->nameBytes().size();
    EXPECT_LT(tree.memoryUse() - names, tree.nodeCount() * 64);
}

TEST(DiskScanner, UnreadableFoldersAreKeptWithTheirReasonAndMarkWhatIsAboveThem)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    machine.file(u"/data/open/file"_s, SandboxMachine::Size{5});
    machine.directory(u"/data/outer/locked"_s);
    machine.setMode(u"/data/outer/locked"_s, 0);
    SteppingClock clock;
    FileNodePtr root;
    std::thread([&] { // which alone gives up its rights
        obeyPermissions();
        root = DiskScanner(clock).scan(machine.path(u"/data"));
    })
        .join();
    const FileNode* outer = childOf(*root, "outer");
    const FileNode* locked = outer->children().front();
    const FileTree& tree = root->tree();
    ASSERT_EQ(tree.issueCount(), 1U);
    EXPECT_EQ(tree.issues().front().path, locked->pathBytes());
    EXPECT_EQ(tree.issues().front().error, EACCES);
    EXPECT_TRUE(locked->isUnreadable() && !outer->isUnreadable() && root->isIncomplete());
    for (const FileNode* child : root->children())
        EXPECT_EQ(child->isIncomplete(), child == outer);
    machine.setMode(u"/data/outer/locked"_s, 0755);
}

TEST(ScanResult, DurationsReadAsPeopleSayThem)
{
    const std::pair<double, QString> rows[] = {
        {0.8504, u"850 ms"_s},
        {1, u"1.0 s"_s},
        {60, u"1m 0s"_s},
        {3725.9, u"62m 5s"_s},
    };
    for (const auto& [seconds, text] : rows) {
        ScanResult result;
        result.scanDuration = seconds;
        EXPECT_EQ(result.formattedDuration(), text);
    }
}
