#include "Journey.h"
#include "platform/FileReading.h"
#include "platform/PathText.h"

#include <QAccessible>
#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace brivane::testing {

class QuarantineJourney : public Journey {
protected:
    void SetUp() override
    {
        const SandboxMachine& machine = disk().machine;
        prepareQuarantine(machine);
        machine.file(u"~/Documents/Notes.txt", QByteArray("Buy milk\n"));
        Journey::SetUp();
    }

    QString path(const QString& name) { return disk().machine.path(u"~/Documents/"_s + name); }
    /// Hands documents over, each as an item of its own, and shows the quarantine.
    void handOver(const QStringList& names, const QString& category = u"Duplicates"_s)
    {
        changeDisk([&] {
            for (const QString& name : names) {
                const QStringList paths{path(name)};
                EXPECT_EQ(awaitTask(app().quarantine().quarantine(paths, category)).moved, 1);
            }
        });
        app().press(Qt::Key_5, Qt::ControlModifier);
        ASSERT_TRUE(app().shows(u"quarantineView"_s));
    }
    /// Lets `act` do something to the store, which then says `result`, or begins with it.
    void expectResult(const QString& result, const std::function<void()>& act)
    {
        changeDisk([&] {
            act();
            EXPECT_TRUE(waitUntil([&] { return toast().startsWith(result); }))
                << qPrintable(toast());
            // Putting all back says so before its last list is written.
            EXPECT_TRUE(waitUntil([&] {
                const QString list = disk().machine.path(u"~/.Brivane_Quarantine/.manifest.json");
                return !app().quarantine().isProcessing() &&
                       QJsonDocument::fromJson(content(list)).array().size() ==
                           app().quarantine().items().size();
            }));
        });
    }
    QString toast()
    {
        const QQuickItem* text = app().item(u"resultToastText"_s);
        return text ? text->property("text").toString() : QString();
    }
    QStringList listed() { return names(u"quarantineRow"_s); }
    QQuickItem& listedRow(const QString& name) { return item(u"quarantineRow"_s, name); }
    void hover(const QQuickItem& target)
    {
        const QPoint place = app().centre(target);
        QTest::mouseMove(&app().window(), place - QPoint(1, 0));
        QTest::mouseMove(&app().window(), place);
    }
    /// The row with the keyboard.
    QString current()
    {
        app().picture();
        const QQuickItem* item = app().window().activeFocusItem();
        return item ? item->property("name").toString() : QString();
    }
    /// Empty when there is none.
    static QByteArray content(const QString& path)
    {
        const Result<QByteArray> bytes = readWholeFile(path);
        return bytes ? *bytes : QByteArray();
    }
    bool isThere(const QString& name) { return !content(path(name)).isEmpty(); }
};

TEST_F(QuarantineJourney, ByMouseWhatIsWantedComesBackAndWhatIsInTheWayStays)
{
    changeDisk([&] { disk().machine.file(u"~/Documents/Plan.txt", QByteArray("old plan")); });
    handOver({u"Notes.txt"_s, u"Plan.txt"_s});
    handOver({u"Thesis.pdf"_s}, u"Downloads"_s);
    EXPECT_EQ(listed(), QStringList({u"Thesis.pdf"_s, u"Plan.txt"_s, u"Notes.txt"_s}));
    EXPECT_FALSE(isThere(u"Notes.txt"_s));

    ASSERT_TRUE(app().click(u"quarantineFilter"_s));
    app().type(u"dUPL"_s);
    EXPECT_EQ(listed(), QStringList({u"Plan.txt"_s, u"Notes.txt"_s}));
    hover(listedRow(u"Notes.txt"_s));
    ASSERT_TRUE(app().shows(u"restoreRow"_s));
    EXPECT_EQ(items(u"restoreRow"_s).size(), 1) << "other rows show it too";
    expectResult(u"Restored: Notes.txt"_s, [&] { app().click(*items(u"restoreRow"_s)[0]); });
    EXPECT_EQ(content(path(u"Notes.txt"_s)), "Buy milk\n");
    changeDisk([&] { disk().machine.file(u"~/Documents/Plan.txt", QByteArray("new plan")); });
    expectResult(u"Failed to restore: "_s, [&] {
        app().click(listedRow(u"Plan.txt"_s), Qt::RightButton);
        ASSERT_TRUE(app().click(u"menuRestore"_s));
    });
    EXPECT_EQ(listed(), QStringList(u"Plan.txt"_s));
    EXPECT_EQ(content(path(u"Plan.txt"_s)), "new plan");

    ASSERT_TRUE(app().click(u"purgeAll"_s));
    ASSERT_TRUE(app().shows(u"confirmAccept"_s));
    EXPECT_TRUE(reads(u"2 items (20 MB) will be permanently removed. This cannot be undone."_s));
    expectResult(u"Purged 2 items (20 MB)"_s, [&] { app().click(u"confirmAccept"_s); });
    EXPECT_TRUE(reads(u"Quarantine is Empty"_s));
    EXPECT_EQ(content(path(u"Plan.txt"_s)), "new plan");
    EXPECT_FALSE(isThere(u"Thesis.pdf"_s));
}

