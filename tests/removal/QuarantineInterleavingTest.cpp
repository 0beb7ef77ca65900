#include "QuarantineGround.h"

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QSemaphore>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace brivane;
using namespace brivane::testing;
using namespace Qt::StringLiterals;

using QuarantineInterleavingTest = QuarantineTest;

TEST_F(QuarantineInterleavingTest, TwoOperationsOnOneItemNeverCutThroughEachOther)
{
    using Operation = std::function<QCoro::Task<bool>(const QuarantineItem&)>;
    const Operation restoring = [&](const QuarantineItem& item) { return service->restore(item); };
    const Operation deleting = [&](const QuarantineItem& item) {
        return service->permanentlyDelete(item);
    };
    struct Row {
        const Operation& first;
        const Operation& second;
        bool isBack;
        QString result;
    };
    const QString missing = u": No such file or directory"_s;
    for (const Row& row : {Row{restoring, restoring, true, missing},
                           Row{restoring, deleting, true, u"Failed to delete: folder"_s},
                           Row{deleting, restoring, false, missing}}) {
        file(u"~/folder/a"_s);
        file(u"~/folder/b"_s);
        const QString path = machine.path(u"~/folder");
        quarantine({path});
        const QuarantineItem item = only();
        QSemaphore started;
        QSemaphore disk;
        fileSystem.before = [&](FileOperation, const QString&) {
            started.release();
            EXPECT_TRUE(disk.tryAcquire(1, 10'000));
        };
        auto first = row.first(item);
        ASSERT_TRUE(started.tryAcquire(1, 10'000));
        auto second = row.second(item);
        EXPECT_TRUE(service->isProcessing());
        disk.release(2);
        EXPECT_TRUE(awaitTask(std::move(first)));
        EXPECT_FALSE(awaitTask(std::move(second)));
        EXPECT_FALSE(service->isProcessing());
        EXPECT_TRUE(service->lastResult().endsWith(row.result));
        EXPECT_EQ(stands(path + u"/a"_s) && stands(path + u"/b"_s), row.isBack);
        EXPECT_TRUE(service->items().isEmpty());
        EXPECT_NE(fileSystem.thread(), QCoreApplication::instance()->thread());
        fileSystem.before = [](FileOperation, const QString&) {};
    }
}

TEST_F(QuarantineInterleavingTest, ManyPathsAreOneBatchOfRowsAndTwoLists)
{
    QStringList paths;
    for (int i = 0; i < 300; ++i)
        paths += file(u"~/%1"_s.arg(i));
    const QAbstractItemModelTester tester(service->itemModel());
    QSignalSpy inserted(service->itemModel(), &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(service->itemModel(), &QAbstractItemModel::rowsRemoved);
    QSignalSpy reset(service->itemModel(), &QAbstractItemModel::modelReset);
    EXPECT_EQ(quarantine(paths).moved, 300);
    EXPECT_EQ(inserted.size(), 1);
    EXPECT_EQ(fileSystem.writes, 2) << "the list before the moves, and after them";
    await(service->restoreAll());
    EXPECT_EQ(removed.size(), 300) << "row by row";
    EXPECT_EQ(reset.size(), 0);
}
