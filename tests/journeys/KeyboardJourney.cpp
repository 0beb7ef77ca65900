#include "Journey.h"

using namespace Qt::StringLiterals;

namespace brivane::testing {

class KeyboardJourney : public Journey {
protected:
    void press(std::initializer_list<Qt::Key> keys)
    {
        for (const Qt::Key key : keys)
            app().press(key);
    }
    /// The row with the keyboard.
    QString row()
    {
        app().picture();
        const QQuickItem* item = app().window().activeFocusItem();
        return item ? item->property("name").toString() : QString();
    }
};

TEST_F(KeyboardJourney, FromTheStartThroughAScanAndBackToTheDisks)
{
    app().press(Qt::Key_1, Qt::ControlModifier);
    ASSERT_TRUE(app().shows(u"volumePickerView"_s));
    EXPECT_EQ(focusSeen(), u"volumeCard"_s);
    expectTabStops({u"chooseFolder"_s, u"menuButton"_s, u"mode-Space Scanner"_s, u"volumeCard"_s});

    holdNextScan();
    press({Qt::Key_Return});
    ASSERT_TRUE(isHeld());
    EXPECT_EQ(focus(), u"scanPanes"_s) << "something that is not to be seen";
    expectTabStops({u"menuButton"_s, u"mode-Space Scanner"_s, u"pauseButton"_s, u"stopButton"_s});
    ASSERT_TRUE(tabTo(u"pauseButton"_s));
    ASSERT_TRUE(walksOn(lastButOneEntry()));
    EXPECT_EQ(focusSeen(), u"pauseButton"_s) << "the list took the keyboard away";
    expectTabStops({u"stopButton"_s, u"menuButton"_s, u"mode-Space Scanner"_s, u"folderTreeRow"_s,
                    u"pauseButton"_s});
    press({Qt::Key_Space});
    EXPECT_TRUE(reads(u"Paused"_s));
    EXPECT_EQ(focusSeen(), u"pauseButton"_s);
    press({Qt::Key_Space});
    EXPECT_TRUE(reads(u"Scanning..."_s));
    app().clock().release();

    ASSERT_TRUE(app().showsText(u"Completed"_s));
    EXPECT_EQ(focusSeen(), u"folderTreeRow"_s);
    expectTabStops({u"rescanButton"_s, u"menuButton"_s, u"mode-Space Scanner"_s, u"sidebarRescan"_s,
                    u"showVolumes"_s, u"folderTreeRow"_s});
    press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Down});
    EXPECT_EQ(row(), u"Applications"_s);
    press({Qt::Key_Up, Qt::Key_Up, Qt::Key_Return, Qt::Key_Right});
    EXPECT_EQ(rows(), QStringList({u"Movies"_s, u"Documents"_s}));
    EXPECT_EQ(row(), u"Movies"_s);
    press({Qt::Key_Down, Qt::Key_Return});
    EXPECT_EQ(row(), u"Thesis.pdf"_s);
    press({Qt::Key_Backspace, Qt::Key_Left, Qt::Key_Left, Qt::Key_Left});
    EXPECT_EQ(row(), u"Users"_s);

    ASSERT_TRUE(tabTo(u"showVolumes"_s));
    press({Qt::Key_Space});
    EXPECT_TRUE(reads(u"Select a disk to scan"_s));
    EXPECT_EQ(focusSeen(), u"volumeCard"_s);
}

TEST_F(KeyboardJourney, RescanIsStoppedWithoutTheMouse)
{
    app().press(Qt::Key_1, Qt::ControlModifier);
    ASSERT_TRUE(app().shows(u"volumePickerView"_s));
    press({Qt::Key_Enter});
    ASSERT_TRUE(app().showsText(u"Completed"_s));
    ASSERT_TRUE(tabTo(u"rescanButton"_s));
    holdNextScan();
    press({Qt::Key_Space});
    ASSERT_TRUE(isHeld());
    ASSERT_TRUE(walksOn(lastButOneEntry()));
    EXPECT_EQ(focusSeen(), u"folderTreeRow"_s);
    ASSERT_TRUE(tabTo(u"stopButton"_s));
    press({Qt::Key_Space});
    EXPECT_TRUE(reads(u"Select a disk to scan"_s));
    EXPECT_EQ(focusSeen(), u"volumeCard"_s);
}

} // namespace brivane::testing
