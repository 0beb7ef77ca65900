#include "Journey.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace brivane::testing {

class StagingJourney : public Journey {
protected:
    void SetUp() override
    {
        disk().machine.file(u"/usr/lib/dyld/cache", SandboxMachine::Size{2'000'000});
        Journey::SetUp();
        app().press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        ASSERT_TRUE(app().showsText(u"Completed"_s));
    }

    /// Rests with the pointer on the row, and clicks what shows up there.
    void hoverAndClick(const QString& name, const QString& button)
    {
        const QPoint place = app().centre(row(name));
        QTest::mouseMove(&app().window(), place - QPoint(1, 0));
        QTest::mouseMove(&app().window(), place);
        ASSERT_TRUE(app().shows(button));
        EXPECT_EQ(items(button).size(), 1) << "other rows show it too";
        EXPECT_EQ(holder(*items(button)[0]), name);
        app().click(*items(button)[0]);
    }
    /// The rows that are marked as staged.
    QStringList marked()
    {
        QStringList names;
        for (const QQuickItem* mark : items(u"stagedMark"_s))
            names += holder(*mark);
        return names;
    }

private:
    /// The name of the row that `item` lies in.
    static QString holder(const QQuickItem& item)
    {
        const QQuickItem* row = &item;
        while (row && row->objectName() != "folderTreeRow"_L1)
            row = row->parentItem();
        return row ? row->property("name").toString() : QString();
    }
};

TEST_F(StagingJourney, MarksWhatMayGoAndRefusesWhatMayNot)
{
    hoverAndClick(u"Library"_s, u"stageRow"_s);
    EXPECT_EQ(marked(), QStringList(u"Library"_s));
    hoverAndClick(u"usr"_s, u"stageRow"_s);
    EXPECT_TRUE(log().last().startsWith(u"delete: Blocked deletion of protected path: "));
    EXPECT_EQ(marked(), QStringList(u"Library"_s));
    EXPECT_EQ(rows().size(), 4) << "a click on a row's button opened the row";
    app().click(row(u"Library"_s));
    ASSERT_TRUE(app().click(u"goUp"_s));
    EXPECT_EQ(marked(), QStringList(u"Library"_s));

    ASSERT_TRUE(app().click(u"rescanButton"_s));
    ASSERT_TRUE(app().showsText(u"Completed"_s));
    EXPECT_TRUE(waitUntil([&] { return marked() == QStringList(u"Library"_s); }));
    EXPECT_EQ(scan().actions()->stagedCount(), 1);
}

TEST_F(StagingJourney, MenuOfTheMouseCopiesStagesAndUnstages)
{
    app().click(row(u"Library"_s), Qt::RightButton);
    ASSERT_TRUE(app().click(u"menuReveal"_s));
    EXPECT_EQ(app().revealed(), QStringList(disk().machine.path(u"/Library")));
    app().click(row(u"Library"_s), Qt::RightButton);
    ASSERT_TRUE(app().showsText(u"Reveal in Files"_s));
    EXPECT_TRUE(reads(u"Stage for Deletion"_s));
    ASSERT_TRUE(app().click(u"menuCopyPath"_s));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), disk().machine.path(u"/Library"));

    app().click(row(u"Library"_s), Qt::RightButton);
    ASSERT_TRUE(app().click(u"menuStage"_s));
    EXPECT_EQ(marked(), QStringList(u"Library"_s));
    app().click(row(u"Library"_s), Qt::RightButton);
    ASSERT_TRUE(app().showsText(u"Unstage"_s));
    ASSERT_TRUE(app().click(u"menuStage"_s));
    EXPECT_EQ(marked(), QStringList());
}

TEST_F(StagingJourney, MenuOfTheKeyboardGivesTheKeyboardBack)
{
    app().press(Qt::Key_Down);
    for (const auto& [key, modifiers] :
         {std::pair{Qt::Key_Menu, Qt::NoModifier}, std::pair{Qt::Key_F10, Qt::ShiftModifier}}) {
        app().press(key, modifiers);
        ASSERT_TRUE(app().shows(u"menuCopyPath"_s));
        app().press(Qt::Key_Escape);
        ASSERT_TRUE(waitUntil([&] { return !app().item(u"menuCopyPath"_s); }));
        EXPECT_EQ(focusSeen(), u"folderTreeRow"_s);
    }
    app().press(Qt::Key_Menu);
    ASSERT_TRUE(app().shows(u"menuCopyPath"_s));
    while (focus() != u"menuCopyPath"_s && app().item(u"menuCopyPath"_s))
        app().press(Qt::Key_Down);
    app().press(Qt::Key_Return);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), disk().machine.path(u"/Library"));
}

TEST_F(StagingJourney, WhatGoesAwayGivesTheKeyboardBack)
{
    app().press(Qt::Key_Down);
    app().press(Qt::Key_Delete);
    for (const auto& [key, giving] : {std::pair{Qt::Key_Escape, u"stagedButton"_s},
                                      std::pair{Qt::Key_Return, u"rescanButton"_s}}) {
        ASSERT_TRUE(tabTo(u"stagedButton"_s));
        app().press(Qt::Key_Return);
        ASSERT_TRUE(app().shows(u"popupAction"_s));
        app().picture(); // rows are made with the picture
        app().press(Qt::Key_Tab);
        app().press(key);
        ASSERT_TRUE(waitUntil([&] { return !app().item(u"popupAction"_s); }));
        EXPECT_EQ(focusSeen(), giving);
    }
    EXPECT_EQ(marked(), QStringList());
    for (const auto& [button, heir] : {std::pair{u"goUp"_s, u"folderTreeRow"_s},
                                       std::pair{u"sunburstUp"_s, u"sunburstChart"_s}}) {
        ASSERT_TRUE(tabTo(u"folderTreeRow"_s));
        app().press(Qt::Key_Return);
        ASSERT_TRUE(tabTo(button));
        app().press(Qt::Key_Space);
        EXPECT_EQ(focusSeen(), heir);
    }
}

} // namespace brivane::testing
