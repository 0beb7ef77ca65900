#include "QuarantineGround.h"

#include <gtest/gtest.h>
#include <unistd.h>

using namespace brivane;
using namespace brivane::testing;
using namespace Qt::StringLiterals;

using QuarantineStartTest = QuarantineTest;

TEST_F(QuarantineStartTest, AStartListsWhatIsThereWithTheDaysOfTheSettings)
{
    quarantine({file(u"~/gone"_s), file(u"~/kept"_s, "123")});
    ASSERT_EQ(::unlink(PathText::toBytes(service->items()[0].quarantinePath)), 0);
    const QString leftover = file(store() + u"/.brivane-temporary-1"_s);
    settings.setQuarantinePurgeDays(30);
    const QByteArray before = content(manifest());
    start();
    EXPECT_EQ(names(), QStringList(u"kept"_s));
    EXPECT_EQ(service->totalSize(), 3U);
    EXPECT_EQ(only().purgeDays, 30);
    EXPECT_EQ(content(manifest()), before) << "loading writes nothing";
    EXPECT_TRUE(waitUntil([&] { return !stands(leftover); }));
}

TEST_F(QuarantineStartTest, TheAutomaticPurgeTakesOnlyWhatIsOverTheLimit)
{
    using namespace std::chrono;
    quarantine({file(u"~/stubborn"_s), file(u"~/old"_s)});
    clock->advance(milliseconds(1));
    quarantine({file(u"~/exactly"_s)});
    const QString old = service->items()[1].quarantinePath;
    fileSystem.cannotRemove = service->items()[0].quarantinePath;
    clock->advance(days(7));
    EXPECT_EQ(names().size(), 3) << "only a start purges";

    settings.setQuarantinePurgeDays(8);
    start();
    EXPECT_EQ(names().size(), 3);
    settings.setQuarantinePurgeDays(7);
    start();
    EXPECT_FALSE(service->isProcessing());
    ASSERT_TRUE(waitUntil([&] { return posts == 1; }));
    EXPECT_EQ(names(), QStringList({u"stubborn"_s, u"exactly"_s}));
    EXPECT_FALSE(stands(old));
    EXPECT_TRUE(waitUntil([&] { return recorded().size() == 2; }));
    EXPECT_TRUE(service->lastResult().isNull());
}

TEST_F(QuarantineStartTest, AListThatCannotBeUnderstoodIsPutAsideBeforeTheNextIsWritten)
{
    quarantine({file(u"~/stored"_s)});
    QJsonObject record = recorded()[0].toObject();
    const auto with = [&](const QString& key, const QJsonValue& value) {
        QJsonObject changed = record;
        if (value.isUndefined())
            changed.remove(key);
        else
            changed[key] = value;
        return QJsonDocument({record, changed}).toJson();
    };
    QList<QByteArray> rows = {"",
                              "{}",
                              "[1]",
                              "[",
                              "\xFF",
                              with(u"id"_s, u"42"_s),
                              with(u"size"_s, -1),
                              with(u"size"_s, 1.5),
                              with(u"quarantineDate"_s, u"today"_s),
                              with(u"purgeDays"_s, 0.5)};
    for (const QString& key : record.keys())
        rows += with(key, QJsonValue::Undefined);
    int aside = 0;
    for (const QByteArray& row : rows) {
        file(manifest(), row);
        start();
        EXPECT_EQ(only().categoryName, u"Recovered"_s) << row.toStdString();
        quarantine({});
        EXPECT_EQ(recorded().size(), 1);
        EXPECT_EQ(content(manifest() + u".damaged-%1"_s.arg(++aside)), row);
    }
    ASSERT_EQ(::unlink(PathText::toBytes(manifest())), 0);
    machine.directory(manifest());
    start();
    quarantine({});
    EXPECT_EQ(recorded().size(), 1);
    EXPECT_TRUE(stands(manifest() + u".damaged-%1"_s.arg(++aside)));

    // What can be understood but leads out of the store is dropped, and touched by nobody.
    const QString precious = file(u"~/precious"_s);
    file(manifest(), with(u"quarantinePath"_s, precious));
    start();
    EXPECT_EQ(only().fileName, u"stored"_s);
    settings.setQuarantinePurgeDays(-1);
    start();
    ASSERT_TRUE(waitUntil([&] { return posts == 1; }));
    EXPECT_TRUE(stands(precious));
}

TEST_F(QuarantineStartTest, WhatNoListNamesIsListedAndGoesToAFolderForIt)
{
    const QString home = machine.locations().home();
    for (const char16_t* name : {u"/12345678_note.txt", u"/.hidden", u"/note.txt"})
        file(store() + QStringView(name).toString(), "by another hand");
    file(home + u"/Recovered/note.txt"_s, "stands there already");
    start();
    ASSERT_EQ(service->items().size(), 3);
    EXPECT_EQ(service->totalSize(), 45U);
    for (const QuarantineItem& item : service->items()) {
        EXPECT_EQ(item.categoryName, u"Recovered"_s);
        EXPECT_EQ(item.quarantineDate, clock->now()) << "its days begin now";
    }
    EXPECT_TRUE(waitUntil([&] { return recorded().size() == 3; }));
    await(service->restoreAll());
    EXPECT_EQ(service->lastResult(), u"Restored 3 items"_s);
    for (const QString& name : {u"/note.txt 2"_s, u"/note.txt 3"_s, u"/.hidden"_s})
        EXPECT_EQ(content(home + u"/Recovered"_s + name), "by another hand");
}

