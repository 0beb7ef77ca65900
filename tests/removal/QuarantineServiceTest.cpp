#include "QuarantineGround.h"

#include <QRegularExpression>

#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace brivane;
using namespace brivane::testing;
using namespace Qt::StringLiterals;
using ::testing::ElementsAre;

using QuarantineServiceTest = QuarantineTest;

TEST_F(QuarantineServiceTest, AHandOverMovesListsAndRecordsEachPathOnce)
{
    const QString first = file(u"~/one/same"_s, "123");
    file(u"~/two/same/inside"_s, "12345");
    const QString second = machine.path(u"~/two/same") + u"//"_s;
    const QString missing = machine.path(u"~/missing");
    const auto result =
        awaitTask(service->quarantine({first, missing, second, first}, u"Uninstaller: Weather"_s));
    EXPECT_EQ(result.size, 8U);
    EXPECT_EQ(result.movedPaths, QSet<QString>({first, second}));
    EXPECT_EQ(posts, 0) << "nothing was freed";
    const QList<QuarantineItem> items = service->items();
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items[1].originalPath, second.chopped(2));
    const QRegularExpression storedName(u"^[0-9A-F]{8}_same$"_s);
    for (const QuarantineItem& item : items) {
        EXPECT_TRUE(storedName.match(item.quarantinePath.mid(store().size() + 1)).hasMatch());
        EXPECT_EQ(std::tuple(item.fileName, item.categoryName, item.quarantineDate, item.purgeDays),
                  std::tuple(u"same"_s, u"Uninstaller: Weather"_s, clock->now(), 7));
    }
    const QJsonObject record = recorded()[1].toObject();
    EXPECT_EQ(record.keys(),
              QStringList({u"categoryName"_s, u"fileName"_s, u"id"_s, u"originalPath"_s,
                           u"purgeDays"_s, u"quarantineDate"_s, u"quarantinePath"_s, u"size"_s}));
    EXPECT_EQ(record[u"id"].toString(), items[1].id.toString(QUuid::WithoutBraces).toUpper());
    EXPECT_EQ(record[u"quarantineDate"].toDouble(), 788918400.0) << "2026 less 2001";
}

TEST_F(QuarantineServiceTest, WhatWouldBreakTheStoreItselfStaysWhereItIs)
{
    const QString home = machine.locations().home();
    const QString precious = file(u"~/precious"_s);
    quarantine({file(u"~/stored"_s)});
    const QString stored = only().quarantinePath;
    const QString alias =
        machine.link(u"/alias", PathText::toBytes(store())); // leads into the store
    const QString homeAlias = machine.link(u"/homes", PathText::toBytes(home).chopped(6));
    ASSERT_TRUE(home.endsWith(u"/robin"_s));
    QStringList refused = {
        u"/"_s,     u""_s,         u"precious"_s,    home,  store(), home.chopped(6), home + u'/',
        manifest(), stored + u'/', machine.folder(), stored};
    refused += {homeAlias + u"/robin"_s, alias + stored.mid(store().size())};
    for (const QString& spelling : {u"//precious"_s, u"/../robin/precious"_s, u"/./precious"_s})
        refused += home + spelling;
    EXPECT_EQ(quarantine(refused).movedPaths, QSet<QString>());
    EXPECT_EQ(only().quarantinePath, stored);
    EXPECT_TRUE(stands(stored) && stands(precious) && stands(manifest()));
    EXPECT_EQ(quarantine({alias, homeAlias}).moved, 2) << "the links themselves may go";
    EXPECT_TRUE(stands(stored));
}