TEST_F(QuarantineJourney, ByKeyboardAloneFromTheFilterToTheLastItem)
{
    changeDisk([&] {
        for (const QString& name : {u"a.log"_s, u"b.log"_s, u"c.log"_s})
            disk().machine.file(u"~/Documents/"_s + name, QByteArray("x"));
    });
    handOver({u"a.log"_s, u"b.log"_s, u"c.log"_s, u"Thesis.pdf"_s});
    EXPECT_EQ(focusSeen(), u"quarantineRow"_s);
    EXPECT_EQ(current(), u"Thesis.pdf"_s);
    expectTabStops({u"restoreAll"_s, u"purgeAll"_s, u"quarantineFilter"_s, u"quarantineSort"_s,
                    u"quarantineRow"_s});

    app().press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(focusSeen(), u"quarantineFilter"_s);
    app().type(u".log"_s);
    EXPECT_EQ(listed(), QStringList({u"c.log"_s, u"b.log"_s, u"a.log"_s}));
    app().press(Qt::Key_Down);
    EXPECT_EQ(current(), u"c.log"_s);
    app().press(Qt::Key_Down);
    app().press(Qt::Key_Space);
    app().press(Qt::Key_End);
    app().press(Qt::Key_Space);
    EXPECT_TRUE(app().showsText(u"2 selected"_s));
    app().press(Qt::Key_Escape);
    EXPECT_EQ(listed().size(), 4);
    EXPECT_EQ(current(), u"a.log"_s) << "the keyboard lost its row";
    app().press(Qt::Key_Home);
    expectResult(u"Restored: b.log"_s, [&] { app().press(Qt::Key_Return); });
    EXPECT_TRUE(isThere(u"a.log"_s));
    EXPECT_EQ(listed(), QStringList({u"Thesis.pdf"_s, u"c.log"_s}));
    EXPECT_EQ(current(), u"Thesis.pdf"_s);
    expectResult(u"Permanently deleted: Thesis.pdf"_s, [&] { app().press(Qt::Key_Delete); });
    EXPECT_EQ(listed(), QStringList(u"c.log"_s));
    EXPECT_EQ(focusSeen(), u"quarantineRow"_s) << "the keyboard went with the row";

    for (const Qt::Key answer : {Qt::Key_Escape, Qt::Key_Return}) {
        ASSERT_TRUE(tabTo(u"restoreAll"_s));
        app().press(Qt::Key_Return);
        ASSERT_TRUE(app().shows(u"confirmAccept"_s));
        EXPECT_EQ(focusSeen(), u"confirmCancel"_s) << "the safe answer is not at hand";
        if (answer == Qt::Key_Escape) {
            app().press(answer);
            ASSERT_TRUE(waitUntil([&] { return !app().item(u"confirmAccept"_s); }));
            EXPECT_EQ(focusSeen(), u"restoreAll"_s) << "the question kept the keyboard";
            continue;
        }
        app().press(Qt::Key_Tab);
        EXPECT_EQ(focus(), u"confirmAccept"_s);
        expectResult(u"Restored 1 items"_s, [&] { app().press(answer); });
    }
    EXPECT_TRUE(isThere(u"c.log"_s));
    EXPECT_TRUE(waitUntil([&] { return focus() == u"quarantineView"_s; })) << qPrintable(focus());
}

TEST_F(QuarantineJourney, KeyboardAndScreenReaderComeThroughAStoreThatAnotherProgramHas)
{
    const std::unique_ptr<OwnedHost> host = disk().start();
    auto other =
        std::make_unique<QuarantineService>(host->host(), app().composition().get<AppSettings>(),
                                            disk().machine.path(u"~/.Brivane_Quarantine"));
    app().press(Qt::Key_5, Qt::ControlModifier);
    ASSERT_TRUE(app().shows(u"emptyPageTitle"_s));
    ASSERT_TRUE(waitUntil([&] { return focus() == u"tryAgain"_s; })) << "empty, it is a trap";
    expectTabStops({u"menuButton"_s, u"tryAgain"_s});
    const auto* heard = QAccessible::queryAccessibleInterface(app().item(u"readOnlyBanner"_s));
    EXPECT_TRUE(heard->text(QAccessible::Name).startsWith(u"Another Brivane"));

    changeDisk([&] {
        const QStringList paths{path(u"Notes.txt"_s)};
        awaitTask(other->quarantine(paths, u"Duplicates"_s));
    });
    ASSERT_TRUE(tabTo(u"tryAgain"_s));
    app().press(Qt::Key_Return);
    ASSERT_TRUE(app().shows(u"quarantineRow"_s));
    EXPECT_EQ(focusSeen(), u"tryAgain"_s);
    other.reset();
    app().press(Qt::Key_Return);
    EXPECT_TRUE(waitUntil([&] { return current() == u"Notes.txt"_s; })) << "lost with the banner";
    app().press(Qt::Key_Space);
    ASSERT_TRUE(tabTo(u"deleteSelected"_s));
    app().press(Qt::Key_Backtab);
    expectResult(u"Restored: Notes.txt"_s, [&] { app().press(Qt::Key_Return); });
    EXPECT_TRUE(waitUntil([&] { return focus() == u"quarantineView"_s; })) << qPrintable(focus());
}

} // namespace brivane::testing
