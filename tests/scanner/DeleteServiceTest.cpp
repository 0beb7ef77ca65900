#include "scanner/DeleteService.h"

#include "core/NotificationNames.h"
#include "platform/PathText.h"
#include "platform/Volumes.h"
#include "sandbox/SandboxMachine.h"
#include "scanner/FileNodes.h"
#include "support/AwaitTask.h"
#include "support/FileTestSupport.h"
#include "support/RecordingFileSystem.h"

#include <QCoreApplication>
#include <QFile>
#include <QSemaphore>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace brivane;
using namespace brivane::testing;
using namespace Qt::StringLiterals;
using ::testing::ElementsAre;
using Case = SafetyChecker::SafetyLevel::Case;

namespace {

class DeleteServiceTest : public ::testing::Test {
protected:
    DeleteServiceTest()
    {
        m_fileSystem.trash = m_machine.directory(u"/trash"_s);
        m_owned = std::make_unique<OwnedHost>(m_machine.locations(), m_fileSystem);
        m_owned->host().notifications.subscribe(NotificationNames::diskSpaceChanged, &m_receiver,
                                                [this] { ++m_posts; });
        m_service = std::make_unique<DeleteService>(m_owned->host());
        m_tree = FileTree::create(PathText::toBytes(m_machine.directory(u"/data"_s)));
    }

    /// A file of five bytes below "/data", and a node for it.
    FileNodePtr file(const char* name)
    {
        m_machine.file(QString(u"/data/"_s + QLatin1StringView(name)), QByteArray("12345"));
        return addFile(m_tree->root(), name, 5)->shared();
    }

    /// The same, staged one after the other.
    std::vector<FileNodePtr> staged(std::initializer_list<const char*> names)
    {
        std::vector<FileNodePtr> nodes;
        for (const char* name : names) {
            nodes.push_back(file(name));
            m_service->stageForDeletion(nodes.back());
        }
        return nodes;
    }

    static bool stands(const FileNodePtr& node) { return brivane::stands(node->pathBytes()); }

    DeleteService::Outcome execute() { return awaitTask(m_service->executeDeletion()); }

    SandboxMachine m_machine = SandboxMachine::temporary();
    RecordingFileSystem m_fileSystem;
    QObject m_receiver;
    int m_posts = 0;
    std::unique_ptr<OwnedHost> m_owned;
    std::unique_ptr<DeleteService> m_service;
    std::shared_ptr<FileTree> m_tree;
};

} // namespace

TEST_F(DeleteServiceTest, OnlyWhatMayGoIsStagedAndOnlyOnce)
{
    const auto home = FileTree::create(PathText::toBytes(m_machine.locations().home()));
    FileNode* const keys = addFolder(home->root(), ".ssh");
    FileNode* const mail = addFolder(addFolder(home->root(), "Library"), "Mail");
    FileTree::addSize(mail, 700);
    const FileNodePtr movie = file("movie");

    EXPECT_EQ(m_service->stageForDeletion(keys->shared()).which, Case::blocked);
    EXPECT_EQ(m_service->stageForDeletion(mail->shared()).which, Case::warning);
    EXPECT_EQ(m_service->stageForDeletion(movie).which, Case::safe);
    EXPECT_EQ(m_service->stageForDeletion(movie).which, Case::safe);
    EXPECT_THAT(m_service->pendingItems(), ElementsAre(mail->shared(), movie));
    EXPECT_EQ(m_service->pendingSize(), 705U);
    EXPECT_FALSE(keys->markedForDeletion());
    EXPECT_TRUE(movie->markedForDeletion());

    m_service->unstage(mail->shared());
    EXPECT_EQ(execute().removedCount, 1);
    EXPECT_THAT(m_fileSystem.calls(), ElementsAre(u"trash movie"_s)) << "not removed for good";
}

TEST_F(DeleteServiceTest, WhatFailsStaysListedAndMarkedAndTheOthersGo)
{
    const auto nodes = staged({"first", "stubborn", "last"});
    const FileNodePtr& stubborn = nodes[1];
    m_fileSystem.hasNoTrash = true;
    m_fileSystem.cannotRemove = stubborn->path();

    const DeleteService::Outcome outcome = execute();
    EXPECT_EQ(outcome.removedCount, 2);
    EXPECT_THAT(outcome.failedPaths, ElementsAre(stubborn->path()));
    EXPECT_THAT(m_service->pendingItems(), ElementsAre(stubborn));
    EXPECT_TRUE(stubborn->markedForDeletion());
    EXPECT_FALSE(stands(nodes[0]) || stands(nodes[2]));
    EXPECT_EQ(m_posts, 1);

    m_fileSystem.clearCalls();
    EXPECT_EQ(execute().removedCount, 0);
    EXPECT_THAT(m_fileSystem.calls(), ElementsAre(u"trash stubborn"_s, u"remove stubborn"_s));
    EXPECT_EQ(m_posts, 1) << "nothing was removed";
}

TEST_F(DeleteServiceTest, WhatTookThePlaceOfAStagedObjectIsLeftAlone)
{
    const auto nodes = staged({"trigger", "replaced", "written", "linked"});
    const FileNodePtr& linked = nodes[3];
    const FileNodePtr precious = file("precious");
    m_fileSystem.hasNoTrash = true;
    m_fileSystem.before = [&](FileOperation, const QString& path) {
        if (path != nodes[0]->path())
            return;
        const QByteArray place = nodes[1]->pathBytes();
        ASSERT_EQ(::rename(place, place + ".old"), 0);
        m_machine.file(u"/data/replaced"_s, QByteArray("54321"));
        m_machine.file(u"/data/written"_s, QByteArray("123456"));
        ASSERT_EQ(::unlink(linked->pathBytes()), 0);
        ASSERT_EQ(::symlink(precious->pathBytes(), linked->pathBytes()), 0);
    };

    const DeleteService::Outcome outcome = execute();
    EXPECT_EQ(outcome.removedCount, 1);
    EXPECT_THAT(m_service->pendingItems(), ElementsAre(nodes[1], nodes[2], linked));
    EXPECT_EQ(outcome.failedPaths.size(), 3);
    for (const FileNodePtr& node : {nodes[1], nodes[2], linked, precious})
        EXPECT_TRUE(stands(node)) << node->path().toStdString();
}

