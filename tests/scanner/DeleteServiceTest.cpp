#include "scanner/DeleteService.h"

#include "core/Log.h"
#include "core/NotificationNames.h"
#include "platform/PathText.h"
#include "platform/Volumes.h"
#include "sandbox/SandboxMachine.h"
#include "scanner/FileTree.h"
#include "support/AwaitTask.h"
#include "support/RecordingFileSystem.h"

#include <QCoreApplication>
#include <QFile>
#include <QSemaphore>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
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
        FileNode* node = m_tree->make(name, false, 5);
        m_tree->attach(node, m_tree->root());
        return node->shared();
    }

    static bool stands(const FileNodePtr& node)
    {
        struct stat facts = {};
        return ::lstat(node->pathBytes().constData(), &facts) == 0;
    }

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
    FileNode* const keys = home->make(".ssh", true, 0);
    home->attach(keys, home->root());
    FileNode* const library = home->make("Library", true, 0);
    home->attach(library, home->root());
    FileNode* const mail = home->make("Mail", true, 700);
    home->attach(mail, library);
    const FileNodePtr movie = file("movie");

    const LogCapture log;
    EXPECT_EQ(m_service->stageForDeletion(keys->shared()).which, Case::blocked);
    EXPECT_EQ(m_service->stageForDeletion(mail->shared()).which, Case::warning);
    EXPECT_EQ(m_service->stageForDeletion(movie).which, Case::safe);
    EXPECT_EQ(m_service->stageForDeletion(movie).which, Case::safe);
    EXPECT_THAT(m_service->pendingItems(), ElementsAre(mail->shared(), movie));
    EXPECT_EQ(m_service->pendingSize(), 705U);
    EXPECT_FALSE(keys->markedForDeletion());
    EXPECT_TRUE(movie->markedForDeletion());

    QStringList lines;
    for (const LogLine& line : log.lines())
        lines += u"%1 %2 %3"_s.arg(line.category).arg(static_cast<int>(line.level)).arg(line.text);
    EXPECT_THAT(lines,
                ElementsAre(u"delete 1 Blocked deletion of protected path: "_s + keys->path(),
                            u"delete 0 Staged for deletion: Mail (700 B)"_s,
                            u"delete 0 Staged for deletion: movie (5 B)"_s));

    m_service->unstage(mail->shared());
    m_service->unstage(keys->shared());
    EXPECT_THAT(m_service->pendingItems(), ElementsAre(movie));
    EXPECT_FALSE(mail->markedForDeletion());
    m_service->clearPending();
    EXPECT_TRUE(m_service->pendingItems().isEmpty());
    EXPECT_FALSE(movie->markedForDeletion());
    EXPECT_TRUE(stands(movie));
}

TEST_F(DeleteServiceTest, WhatFailsStaysListedAndMarkedAndTheOthersGo)
{
    const FileNodePtr first = file("first");
    const FileNodePtr stubborn = file("stubborn");
    const FileNodePtr last = file("last");
    for (const FileNodePtr& node : {first, stubborn, last})
        m_service->stageForDeletion(node);
    m_fileSystem.hasNoTrash = true;
    m_fileSystem.cannotRemove = stubborn->path();

    const DeleteService::Outcome outcome = execute();
    EXPECT_EQ(outcome.removedCount, 2);
    EXPECT_THAT(outcome.failedPaths, ElementsAre(stubborn->path()));
    EXPECT_THAT(m_service->pendingItems(), ElementsAre(stubborn));
    EXPECT_TRUE(stubborn->markedForDeletion());
    EXPECT_FALSE(stands(first) || stands(last));
    EXPECT_EQ(m_posts, 1);

    m_fileSystem.clearCalls();
    EXPECT_EQ(execute().removedCount, 0);
    EXPECT_THAT(m_fileSystem.calls(), ElementsAre(u"trash stubborn"_s, u"remove stubborn"_s));
    EXPECT_EQ(m_posts, 1) << "nothing was removed";
}

TEST_F(DeleteServiceTest, NothingIsRemovedForGoodWhereTheTrashTakesIt)
{
    m_service->stageForDeletion(file("movie"));
    EXPECT_EQ(execute().removedCount, 1);
    EXPECT_THAT(m_fileSystem.calls(), ElementsAre(u"trash movie"_s));
    EXPECT_TRUE(QFile::exists(m_fileSystem.trash + u"/movie"_s));
    EXPECT_TRUE(m_service->pendingItems().isEmpty());
    EXPECT_EQ(m_posts, 1);
}

