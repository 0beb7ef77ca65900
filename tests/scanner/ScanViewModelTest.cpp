#include "scanner/ScanViewModel.h"

#include "platform/PathText.h"
#include "sandbox/HoldableClock.h"
#include "sandbox/SandboxMachine.h"
#include "sandbox/SandboxVolumes.h"
#include "scanner/FileNodes.h"
#include "support/AwaitTask.h"
#include "support/PrintText.h"

#include <QSignalSpy>
#include <QUrl>

#include <gtest/gtest.h>

using namespace brivane;
using namespace brivane::testing;
using namespace Qt::StringLiterals;

namespace {

/// A machine with some files on its startup disk, and a view model on it.
class ScanViewModelTest : public ::testing::Test {
protected:
    ScanViewModelTest()
    {
        m_machine.file(u"/data/big"_s, SandboxMachine::Size{3000});
        m_machine.file(u"/data/deep/er/small"_s, SandboxMachine::Size{200});
        auto volumes = std::make_unique<SandboxVolumes>(m_machine);
        m_volumes = volumes.get();
        // Every entry is reported.
        auto clock = std::make_unique<HoldableClock>(std::chrono::milliseconds(500));
        m_clock = clock.get();
        m_owned = std::make_unique<OwnedHost>(m_machine.locations(), std::move(volumes),
                                              std::move(clock));
        m_scan = std::make_unique<ScanViewModel>(m_owned->host());
        EXPECT_TRUE(waitUntil([&] { return m_scan->volumes().size() == 1; }));
    }

    [[nodiscard]] bool isCompleted() const
    {
        return m_scan->scanState() == ScanViewModel::Completed;
    }

    /// Whether a scan of this folder, or of the selected volume, comes to its end.
    [[nodiscard]] bool scans(const QString& folder = {})
    {
        folder.isEmpty() ? m_scan->rescan() : m_scan->scanFolder(folder);
        return waitUntil([&] { return isCompleted(); });
    }
    /// Starts a scan that is held within its walk.
    void startHeldScan()
    {
        m_clock->holdAfter(4);
        m_scan->rescan();
        ASSERT_TRUE(waitUntil([&] { return m_clock->isHolding(); }));
    }
    static FileNodeRef child(const FileNodeRef& node, std::string_view name)
    {
        return FileNodeRef(childOf(*node.node(), name)->shared());
    }

    SandboxMachine m_machine = SandboxMachine::temporary();
    SandboxVolumes* m_volumes = nullptr;
    HoldableClock* m_clock = nullptr;
    std::unique_ptr<OwnedHost> m_owned;
    std::unique_ptr<ScanViewModel> m_scan;
};

} // namespace

TEST_F(ScanViewModelTest, HiddenSpaceIsNoneWhereTheFiguresDoNotTell)
{
    DiskInfo disk;
    disk.totalSize = 1000;
    disk.freeSize = 400;
    EXPECT_EQ(ScanViewModel::hiddenSpace(disk, 500), 100U);
    EXPECT_EQ(ScanViewModel::hiddenSpace(disk, 601), 0U);
    disk.freeSize = 2000;
    EXPECT_EQ(ScanViewModel::hiddenSpace(disk, 0), 0U);
}

TEST_F(ScanViewModelTest, AFolderOfAnOddNameIsScannedByItsOwnPath)
{
    const QByteArray odd = "odd %41\xFF\n";
    m_machine.file(u"/"_s + PathText::fromBytes(odd) + u"/file"_s, SandboxMachine::Size{42});
    const QByteArray folder = PathText::toBytes(m_machine.path(u"/")) + '/' + odd;
    const QUrl url(u"file://"_s + QString::fromLatin1(folder.toPercentEncoding("/")));
    m_scan->scanFolderUrl(url);
    ASSERT_TRUE(waitUntil([&] { return isCompleted(); }));
    EXPECT_EQ(m_scan->rootNode().node()->pathBytes(), folder);
    EXPECT_EQ(m_scan->rootNode().node()->size(), 42U);
    EXPECT_EQ(m_scan->scanResult()->hiddenSpaceBytes, 0U);
}

TEST_F(ScanViewModelTest, AStopKeepsTheTreeAndALateEndChangesNothing)
{
    ASSERT_TRUE(scans(m_machine.path(u"/data")));
    m_scan->stopScan(); // only a scan that runs is stopped
    EXPECT_TRUE(isCompleted());

    m_scan->rescan();
    m_scan->togglePause();
    EXPECT_TRUE(m_scan->isPaused());
    m_scan->stopScan();
    EXPECT_EQ(m_scan->scanState(), ScanViewModel::Idle);
    EXPECT_FALSE(m_scan->isPaused());

    // The next scan waits for the stopped walk, which ends without a word.
    ASSERT_TRUE(scans());
    EXPECT_EQ(m_scan->rootNode().node()->size(), 3200U);
}