TEST_F(DeleteServiceTest, AFolderGoesAlthoughItChangedByTheLossOfAStagedChild)
{
    m_machine.file(u"/data/folder/child"_s, QByteArray("x"));
    m_machine.file(u"/data/folder/other"_s, QByteArray("x"));
    FileNode* const folder = addFolder(m_tree->root(), "folder");
    FileNode* const child = addFile(folder, "child", 1);
    m_service->stageForDeletion(child->shared());
    m_service->stageForDeletion(folder->shared());
    EXPECT_EQ(execute().removedCount, 2);
    EXPECT_FALSE(stands(folder->shared()));
}

TEST_F(DeleteServiceTest, OfARemovalOnASlowDiskWhatIsNoLongerPendingStays)
{
    for (const bool destroys : {false, true}) {
        const auto nodes = destroys ? staged({"third", "fourth"}) : staged({"first", "second"});
        QSemaphore started;
        QSemaphore disk;
        m_fileSystem.before = [&](FileOperation, const QString&) {
            started.release();
            EXPECT_TRUE(disk.tryAcquire(1, 10'000));
        };
        auto task = m_service->executeDeletion();
        EXPECT_EQ(execute().removedCount, 0) << "one at a time";
        ASSERT_TRUE(started.tryAcquire(1, 10'000));
        m_service->clearPending();
        const FileNodePtr late = staged({destroys ? "later" : "late"})[0];
        disk.release();
        if (destroys)
            m_service.reset();
        EXPECT_EQ(awaitTask(std::move(task)).removedCount, 1);
        EXPECT_NE(m_fileSystem.thread(), QCoreApplication::instance()->thread());
        EXPECT_FALSE(stands(nodes[0]));
        EXPECT_TRUE(stands(nodes[1]));
        EXPECT_TRUE(stands(late)) << "staged after the user had confirmed the others";
        if (!destroys)
            m_service->clearPending();
    }
}

TEST_F(DeleteServiceTest, ARescanFindsEachStagedObjectAgainAndCountsItOnce)
{
    const auto nodes = staged({"same", "replaced", "gone", "unseen", "again"});
    const auto other = FileTree::create(PathText::toBytes(m_machine.directory(u"/data2"_s)));
    const FileNodePtr elsewhere = addFile(other->root(), "file", 1)->shared();
    m_service->stageForDeletion(elsewhere);
    const auto scanned = [&](std::uint64_t size) { // anew, with a node for "same"
        m_tree = FileTree::create(PathText::toBytes(m_machine.path(u"/data")) + '/');
        return addFile(m_tree->root(), "same", size)->shared();
    };
    const FileNodePtr before = scanned(3);
    m_service->carryOver(m_tree->root()->shared());
    ASSERT_TRUE(waitUntil([&] { return before->markedForDeletion(); }));
    ASSERT_EQ(::rename(nodes[1]->pathBytes(), nodes[1]->pathBytes() + ".old"), 0);
    ASSERT_EQ(::unlink(nodes[2]->pathBytes()), 0);

    const FileNodePtr passing = scanned(4);
    const FileNodePtr same = scanned(6);
    file("replaced");
    const FileNodePtr again = addFile(m_tree->root(), "again", 7)->shared();
    m_service->stageForDeletion(again);
    EXPECT_THAT(m_service->pendingItems(),
                ElementsAre(before, nodes[1], nodes[2], nodes[3], again, elsewhere));
    m_service->carryOver(passing->tree().root()->shared());
    m_service->carryOver(m_tree->root()->shared());
    ASSERT_TRUE(waitUntil([&] { return same->markedForDeletion(); }));
    EXPECT_THAT(m_service->pendingItems(), ElementsAre(same, nodes[3], again, elsewhere));
    EXPECT_EQ(m_service->pendingSize(), 6U + 5 + 7 + 1);
    EXPECT_EQ(execute().removedCount, 3);
    EXPECT_FALSE(stands(same));
    EXPECT_TRUE(stands(nodes[1])) << "it was never staged";
}

TEST_F(DeleteServiceTest, ARescanDuringARemovalTakesWhatIsLeftOfIt)
{
    const auto nodes = staged({"going", "stubborn"});
    m_fileSystem.hasNoTrash = true;
    m_fileSystem.cannotRemove = nodes[1]->path();
    QSemaphore disk;
    m_fileSystem.before = [&](FileOperation, const QString&) {
        EXPECT_TRUE(disk.tryAcquire(1, 10'000));
    };
    m_tree = FileTree::create(m_tree->rootPath());
    const FileNodePtr going = addFile(m_tree->root(), "going", 5)->shared();
    const FileNodePtr stubborn = addFile(m_tree->root(), "stubborn", 5)->shared();
    m_service->carryOver(m_tree->root()->shared());
    auto task = m_service->executeDeletion(); // before that has been told
    m_service->stageForDeletion(going);
    disk.release(4);
    EXPECT_EQ(awaitTask(std::move(task)).removedCount, 1);
    ASSERT_TRUE(waitUntil([&] { return stubborn->markedForDeletion(); }));
    EXPECT_THAT(m_service->pendingItems(), ElementsAre(stubborn));
}