TEST_F(QuarantineStartTest, AnotherSpellingOfTheHomeListsTheSameThings)
{
    quarantine({file(u"~/a"_s), file(u"~/b"_s)});
    const QString home = machine.locations().home();
    const QString alias =
        machine.link(u"/alias", PathText::toBytes(home)) + store().mid(home.size());
    for (const QString& spelling : {alias, store(), alias}) {
        service.reset();
        service = std::make_unique<QuarantineService>(host(), settings, spelling);
        EXPECT_EQ(names(), QStringList({u"a"_s, u"b"_s})) << spelling.toStdString();
        quarantine({}); // and the list is written by it
    }
    await(service->restoreAll());
    EXPECT_TRUE(stands(machine.path(u"~/a")) && stands(machine.path(u"~/b")));
}

TEST_F(QuarantineStartTest, ASecondProgramOnTheSameStoreChangesNothingUntilTheFirstIsGone)
{
    const QString kept = file(u"~/kept"_s);
    quarantine({kept});
    const QString copyUnderWay = file(store() + u"/.brivane-temporary-1"_s);
    settings.setQuarantinePurgeDays(-1); // all is due
    QuarantineService second(host(), settings, store());
    EXPECT_EQ(second.readOnlyReason(), u"Another Brivane is using the quarantine"_s);
    ASSERT_EQ(second.items().size(), 1);
    const QuarantineItem item = second.items()[0];
    const QString other = file(u"~/other"_s);
    const auto result = awaitTask(second.quarantine({other}, u"Test"_s));
    EXPECT_EQ(result.moved, 0);
    EXPECT_EQ(result.refusal, second.readOnlyReason());
    EXPECT_FALSE(awaitTask(second.restore(item)));
    EXPECT_FALSE(awaitTask(second.permanentlyDelete(item)));
    EXPECT_EQ(awaitTask(second.purgeAll()).purged, 0);
    EXPECT_TRUE(stands(item.quarantinePath) && stands(other) && stands(copyUnderWay));

    quarantine({other});
    settings.setQuarantinePurgeDays(7);
    await(second.refresh());
    EXPECT_EQ(second.items().size(), 2) << "what the first has taken in meanwhile";
    service.reset();
    EXPECT_TRUE(awaitTask(second.restore(item)));
    EXPECT_TRUE(second.readOnlyReason().isNull() && stands(kept));
    EXPECT_TRUE(waitUntil([&] { return !stands(copyUnderWay); }));
}

TEST_F(QuarantineStartTest, WithoutItsLockFileOrItsFolderAStoreStillHasOneProgram)
{
    quarantine({file(u"~/kept"_s)});
    ASSERT_EQ(::unlink(PathText::toBytes(store() + u"/.lock"_s)), 0);
    QuarantineService second(host(), settings, store());
    EXPECT_EQ(second.readOnlyReason(), u"Another Brivane is using the quarantine"_s);
    const QString away = store() + u" away"_s;
    ASSERT_EQ(::rename(PathText::toBytes(store()), PathText::toBytes(away)), 0);
    await(second.refresh());
    EXPECT_TRUE(second.readOnlyReason().isNull()) << "another store, and its own";
    const QString mine = file(u"~/mine"_s);
    const QString other = file(u"~/other"_s);
    EXPECT_EQ(awaitTask(second.quarantine({other}, u"Test"_s)).moved, 1);
    EXPECT_EQ(quarantine({mine}).refusal,
              u"The quarantine's list cannot be written: It has changed in the meantime"_s);
    EXPECT_EQ(awaitTask(service->purgeAll()).purged, 0);
    EXPECT_TRUE(stands(mine) && recorded()[0][u"originalPath"].toString() == other);
}

TEST_F(QuarantineStartTest, AListWithOneIdTwiceOrAPlaceInTheStoreHidesNothing)
{
    quarantine({file(u"~/a"_s), file(u"~/b"_s)});
    QByteArray list = content(manifest());
    const auto id = [&](int i) { return recorded()[i][u"id"].toString().toLatin1(); };
    list.replace(id(1), id(0));
    list.replace(PathText::toBytes(service->items()[1].originalPath),
                 PathText::toBytes(store() + u"/.restoring.json"_s));
    file(manifest(), list);
    start();
    EXPECT_TRUE(awaitTask(service->restore(service->items()[0])));
    EXPECT_FALSE(awaitTask(service->restore(only())));
    EXPECT_TRUE(stands(only().quarantinePath));
}

TEST_F(QuarantineStartTest, OnAFullDiskTheListTakesTheReservesPlaceOrNothingIsMoved)
{
    const QString reserve = store() + u"/.reserve"_s;
    ASSERT_TRUE(waitUntil(
        [&] { return stands(reserve) && FileIdentity::of(reserve)->size >= (256U << 10); }));
    fileSystem.isFull = true;
    const QStringList paths = {file(u"~/one"_s), file(u"~/two"_s)};
    EXPECT_EQ(quarantine({paths[0]}).moved, 1);
    EXPECT_FALSE(stands(reserve));
    EXPECT_EQ(recorded().size(), 1);
    const auto refused = quarantine({paths[1]});
    EXPECT_EQ(refused.moved, 0);
    EXPECT_TRUE(service->lastResult().endsWith(refused.refusal));
    EXPECT_TRUE(stands(paths[1]));
    EXPECT_EQ(names(), QStringList(u"one"_s));

    fileSystem.isFull = false;
    EXPECT_EQ(quarantine({paths[1]}).moved, 1);
    EXPECT_TRUE(stands(reserve)) << "made again";
}
