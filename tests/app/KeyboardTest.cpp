#include "tests/support/AppWindow.h"

#include <QAccessible>

using namespace Qt::StringLiterals;
using namespace brivane;
using namespace brivane::testing;

TEST(Keyboard, RescanWithoutAVolumeDoesNothing)
{
    AppMachine machine;
    machine.hasDisk = false;
    AppWindow app(machine);
    app.press(Qt::Key_R, Qt::ControlModifier);
    AppWindow::step();
    EXPECT_EQ(app.scan().scanState(), ScanViewModel::Idle);
}

TEST(Keyboard, SidebarIsOneTabStopWithArrowsInside)
{
    AppWindow app{AppMachine()};
    ShellViewModel& shell = app.shell();
    app.window().resize(1000, 650);
    app.item(u"menuButton"_s)->forceActiveFocus(Qt::TabFocusReason);
    app.press(Qt::Key_Tab);
    EXPECT_EQ(app.window().activeFocusItem(), app.item(u"mode-Dashboard"_s));
    app.press(Qt::Key_Up);
    app.press(Qt::Key_Down);
    app.press(Qt::Key_Down);
    app.press(Qt::Key_Return);
    EXPECT_EQ(shell.appMode(), AppMode::scanner);
    QQuickItem* row = app.item(u"mode-Space Scanner"_s);
    EXPECT_EQ(app.window().activeFocusItem(), row);
    QAccessible::setActive(true);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(row)->state().selected);

    // As far down as it goes: the last volume, which a low window hides at first.
    for (int count = 0; count < 30; ++count)
        app.press(Qt::Key_Down);
    QQuickItem* last = app.window().activeFocusItem();
    ASSERT_EQ(last, app.item(u"volume-Macintosh HD"_s));
    EXPECT_LE(last->mapToScene({0, last->height()}).y(), app.window().height());
    app.press(Qt::Key_Backtab);
    EXPECT_EQ(app.window().activeFocusItem(), app.item(u"mode-Space Scanner"_s));
}