TEST_F(QuarantineServiceTest, SizesLeaveOutWhatIsHiddenInsideAndNothingElse)
{
    machine.file(u"~/folder/a", SandboxMachine::Size{1'000'000});
    machine.file(u"~/folder/deep/b", SandboxMachine::Size{200'000});
    machine.file(u"~/folder/.hidden", SandboxMachine::Size{1 << 30});
    machine.file(u"~/folder/.git/c", SandboxMachine::Size{1 << 30});
    machine.file(u"~/.settings/d", SandboxMachine::Size{50'000});
    const auto result = quarantine(
        {machine.path(u"~/folder"), machine.path(u"~/.settings"), file(u"~/.profile"_s)});
    EXPECT_EQ(result.size, 1'250'005U);
    EXPECT_EQ(service->lastResult(), u"Quarantined 3 items (1.3 MB)"_s);
}

TEST_F(QuarantineServiceTest, APathAndItsFolderInOneHandOverBothGoAndCountOnce)
{
    const QString child = machine.file(u"~/folder/child", SandboxMachine::Size{100});
    machine.file(u"~/folder/other", SandboxMachine::Size{10});
    const QString folder = machine.path(u"~/folder");
    const auto result = awaitTask(service->quarantine(shown({child, folder}), u"Test"_s));
    EXPECT_EQ(result.moved, 2);
    EXPECT_EQ(result.size, 110U);
    EXPECT_EQ(names(), QStringList({u"child"_s, u"folder"_s}));
}

TEST_F(QuarantineServiceTest, WhatIsNotTheObjectThatWasShownStays)
{
    const QString replaced = file(u"~/replaced"_s);
    const QString written = file(u"~/written"_s);
    const QString same = file(u"~/same"_s);
    const auto candidates = shown({replaced, written, same});
    ASSERT_EQ(::rename(PathText::toBytes(replaced), PathText::toBytes(replaced + u".old"_s)), 0);
    file(u"~/replaced"_s, "54321");
    file(u"~/written"_s, "123456");
    EXPECT_EQ(awaitTask(service->quarantine(candidates, u"Test"_s)).movedPaths,
              QSet<QString>({same}));
    EXPECT_TRUE(stands(replaced) && stands(written));
}

TEST_F(QuarantineServiceTest, NamesThatAreNoTextOrVeryLongComeBackByteForByte)
{
    QStringList paths;
    for (const QByteArray& name :
         {QByteArray("caf\xE9 \xFF\xFE.txt"), QByteArray("line\nbreak \\ \"quote\" \x7F"),
          QByteArray("\xF0\x9F\x8D\x8E\xF0\x9F"), QByteArray("\xED\xA0\x80"), QByteArray(255, 'n'),
          QByteArray("\xC3\xA9").repeated(127)})
        paths += file(machine.path(u"~") + u"/f\xDCFF/"_s + PathText::fromBytes(name), name);
    EXPECT_EQ(quarantine(paths).moved, paths.size());
    start();
    EXPECT_EQ(service->items().size(), paths.size());
    await(service->restoreAll());
    for (const QString& path : paths)
        EXPECT_EQ(content(path), PathText::toBytes(PathText::lastComponent(path)));
}

TEST_F(QuarantineServiceTest, AnItemThatNamesAnotherPlaceReachesNothingThere)
{
    quarantine({file(u"~/kept"_s)});
    QuarantineItem forged = only();
    for (const QString& place : {file(u"~/precious"_s), manifest(), store() + u"/../precious"_s}) {
        forged.quarantinePath = place;
        EXPECT_FALSE(awaitTask(service->permanentlyDelete(forged)));
        EXPECT_FALSE(awaitTask(service->restore(forged)));
        EXPECT_TRUE(stands(place));
    }
}

TEST_F(QuarantineServiceTest, BulkOperationsPassOverWhatFailsAndTellHowFarTheyAre)
{
    quarantine({file(u"~/gone/a"_s), file(u"~/gone/b"_s, "1234567890"), file(u"~/gone/c"_s)});
    const QByteArray folder = PathText::toBytes(machine.path(u"~/gone"));
    ASSERT_EQ(::rmdir(folder), 0);
    file(u"~/gone/a"_s, "another");
    QStringList steps;
    QObject::connect(service.get(), &QuarantineService::progressChanged, [&] {
        const auto& progress = service->progress();
        steps += progress ? u"%1 %2/%3 %4 %5"_s.arg(progress->label)
                                .arg(progress->completed)
                                .arg(progress->total)
                                .arg(progress->bytesProcessed)
                                .arg(service->totalSize())
                          : u"end"_s;
    });
    await(service->restoreAll());
    EXPECT_THAT(steps, ElementsAre(u"Restoring 0/3 0 20"_s, u"Restoring 1/3 0 20"_s,
                                   u"Restoring 2/3 10 10"_s, u"Restoring 3/3 15 5"_s, u"end"_s));
    EXPECT_EQ(posts, 0);
    quarantine({machine.path(u"~/gone/b")});
    fileSystem.cannotRemove = service->items()[0].quarantinePath;
    steps.clear();
    EXPECT_EQ(awaitTask(service->purgeAll()).size, 10U);
    EXPECT_THAT(steps, ElementsAre(u"Deleting 0/2 0 15"_s, u"Deleting 1/2 0 15"_s,
                                   u"Deleting 2/2 10 5"_s, u"end"_s));
    EXPECT_EQ(names(), QStringList(u"a"_s));
    EXPECT_EQ(recorded().size(), 1);
    EXPECT_EQ(posts, 1);
}

TEST_F(QuarantineServiceTest, RestoringNeverReplacesNorGoesThroughALinkThatCameLater)
{
    const QString path = file(u"~/folder/file"_s, "old");
    quarantine({path});
    const QString stored = only().quarantinePath;
    const auto failsAt = [&](const QString& place, const QString& reason) {
        EXPECT_FALSE(awaitTask(service->restore(only())));
        EXPECT_TRUE(service->lastResult().startsWith(u"Failed to restore: "_s));
        EXPECT_TRUE(service->lastResult().endsWith(reason)) << service->lastResult().toStdString();
        EXPECT_EQ(content(stored), "old");
        EXPECT_EQ(std::remove(PathText::toBytes(place)), 0);
    };
    file(u"~/folder/file"_s, "new");
    failsAt(path, u"File exists"_s);
    machine.link(u"~/folder/file", "nowhere");
    failsAt(path, u"File exists"_s);
    const QString folder = machine.path(u"~/folder");
    ASSERT_EQ(::rmdir(PathText::toBytes(folder)), 0);
    const QString elsewhere = machine.directory(u"/elsewhere");
    machine.link(u"~/folder", PathText::toBytes(elsewhere));
    machine.setMode(machine.path(u"~"), 0777); // anyone may have made the link
    failsAt(folder, u"Not a directory"_s);
    EXPECT_FALSE(stands(elsewhere + u"/file"_s));
    machine.setMode(machine.path(u"~"), 0755);
    EXPECT_TRUE(awaitTask(service->restore(only())));
    EXPECT_EQ(content(path), "old");
}

TEST_F(QuarantineServiceTest, AParentSwappedForALinkBetweenTheLookAndTheMoveLosesNothing)
{
    const QString path = file(u"~/folder/file"_s, "shown");
    const QString outside = file(u"/outside/file"_s, "never shown");
    fileSystem.before = [&](FileOperation, const QString&) {
        const QByteArray folder = PathText::toBytes(machine.path(u"~/folder"));
        EXPECT_EQ(::rename(folder, folder + ".old"), 0);
        machine.link(u"~/folder", PathText::toBytes(machine.path(u"/outside")));
    };
    const auto result = quarantine({path});
    EXPECT_EQ(result.moved, 0);
    EXPECT_TRUE(result.refusal.endsWith(u"It has changed in the meantime"_s));
    EXPECT_TRUE(service->lastResult().endsWith(result.refusal)) << "why it stays";
    EXPECT_EQ(content(outside), "never shown");
}

TEST_F(QuarantineServiceTest, WhatStaysInTheStoreAfterACopyIsListedAndNeverLostIfItIsNewer)
{
    const std::optional<QString> other = machine.secondDevice();
    if (!other)
        GTEST_SKIP() << "there is no second device";
    fileSystem.hasNoTrash = true;
    const QString path = *other + u"/folder"_s;
    ASSERT_TRUE(makeDirectoryWithParents(path, 0755));
    for (const QString& name : {u"/a"_s, u"/b"_s})
        put(path + name, "copied");
    quarantine({path});
    const QString newer = only().quarantinePath + u"/b"_s;
    fileSystem.onceWhole = [&] { // by a program that has had it open all the time
        std::ofstream(PathText::toBytes(newer).toStdString(), std::ios::app) << " and newer";
    };
    EXPECT_FALSE(awaitTask(service->restore(only())));
    EXPECT_TRUE(service->lastResult().startsWith(u"Restored: folder. Something of it stays"_s))
        << service->lastResult().toStdString();
    EXPECT_EQ(content(path + u"/b"_s), "copied");
    start();
    EXPECT_FALSE(awaitTask(service->restore(only())));
    EXPECT_EQ(content(newer), "copied and newer");
}

TEST_F(QuarantineServiceTest, WhatCannotBeMovedIntoTheStoreGoesToTheTrash)
{
    const std::optional<QString> other = machine.secondDevice();
    if (!other)
        GTEST_SKIP() << "there is no second device";
    const QString first = put(*other + u"/first"_s);
    EXPECT_EQ(quarantine({first}).movedPaths, QSet<QString>({first}));
    EXPECT_TRUE(service->items().isEmpty());
    EXPECT_TRUE(stands(fileSystem.trash + u"/first"_s));

    // Where the store cannot be made, the Trash is the only place.
    service = std::make_unique<QuarantineService>(host(), settings,
                                                  file(u"~/in the way"_s) + u"/store"_s);
    EXPECT_EQ(quarantine({file(u"~/third"_s)}).moved, 1);
    EXPECT_TRUE(stands(fileSystem.trash + u"/third"_s));
}
