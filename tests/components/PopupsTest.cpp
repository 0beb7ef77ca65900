#include "QmlScene.h"
#include "tests/support/PrintText.h"

#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

bool reaches(const std::function<bool()>& isReached)
{
    return QTest::qWaitFor(isReached, 5000);
}

bool hasKeyboard(QmlScene& scene, const QString& name)
{
    const QQuickItem* item = scene.view().activeFocusItem();
    return item && item->objectName() == name;
}

/// Three buttons, the middle one of which opens a menu that does `action`.
QByteArray between(const QByteArray& action)
{
    return "Row { HoverPillButton { objectName: 'before'; label: 'A' }"
           " Loader { id: middle; sourceComponent: HoverPillButton { id: opener; objectName: "
           "'opener';"
           " label: 'B'; onClicked: menu.popup(opener, 0, height) } }"
           " HoverPillButton { objectName: 'after'; id: after; label: 'C' }"
           " AppMenu { id: menu; AppMenuItem { text: 'Do'; onTriggered: { " +
           action + " } } } }";
}

} // namespace

TEST(Popups, WhatHasTheKeyboardIsInSightInALowWindow)
{
    QmlScene scene(
        "Item { width: 500; height: 300; ConfirmOverlay { objectName: 'ask'; asked: true;"
        " HoverPillButton { objectName: 'first'; label: 'A' }"
        " Item { implicitHeight: 900; implicitWidth: 10 }"
        " HoverPillButton { objectName: 'last'; label: 'B' } } }",
        {500, 300});
    ASSERT_TRUE(reaches([&] { return hasKeyboard(scene, u"confirmCancel"_s); }));
    for (const QString& name : {u"last"_s, u"first"_s}) {
        for (int count = 0; count < 3 && !hasKeyboard(scene, name); ++count)
            QTest::keyClick(&scene.view(), Qt::Key_Backtab);
        ASSERT_TRUE(hasKeyboard(scene, name)) << qPrintable(name);
        const QQuickItem* item = scene.view().activeFocusItem();
        const qreal top = item->mapToScene({}).y();
        EXPECT_GE(top, 0) << qPrintable(name);
        EXPECT_LE(top + item->height(), 300) << qPrintable(name);
    }
    EXPECT_EQ(scene.warnings().join(u'\n'), QString());
}

TEST(Popups, EachKindGivesTheKeyboardBack)
{
    QmlScene scene("Gallery {}", {1200, 3000});
    for (const auto& [opener, key] : {std::pair(u"askOne"_s, Qt::Key_Space),
                                      {u"askTwo"_s, Qt::Key_Return},
                                      {u"openMenu"_s, Qt::Key_Space},
                                      {u"openLines"_s, Qt::Key_Space},
                                      {u"picker"_s, Qt::Key_Down},
                                      {u"galleryList"_s, Qt::Key_Menu}}) {
        scene.focused(opener);
        const QQuickItem* place = scene.view().activeFocusItem(); // of a list, its row
        scene.press(key);
        ASSERT_TRUE(reaches([&] { return !place->hasActiveFocus(); })) << qPrintable(opener);
        for (int count = 0; count < 4; ++count) {
            scene.press(Qt::Key_Tab);
            EXPECT_FALSE(place->hasActiveFocus()) << "Tab leaves what " << qPrintable(opener);
        }
        scene.press(Qt::Key_Escape);
        EXPECT_TRUE(reaches([&] { return place->hasActiveFocus(); })) << qPrintable(opener);
        QTest::qWait(50);
        EXPECT_TRUE(place->hasActiveFocus()) << qPrintable(opener) << " lost it afterwards";
    }
    EXPECT_EQ(scene.warnings().join(u'\n'), QString());
}

TEST(Popups, WhatGoesMeanwhileHasAnHeirAndWhoTookTheKeyboardKeepsIt)
{
    for (const QByteArray& action :
         {"middle.item.visible = false"_ba, "middle.active = false"_ba,
          "middle.item.enabled = false"_ba, "after.forceActiveFocus()"_ba}) {
        QmlScene scene(between(action));
        scene.focused(u"opener"_s);
        scene.press(Qt::Key_Space);
        ASSERT_TRUE(reaches([&] { return !hasKeyboard(scene, u"opener"_s); }));
        scene.press(Qt::Key_Down);
        scene.press(Qt::Key_Return);
        EXPECT_TRUE(reaches([&] { return hasKeyboard(scene, u"after"_s); }))
            << action.constData() << ": " << scene.view().activeFocusItem();
        QTest::qWait(50);
        EXPECT_TRUE(hasKeyboard(scene, u"after"_s)) << action.constData() << " took it afterwards";
    }
}

TEST(MenuPicker, ForeignValueIsShownAndHeldUntilAChoice)
{
    QmlScene scene("MenuPicker { selection: 5; options: [{ value: 3, label: 'three' },"
                   " { value: 7, label: 'seven' }]; onChosen: value => selection = value }");
    scene.focused(QString());
    EXPECT_EQ(scene.item(u"pickedValue"_s)->property("text"), u"5"_s);
    scene.press(Qt::Key_Space);
    scene.press(Qt::Key_Escape);
    EXPECT_EQ(scene.root()->property("selection"), 5);
    scene.press(Qt::Key_Down);
    scene.press(Qt::Key_Down);
    scene.press(Qt::Key_Return);
    EXPECT_EQ(scene.item(u"pickedValue"_s)->property("text"), u"seven"_s);
}