TEST_F(ScanViewModelTest, OfAScanThatAnotherFollowsNothingIsShownUnderTheOthersName)
{
    const QString other = m_machine.directory(u"/other"_s);
    QStringList shown;
    QObject::connect(m_scan.get(), &ScanViewModel::rootNodeChanged, [&] {
        if (m_scan->hasTree())
            shown += m_scan->rootNode().node()->path();
    });
    const QSignalSpy results(m_scan.get(), &ScanViewModel::scanResultChanged);
    for (const bool isStopped : {false, true}) {
        m_scan->startScan(m_machine.path(u"/data"));
        m_scan->waitForWalk(); // what it has told waits in the event loop
        m_scan->togglePause();
        if (isStopped)
            m_scan->stopScan();
        m_scan->startScan(other);
        EXPECT_FALSE(m_scan->isPaused());
        ASSERT_TRUE(waitUntil([&] { return isCompleted(); }));
        EXPECT_EQ(m_scan->scanResult()->rootNode->path(), other);
        EXPECT_EQ(m_scan->scanResult()->totalFilesScanned, 2);
    }
    EXPECT_EQ(shown, QStringList({other, other}));
    EXPECT_EQ(results.count(), 2);
}

TEST_F(ScanViewModelTest, AStopEndsScansThatWaitInLineToo)
{
    const LogCapture log;
    startHeldScan();
    for (int waiting = 0; waiting < 2; ++waiting)
        m_scan->startScan(m_machine.path(u"/data"));
    m_scan->stopScan();
    m_clock->release();
    m_scan->waitForWalk();
    EXPECT_EQ(linesOf(log).filter(u"Scan started"_s).size(), 1);
    EXPECT_EQ(linesOf(log).filter(u"Admin"_s), QStringList());
}

TEST_F(ScanViewModelTest, LeavingDoesNotWaitForAWalkThatHangs)
{
    const LogCapture log;
    startHeldScan();
    m_scan.reset();
    m_clock->release();
    EXPECT_TRUE(waitUntil([&] { return !linesOf(log).filter(u"Scan cancelled"_s).isEmpty(); }));
}

TEST_F(ScanViewModelTest, NothingOfTheOldTreeIsShownOnceARescanHasBegun)
{
    ASSERT_TRUE(scans());
    FileTree& old = m_scan->rootNode().node()->tree();
    old.addIssue(old.root(), false, {"/secret", EACCES});
    int issues = 1; // as a screen shows them
    QObject::connect(m_scan->stats(), &ScanStats::progressChanged,
                     [&] { issues = m_scan->stats()->issueCount(); });
    QObject::connect(m_scan.get(), &ScanViewModel::scanStateChanged, [&] {
        EXPECT_FALSE(m_scan->hasTree()) << "the screen of the scan is made for the old tree";
        EXPECT_EQ(m_scan->folderModel()->rowCount(), 0);
    });
    m_scan->rescan();
    EXPECT_EQ(issues, 0);
    m_scan->disconnect();
}

TEST_F(ScanViewModelTest, ADroppedFileIsSelectedInItsFolder)
{
    m_machine.link(u"/link"_s, "data/big");
    for (const QString& dropped : {m_machine.path(u"/data/big"), m_machine.path(u"/link")}) {
        ASSERT_TRUE(scans(dropped));
        EXPECT_EQ(m_scan->selectedMountPoint(), m_machine.path(u"/data"));
        EXPECT_EQ(m_scan->selectedNode(), child(m_scan->rootNode(), "big"));
    }
    // What another machine has, or what is no more, brings nothing of this folder on screen.
    const QUrl url = QUrl::fromLocalFile(m_machine.path(u"/data/deep"));
    m_scan->scanFolderUrl(QUrl(u"file://elsewhere.example"_s + url.path()));
    EXPECT_TRUE(isCompleted());
    m_machine.command(u"/usr/bin/swiftc");
    m_machine.command(u"/usr/bin/osascript");
    m_scan->scanAsAdmin(m_machine.directory(u"/other"));
    ASSERT_TRUE(waitUntil([&] { return isCompleted(); }));
    EXPECT_EQ(m_scan->rootNode().node()->pathBytes(), PathText::toBytes(m_machine.path(u"/other")));
    EXPECT_FALSE(m_scan->selectedNode().isValid()) << "of the tree before";
}

TEST_F(ScanViewModelTest, WhatThePointerLeftLateIsNotTakenForWhatItIsOn)
{
    ASSERT_TRUE(scans());
    const FileNodeRef data = child(m_scan->rootNode(), "data");
    const FileNodeRef big = child(data, "big");
    m_scan->setHovered(data, true);
    m_scan->setHovered(big, true);
    m_scan->setHovered(data, false);
    EXPECT_EQ(m_scan->hoveredNode(), big);
    m_scan->setHovered(big, false);
    EXPECT_FALSE(m_scan->hoveredNode().isValid());
}
