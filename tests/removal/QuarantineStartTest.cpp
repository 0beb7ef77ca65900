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
    const QString stranger = file(store() + u"/stranger"_s);
    settings.setQuarantinePurgeDays(30);
    const QByteArray before = content(manifest());
    start();
    EXPECT_EQ(names(), QStringList(u"kept"_s));
    EXPECT_EQ(service->totalSize(), 3U);
    EXPECT_EQ(only().purgeDays, 30);
    EXPECT_EQ(content(manifest()), before) << "loading writes nothing";
    quarantine({});
    ASSERT_EQ(recorded().size(), 1);
    EXPECT_EQ(recorded()[0][u"purgeDays"].toInteger(), 30);
    EXPECT_TRUE(waitUntil([&] { return !stands(leftover); }));
    EXPECT_TRUE(stands(stranger));

    for (const auto& [days, expected] : {std::pair(0, 30), {29, 1}, {30, 0}, {1000, 0}, {-2, 32}})
        EXPECT_EQ(only().daysRemaining(clock->now().addDays(days).addSecs(1)),
                  days < 0 ? expected - 1 : expected)
            << days;
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
        EXPECT_TRUE(service->items().isEmpty()) << row.toStdString();
        EXPECT_EQ(content(manifest()), row);
        quarantine({});
        EXPECT_EQ(recorded(), QJsonArray());
        EXPECT_EQ(content(manifest() + u".damaged-%1"_s.arg(++aside)), row);
    }
    ASSERT_EQ(::unlink(PathText::toBytes(manifest())), 0);
    machine.directory(manifest());
    start();
    quarantine({});
    EXPECT_EQ(recorded(), QJsonArray());
    EXPECT_TRUE(stands(manifest() + u".damaged-%1"_s.arg(++aside)));

    // What can be understood but leads out of the store is dropped, and touched by nobody.
    const QString precious = file(u"~/precious"_s);
    settings.setQuarantinePurgeDays(-1);
    file(manifest(), with(u"quarantinePath"_s, precious));
    start();
    EXPECT_EQ(only().fileName, u"stored"_s);
    ASSERT_TRUE(waitUntil([&] { return posts == 1; }));
    EXPECT_TRUE(stands(precious));
}

TEST_F(QuarantineStartTest, AListThatCannotBeWrittenHoldsNothingUpAndIsWrittenLater)
{
    fileSystem.cannotWrite = true;
    EXPECT_EQ(quarantine({file(u"~/one"_s)}).moved, 1);
    EXPECT_EQ(names(), QStringList(u"one"_s));
    EXPECT_FALSE(stands(manifest()));
    fileSystem.cannotWrite = false;
    quarantine({});
    EXPECT_EQ(recorded().size(), 1);
}
