#include "Journey.h"
#include "cleaner/CleanerService.h"
#include "platform/FileReading.h"
#include "platform/PathText.h"
#include "removal/CleanupHistory.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace brivane::testing {

class CleanerJourney : public Journey {
protected:
    void SetUp() override
    {
        prepareQuarantine(disk().machine);
        for (const auto& [file, bytes] : {std::pair{u"Caches/Reelbarn/frames"_s, 50'000'000},
                                          {u"Caches/Driftlook/pages"_s, 3'000'000},
                                          {u"Caches/Driftlook.db"_s, 1'000'000},
                                          {u"Logs/Reelbarn/render.log"_s, 60'000},
                                          {u"Preferences/com.gone.tool.plist"_s, 20'000}})
            disk().machine.file(u"~/Library/"_s + file, SandboxMachine::Size{bytes});
        Journey::SetUp();
    }

    QString path(const QString& name) { return disk().machine.path(u"~/Library/"_s + name); }
    bool stands(const QString& name) { return FileIdentity::of(path(name)).operator bool(); }
    CleanerService& service() { return app().composition().get<CleanerService>(); }
    QStringList items() { return names(u"cleanerItemRow"_s); }

    void scanForJunk()
    {
        app().press(Qt::Key_2, Qt::ControlModifier);
        ASSERT_TRUE(app().shows(u"cleanerWelcome"_s));
        ASSERT_TRUE(app().click(u"emptyPageButton"_s));
        ASSERT_TRUE(waitUntil([&] { return service().scanComplete(); }));
        ASSERT_TRUE(waitUntil([&] {
            return names(u"cleanerCategoryRow"_s) ==
                   QStringList(
                       {u"Application Caches"_s, u"Application Logs"_s, u"App Leftovers"_s});
        })) << names(u"cleanerCategoryRow"_s).join(u", ").toStdString();
    }
    void open(const QString& category) { app().click(item(u"cleanerCategoryRow"_s, category)); }
    void tick(const QString& name) { app().click(item(u"cleanerItemRow"_s, name)); }
    /// Presses "Remove" and gives `answer`, which asks for `title`.
    void remove(const QString& title, const QString& answer)
    {
        ASSERT_TRUE(app().click(u"removeSelected"_s));
        ASSERT_TRUE(app().shows(answer));
        EXPECT_TRUE(reads(title));
        ASSERT_TRUE(app().click(answer));
    }
    /// Waits for the result, and for what is written of it.
    void expectResult(const QString& cleaned, const QString& failed)
    {
        ASSERT_TRUE(app().shows(u"cleanedStat"_s));
        EXPECT_EQ(app().item(u"cleanedStat"_s)->property("value"), cleaned);
        const QQuickItem* failures = app().item(u"failedStat"_s);
        EXPECT_EQ(failures ? failures->property("value").toString() : QString(), failed);
        EXPECT_TRUE(app().host().defaults.waitUntilSaved());
        const QList<CleanupRecord> history = app().composition().get<CleanupHistory>().loadAll();
        ASSERT_EQ(history.size(), 1);
        EXPECT_EQ(QString::number(history[0].filesRemoved), cleaned);
        EXPECT_EQ(history[0].categories.size(), failed.toInt());
    }
    void finish()
    {
        ASSERT_TRUE(app().click(u"confirmCancel"_s));
        EXPECT_TRUE(waitUntil([&] { return !app().item(u"cleanedStat"_s); }));
    }
    QStringList inManifest()
    {
        const auto bytes =
            readWholeFile(disk().machine.path(u"~/.Brivane_Quarantine/.manifest.json"));
        QStringList paths;
        for (const auto& entry : QJsonDocument::fromJson(bytes ? *bytes : "[]").array())
            paths += entry[u"originalPath"].toString();
        paths.sort();
        return paths;
    }
};

TEST_F(CleanerJourney, WhatWasChosenGoesIntoTheQuarantineAndComesBack)
{
    const DiskState before = diskState(disk().machine.path(u"~/Library/Caches"));
    scanForJunk();
    open(u"Application Caches"_s);
    EXPECT_EQ(items(), QStringList({u"Reelbarn"_s, u"Driftlook"_s, u"Driftlook.db"_s}));
    ASSERT_TRUE(app().click(u"cleanerFilter"_s));
    app().type(u"drift"_s);
    EXPECT_EQ(items(), QStringList({u"Driftlook"_s, u"Driftlook.db"_s}));
    tick(u"Driftlook"_s);
    ASSERT_TRUE(app().click(u"cleanerFilter"_s));
    app().type(u"x"_s);
    EXPECT_TRUE(app().showsText(u"No items match your filter"_s));
    changeDisk([&] {
        remove(u"Clean 3 Items"_s, u"moveToQuarantine"_s);
        expectResult(u"3"_s, QString());
    });
    EXPECT_TRUE(app().shows(u"quarantineNote"_s));
    finish();
    EXPECT_TRUE(stands(u"Caches/Driftlook/pages"_s)) << "it was not chosen";
    EXPECT_FALSE(stands(u"Caches/Reelbarn"_s) || stands(u"Logs/Reelbarn"_s));
    QStringList gone;
    for (const QString& name : {u"Caches/Driftlook.db"_s, u"Caches/Reelbarn"_s, u"Logs/Reelbarn"_s})
        gone += path(name);
    EXPECT_EQ(inManifest(), gone);

    app().press(Qt::Key_5, Qt::ControlModifier);
    ASSERT_TRUE(app().click(u"restoreAll"_s));
    changeDisk([&] {
        ASSERT_TRUE(app().click(u"confirmAccept"_s));
        EXPECT_TRUE(waitUntil(
            [&] { return inManifest().isEmpty() && !app().quarantine().isProcessing(); }));
    });
    EXPECT_EQ(differences(before, diskState(disk().machine.path(u"~/Library/Caches"))),
              QStringList());
}

TEST_F(CleanerJourney, ForGoodWhatMayNotGoOrIsAnotherStaysAndIsNamed)
{
    changeDisk([&] {
        disk().machine.file(u"~/Precious/diary", QByteArray("Dear diary"));
        scanForJunk();
        open(u"App Leftovers"_s);
        tick(u"com.gone.tool.plist"_s);
        std::filesystem::rename(PathText::toBytes(path(u"Caches/Driftlook"_s)).toStdString(),
                                PathText::toBytes(path(u"Elsewhere"_s)).toStdString());
        disk().machine.link(u"~/Library/Caches/Driftlook",
                            PathText::toBytes(disk().machine.path(u"~/Precious")));
        remove(u"Clean 5 Items"_s, u"deletePermanently"_s);
        expectResult(u"3"_s, u"2"_s);
    });
    EXPECT_FALSE(app().item(u"quarantineNote"_s)) << "nothing went there";
    ASSERT_TRUE(app().click(u"showFailures"_s));
    EXPECT_EQ(Journey::items(u"failureRow"_s).size(), 2);
    EXPECT_FALSE(Journey::items(u"failureRow"_s)[1]->property("reason").toString().isEmpty());
    app().press(Qt::Key_Down);
    app().press(Qt::Key_Return);
    finish();
    EXPECT_EQ(app().revealed(), QStringList(path(u"Preferences/com.gone.tool.plist"_s)));
    EXPECT_FALSE(stands(u"Caches/Reelbarn"_s) || stands(u"Caches/Driftlook.db"_s));
    EXPECT_TRUE(stands(u"Caches/Driftlook"_s) && stands(u"Preferences/com.gone.tool.plist"_s));
    const auto diary = readWholeFile(disk().machine.path(u"~/Precious/diary"));
    EXPECT_EQ(diary ? *diary : QByteArray(), "Dear diary");
    EXPECT_EQ(inManifest(), QStringList());
    open(u"Application Caches"_s);
    EXPECT_EQ(items(), QStringList(u"Driftlook"_s));
}

TEST_F(CleanerJourney, ARemovalIsStoppedAndWhatItDidNotReachStaysListed)
{
    // So many that there is time to press a button.
    changeDisk([&] {
        for (int i = 0; i < 20'000; ++i)
            disk().machine.file(u"~/Library/Caches/Reelbarn/%1"_s.arg(i), QByteArray());
    });
    scanForJunk();
    changeDisk([&] {
        remove(u"Clean 4 Items"_s, u"deletePermanently"_s);
        ASSERT_TRUE(waitUntil(
            [&] { return service().progress() && service().progress()->name == u"Reelbarn"_s; }));
        ASSERT_TRUE(app().click(u"stopProgress"_s));
        expectResult(u"1"_s, QString());
    });
    finish();
    EXPECT_FALSE(stands(u"Caches/Reelbarn"_s));
    EXPECT_TRUE(stands(u"Caches/Driftlook/pages"_s) && stands(u"Logs/Reelbarn/render.log"_s));
    open(u"Application Caches"_s);
    EXPECT_EQ(items(), QStringList({u"Driftlook"_s, u"Driftlook.db"_s}));
    EXPECT_EQ(service().selectedCount(), 3) << "the next press goes on";
}

TEST_F(CleanerJourney, TheKeyboardStaysOnItsItemAndIsNeverLost)
{
    changeDisk([&] {
        for (int i = 0; i < 120; ++i)
            disk().machine.file(u"~/Library/Caches/%1.e%1"_s.arg(i), SandboxMachine::Size{2000});
    });
    scanForJunk();
    app().press(Qt::Key_Home);
    app().press(Qt::Key_Right);
    const qint64 selected = service().selectedCount();
    app().press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(service().selectedCount(), selected) << "all were";
    ASSERT_TRUE(tabTo(u"chip0"_s));
    app().press(Qt::Key_End);
    EXPECT_EQ(focus(), u"chip121"_s);
    app().press(Qt::Key_Home);
    ASSERT_TRUE(tabTo(u"cleanerItemRow"_s));
    for (int i = 0; i < 60; ++i)
        app().press(Qt::Key_Down);
    const auto current = [&] {
        app().picture();
        return app().window().activeFocusItem()->property("name").toString();
    };
    const QString name = current();
    QSet<QUuid> gone;
    bool isGone = false;
    for (const CleanerItem& item : service().categories().front()->items()) {
        isGone = !isGone;
        if (isGone && item.name != name)
            gone += item.id;
    }
    service().categories().front()->removeItems(gone);
    AppWindow::step();
    EXPECT_EQ(current(), name) << "of so many rows, all are made anew";
    changeDisk([&] {
        service().exclude(path(u"Caches"_s));
        EXPECT_TRUE(app().host().defaults.waitUntilSaved());
    });
    EXPECT_TRUE(waitUntil([&] { return focus() == u"cleanerCategoryRow"_s; }));
}

} // namespace brivane::testing
