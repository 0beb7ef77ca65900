#include "app/KeyboardShortcutHandler.h"
#include "tests/support/AppWindow.h"

#include <QAccessible>
#include <QKeyEvent>

using namespace Qt::StringLiterals;
using namespace brivane;
using namespace brivane::testing;

struct ModuleKey {
    Qt::Key key;
    AppMode::Mode mode;
};

TEST(Keyboard, EachKeyShowsItsModuleInAStepOfItsOwn)
{
    AppWindow app{AppMachine()};
    ShellViewModel& shell = app.shell();
    EXPECT_EQ(shell.appMode(), AppMode::dashboard);
    for (const auto& [key, mode] :
         {ModuleKey{Qt::Key_1, AppMode::scanner}, ModuleKey{Qt::Key_2, AppMode::cleaner},
          ModuleKey{Qt::Key_3, AppMode::uninstaller}, ModuleKey{Qt::Key_4, AppMode::duplicates},
          ModuleKey{Qt::Key_5, AppMode::quarantine}, ModuleKey{Qt::Key_Comma, AppMode::settings},
          ModuleKey{Qt::Key_0, AppMode::dashboard}}) {
        const AppMode::Mode before = shell.appMode();
        QKeyEvent press(QEvent::KeyPress, key, Qt::ControlModifier);
        QCoreApplication::sendEvent(&app.window(), &press);
        EXPECT_EQ(shell.appMode(), before) << key;
        AppWindow::step();
        EXPECT_EQ(shell.appMode(), mode) << key;
    }
}

TEST(Keyboard, RescanWithoutAVolumeDoesNothingAndWithOneScans)
{
    AppMachine machine;
    machine.hasDisk = false;
    AppWindow empty(machine);
    empty.press(Qt::Key_R, Qt::ControlModifier);
    AppWindow::step();
    EXPECT_EQ(empty.scan().scanState(), ScanViewModel::Idle);

    machine.hasDisk = true;
    AppWindow app{machine};
    app.shell();
    app.press(Qt::Key_R, Qt::ControlModifier);
    EXPECT_TRUE(app.isScanned());
}

struct KeyCase {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    bool isSwallowed;
};

TEST(Keyboard, OnlyTheEightKeysAreSwallowed)
{
    AppWindow app{AppMachine()};
    auto* handler = app.window().findChild<KeyboardShortcutHandler*>();
    ASSERT_TRUE(handler);
    const auto control = Qt::ControlModifier;
    for (const KeyCase& row :
         {KeyCase{Qt::Key_0, control, true}, KeyCase{Qt::Key_R, control, true},
          KeyCase{Qt::Key_1, control | Qt::KeypadModifier, true}, KeyCase{Qt::Key_1, {}, false},
          KeyCase{Qt::Key_R, Qt::AltModifier, false}, KeyCase{Qt::Key_6, control, false},
          KeyCase{Qt::Key_A, control, false},
          KeyCase{Qt::Key_R, control | Qt::ShiftModifier, false},
          KeyCase{Qt::Key_S, control | Qt::ShiftModifier, false},
          KeyCase{Qt::Key_Less, control | Qt::ShiftModifier, false}}) {
        QKeyEvent press(QEvent::KeyPress, row.key, row.modifiers);
        EXPECT_EQ(handler->eventFilter(&app.window(), &press), row.isSwallowed) << row.key;
        QKeyEvent release(QEvent::KeyRelease, row.key, row.modifiers);
        EXPECT_FALSE(handler->eventFilter(&app.window(), &release)) << row.key;
    }
    app.scan().stopScan();
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
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(row);
    ASSERT_TRUE(spoken);
    EXPECT_EQ(spoken->role(), QAccessible::ListItem);
    EXPECT_TRUE(spoken->state().selected);
    EXPECT_EQ(spoken->text(QAccessible::Name), u"Space Scanner"_s);

    // As far down as it goes: the last volume, which a low window hides at first.
    for (int count = 0; count < 30; ++count)
        app.press(Qt::Key_Down);
    QQuickItem* last = app.window().activeFocusItem();
    ASSERT_EQ(last, app.item(u"volume-Macintosh HD"_s));
    EXPECT_LE(last->mapToScene({0, last->height()}).y(), app.window().height());
    app.press(Qt::Key_Backtab);
    EXPECT_EQ(app.window().activeFocusItem(), app.item(u"mode-Space Scanner"_s));
}

TEST(Keyboard, MenuReachesTheScanner)
{
    const AppMachine machine;
    AppWindow app{machine};
    ShellViewModel& shell = app.shell();
    app.item(u"menuButton"_s)->forceActiveFocus(Qt::TabFocusReason);
    app.press(Qt::Key_Space);
    ASSERT_TRUE(app.shows(u"menu-Scan Startup Disk"_s));
    app.press(Qt::Key_Return);
    EXPECT_EQ(shell.appMode(), AppMode::scanner);
    ASSERT_TRUE(app.isScanned());
    EXPECT_EQ(app.scan().rootNode().node()->path(), machine.machine.path(u"/"));
}