TEST_F(DeleteServiceTest, WhatTookThePlaceOfAStagedObjectIsLeftAlone)
{
    const FileNodePtr trigger = file("trigger");
    const FileNodePtr replaced = file("replaced");
    const FileNodePtr written = file("written");
    const FileNodePtr linked = file("linked");
    const FileNodePtr precious = file("precious");
    for (const FileNodePtr& node : {trigger, replaced, written, linked})
        m_service->stageForDeletion(node);
    m_fileSystem.hasNoTrash = true;
    m_fileSystem.before = [&](FileOperation, const QString& path) {
        if (path != trigger->path())
            return;
        const QByteArray place = replaced->pathBytes();
        ASSERT_EQ(::rename(place.constData(), (place + ".old").constData()), 0);
        m_machine.file(u"/data/replaced"_s, QByteArray("54321"));
        m_machine.file(u"/data/written"_s, QByteArray("123456"));
        ASSERT_EQ(::unlink(linked->pathBytes().constData()), 0);
        ASSERT_EQ(::symlink(precious->pathBytes().constData(), linked->pathBytes().constData()), 0);
    };

    const DeleteService::Outcome outcome = execute();
    EXPECT_EQ(outcome.removedCount, 1);
    EXPECT_THAT(m_service->pendingItems(), ElementsAre(replaced, written, linked));
    EXPECT_EQ(outcome.failedPaths.size(), 3);
    for (const FileNodePtr& node : {replaced, written, linked, precious})
        EXPECT_TRUE(stands(node)) << node->path().toStdString();
}

TEST_F(DeleteServiceTest, AFolderGoesAlthoughItChangedByTheLossOfAStagedChild)
{
    m_machine.file(u"/data/folder/child"_s, QByteArray("x"));
    m_machine.file(u"/data/folder/other"_s, QByteArray("x"));
    FileNode* const folder = m_tree->make("folder", true, 2);
    m_tree->attach(folder, m_tree->root());
    FileNode* const child = m_tree->make("child", false, 1);
    m_tree->attach(child, folder);
    m_service->stageForDeletion(child->shared());
    m_service->stageForDeletion(folder->shared());
    EXPECT_EQ(execute().removedCount, 2);
    EXPECT_FALSE(stands(folder->shared()));
}

TEST_F(DeleteServiceTest, TheScreenGoesOnWhileTheDiskIsSlow)
{
    const FileNodePtr slow = file("slow");
    const FileNodePtr after = file("after");
    const FileNodePtr late = file("late");
    m_service->stageForDeletion(slow);
    m_service->stageForDeletion(after);
    QSemaphore disk;
    m_fileSystem.before = [&](FileOperation, const QString&) {
        EXPECT_TRUE(disk.tryAcquire(1, 10'000));
    };

    auto task = m_service->executeDeletion();
    EXPECT_EQ(execute().removedCount, 0) << "one at a time";
    m_service->stageForDeletion(late);
    disk.release(2);
    const DeleteService::Outcome outcome = awaitTask(std::move(task));
    EXPECT_NE(m_fileSystem.thread(), QCoreApplication::instance()->thread());
    EXPECT_EQ(outcome.removedCount, 2);
    EXPECT_THAT(m_service->pendingItems(), ElementsAre(late));
    EXPECT_TRUE(stands(late)) << "staged after the user had confirmed the others";
}

TEST_F(DeleteServiceTest, WhatIsNoLongerPendingIsNoLongerRemoved)
{
    for (const bool destroys : {false, true}) {
        const FileNodePtr first = file(destroys ? "first again" : "first");
        const FileNodePtr second = file(destroys ? "second again" : "second");
        m_service->stageForDeletion(first);
        m_service->stageForDeletion(second);
        QSemaphore started;
        QSemaphore disk;
        m_fileSystem.before = [&](FileOperation, const QString&) {
            started.release();
            EXPECT_TRUE(disk.tryAcquire(1, 10'000));
        };
        auto task = m_service->executeDeletion();
        ASSERT_TRUE(started.tryAcquire(1, 10'000));
        m_service->clearPending();
        disk.release();
        if (destroys)
            m_service.reset();
        EXPECT_EQ(awaitTask(std::move(task)).removedCount, 1);
        EXPECT_FALSE(stands(first));
        EXPECT_TRUE(stands(second));
        EXPECT_EQ(m_posts, destroys ? 2 : 1);
    }
}
