#include "QmlScene.h"

#include <QAccessible>
#include <QImage>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray types[] = {"CapsuleActionButton", "HoverPillButton", "ProminentActionButton"};

/// A scene of one button, named "button", that counts its presses; `settings` are its properties.
QByteArray counting(const QByteArray& type, const QByteArray& settings = {})
{
    return "Item { id: scene; property int presses: 0; " + type +
           " { objectName: 'button'; x: 40; y: 40; label: 'Clean'; " + settings +
           " onClicked: ++scene.presses } }";
}

int presses(const QmlScene& scene)
{
    return scene.root()->property("presses").toInt();
}

void pressByScreenReader(QQuickItem* item)
{
    QAccessible::setActive(true);
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(item);
    ASSERT_TRUE(interface && interface->actionInterface());
    interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
}

QColor colorBeside(QmlScene& scene, QQuickItem* button)
{
    return scene.view().grabWindow().pixelColor(
        button->mapToScene({button->width() - 8, button->height() / 2}).toPoint());
}

} // namespace

TEST(Buttons, EachWayOfPressingCountsOnceNoneWhenDisabledAndTheRingShowsForTheKeyboardOnly)
{
    for (const QByteArray& type : types) {
        SCOPED_TRACE(type.data());
        {
            QmlScene disabled(counting(type, "enabled: false;"));
            QQuickItem* refusing = disabled.focused(u"button"_s);
            for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return})
                disabled.press(key);
            disabled.click(refusing);
            pressByScreenReader(refusing);
            EXPECT_EQ(presses(disabled), 0);
        }
        QmlScene scene(counting(type));
        QQuickItem* button = scene.item(u"button"_s);
        QQuickItem* ring = scene.item(u"focusRing"_s);
        int expected = 0;
        scene.click(button);
        EXPECT_EQ(presses(scene), ++expected);
        EXPECT_TRUE(button->hasActiveFocus() && !ring->isVisible());
        button->setFocus(false);
        scene.focused(u"button"_s);
        EXPECT_TRUE(ring->isVisible());
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
            scene.press(key);
            EXPECT_EQ(presses(scene), ++expected) << key;
        }
        pressByScreenReader(button);
        EXPECT_EQ(presses(scene), ++expected);
        EXPECT_EQ(QAccessible::queryAccessibleInterface(button)->text(QAccessible::Name),
                  u"Clean"_s);
    }
}

TEST(Buttons, PointerLightensTheFillAlsoUnderAToolTip)
{
    for (const QByteArray& type : types) {
        SCOPED_TRACE(type.data());
        QmlScene scene(counting(type, "toolTip: 'Why';"));
        QQuickItem* button = scene.item(u"button"_s);
        QTest::mouseMove(&scene.view(), QPoint(1, 1));
        const QColor before = colorBeside(scene, button);
        const QPointF centre(button->width() / 2, button->height() / 2);
        QTest::mouseMove(&scene.view(), button->mapToScene(centre).toPoint());
        EXPECT_TRUE(QTest::qWaitFor([&] { return colorBeside(scene, button) != before; }, 5000));
    }
}

TEST(CapsuleActionButton, BusyRefusesAndFocusComesBackAfterwards)
{
    QmlScene scene(counting("CapsuleActionButton", "busyLabel: 'Cleaning';"));
    QQuickItem* button = scene.focused(u"button"_s);
    button->setProperty("isBusy", true);
    EXPECT_EQ(button->property("text"), u"Cleaning"_s);
    scene.press(Qt::Key_Space);
    scene.click(button);
    EXPECT_EQ(presses(scene), 0);
    button->setProperty("isBusy", false);
    EXPECT_EQ(button->property("text"), u"Clean"_s);
    scene.press(Qt::Key_Return);
    EXPECT_EQ(presses(scene), 1);
}

TEST(HoverPillButton, ReturnSwitchesACheckablePill)
{
    QmlScene scene(counting("HoverPillButton", "checkable: true;"));
    QQuickItem* button = scene.focused(u"button"_s);
    scene.press(Qt::Key_Return);
    EXPECT_TRUE(button->property("checked").toBool());
    scene.press(Qt::Key_Space);
    EXPECT_FALSE(button->property("checked").toBool());
}

TEST(ModuleHeader, ButtonIsThereOnlyWithALabelAndNotPressedWhileScanning)
{
    QmlScene scene("ModuleHeader { property int scans: 0; title: 'Photos'; onScan: ++scans }");
    QQuickItem* button = scene.item(u"moduleHeaderScanButton"_s);
    EXPECT_FALSE(button->isVisible());
    scene.root()->setProperty("scanLabel", u"Scan"_s);
    scene.root()->setProperty("isScanning", true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return button->isVisible() && button->x() > 0; }, 5000));
    scene.click(button);
    EXPECT_EQ(scene.root()->property("scans").toInt(), 0);
    scene.root()->setProperty("isScanning", false);
    scene.click(button);
    EXPECT_EQ(scene.root()->property("scans").toInt(), 1);
}
