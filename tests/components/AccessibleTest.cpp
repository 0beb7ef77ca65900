#include "QmlScene.h"
#include "tests/support/AccessibleTree.h"
#include "tests/support/PrintText.h"

#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QAccessibleInterface* heard(QQuickItem* item)
{
    return QAccessible::queryAccessibleInterface(item);
}

class Accessibility : public testing::TestWithParam<bool> {
protected:
    Accessibility() { QAccessible::setActive(GetParam()); }
    /// Somebody listens from the start, or from now on.
    static void listen() { QAccessible::setActive(true); }
    ~Accessibility() override { QAccessible::setActive(true); }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(HeardFromTheStart, Accessibility, testing::Bool());

// With BRIVANE_TREE set, the tree is printed.
TEST_P(Accessibility, EveryControlOfTheGalleryHasARoleAndAName)
{
    QmlScene scene("Gallery {}", {1200, 3000});
    listen();
    for (const QString& opener : {QString(), u"askTwo"_s, u"openMenu"_s, u"openLines"_s}) {
        if (!opener.isEmpty()) {
            scene.click(scene.item(opener));
            ASSERT_TRUE(QTest::qWaitFor(
                [&] { return scene.view().activeFocusItem() != scene.item(opener); }, 5000));
        }
        const auto tree = brivane::testing::accessibleTree(scene.view());
        EXPECT_GT(tree.lines.size(), 100);
        EXPECT_EQ(tree.faults, QStringList()) << qPrintable(opener);
        if (qEnvironmentVariableIsSet("BRIVANE_TREE"))
            puts(qPrintable(tree.lines.join(u'\n')));
        scene.press(Qt::Key_Escape);
    }
}

TEST_P(Accessibility, ControlsSayWhatTheyAreAndHowTheyStand)
{
    QmlScene scene("Gallery {}", {1200, 3000});
    listen();
    const auto pills = [&] { return heard(scene.item(u"segmentedPills"_s)); };
    EXPECT_EQ(pills()->role(), QAccessible::Grouping);
    EXPECT_EQ(pills()->text(QAccessible::Name), u"Sensitivity");
    EXPECT_EQ(pills()->text(QAccessible::Description), u"Similar");
    for (const QString& pill : {u"pill0"_s, u"pill1"_s, u"pill2"_s}) {
        EXPECT_EQ(heard(scene.item(pill))->role(), QAccessible::RadioButton);
        EXPECT_EQ(heard(scene.item(pill))->state().checked, pill == u"pill1"_s);
    }
    QAccessibleInterface* box = heard(scene.item(u"checkBox"_s));
    EXPECT_EQ(box->role(), QAccessible::CheckBox);
    EXPECT_TRUE(box->state().checkable && box->state().checkStateMixed);
    scene.click(scene.item(u"checkBox"_s));
    EXPECT_TRUE(box->state().checked);
    EXPECT_FALSE(box->state().checkStateMixed);
    EXPECT_TRUE(heard(scene.item(u"switch"_s))->state().checked);
    QAccessibleInterface* picker = heard(scene.item(u"picker"_s));
    EXPECT_EQ(picker->role(), QAccessible::ComboBox);
    EXPECT_EQ(picker->text(QAccessible::Description), u"5 days");

    scene.focused(u"galleryList"_s);
    scene.press(Qt::Key_Down);
    QAccessibleInterface* row = heard(scene.item(u"row-cache"_s));
    EXPECT_EQ(row->role(), QAccessible::ListItem);
    EXPECT_EQ(row->text(QAccessible::Name), u"Cache.db, 18.2 MB");
    EXPECT_TRUE(row->state().focused && row->state().checkable);
    EXPECT_FALSE(row->state().checked);
    scene.press(Qt::Key_Space);
    EXPECT_TRUE(row->state().checked);
}
