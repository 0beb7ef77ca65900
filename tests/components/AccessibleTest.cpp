#include "QmlScene.h"
#include "tests/support/PrintText.h"

#include <QAccessible>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QAccessibleInterface* heard(QQuickItem* item)
{
    return QAccessible::queryAccessibleInterface(item);
}

bool canBePressed(QAccessibleInterface& spoken)
{
    return spoken.actionInterface() && spoken.actionInterface()->actionNames().contains(
                                           QAccessibleActionInterface::pressAction());
}

/// All that is visible below `item`, as screen readers find it, one a line, further in the deeper.
/// What can be focused or pressed, and is not told by role and name, is put into `mute`.
void dump(QAccessibleInterface* spoken, int depth, QSet<QObject*>& found, QStringList& lines,
          QStringList& mute)
{
    found += spoken->object();
    if (spoken->state().invisible)
        return;
    const QAccessible::Role role = spoken->role();
    const QString line = u"%1%2 \"%3\""_s.arg(
        QString(2 * depth, u' '),
        QString::fromLatin1(QMetaEnum::fromType<QAccessible::Role>().valueToKey(role)),
        spoken->text(QAccessible::Name));
    lines += line;
    auto* item = qobject_cast<QQuickItem*>(spoken->object());
    const bool isControl = item && (item->activeFocusOnTab() || canBePressed(*spoken));
    const bool isTold = role != QAccessible::NoRole && role != QAccessible::Client &&
                        !spoken->text(QAccessible::Name).isEmpty();
    if (isControl && !isTold)
        mute += line + u' ' + QString::fromLatin1(item->metaObject()->className());
    for (int at = 0; at < spoken->childCount(); ++at)
        dump(spoken->child(at), depth + 1, found, lines, mute);
}

/// Stops of the Tab key that a screen reader does not find at all.
void findUnheard(QQuickItem* item, const QSet<QObject*>& found, QStringList& mute)
{
    if (!item->isVisible())
        return;
    if (item->activeFocusOnTab() && !found.contains(item))
        mute += u"unheard "_s + QString::fromLatin1(item->metaObject()->className());
    for (QQuickItem* child : item->childItems())
        findUnheard(child, found, mute);
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
        QStringList lines;
        QStringList mute;
        QSet<QObject*> found;
        dump(QAccessible::queryAccessibleInterface(&scene.view()), 0, found, lines, mute);
        findUnheard(scene.view().contentItem(), found, mute);
        EXPECT_GT(lines.size(), 100);
        EXPECT_EQ(mute, QStringList()) << qPrintable(opener);
        if (qEnvironmentVariableIsSet("BRIVANE_TREE"))
            puts(qPrintable(lines.join(u'\n')));
        scene.press(Qt::Key_Escape);
    }
}

TEST_P(Accessibility, ControlsSayWhatTheyAreAndHowTheyStand)
{
    QmlScene scene("Gallery {}", {1200, 3000});
    listen();
    for (const QString& pill : {u"pill0"_s, u"pill1"_s}) {
        EXPECT_EQ(heard(scene.item(pill))->role(), QAccessible::RadioButton);
        EXPECT_EQ(heard(scene.item(pill))->state().checked, pill == u"pill1"_s);
    }
    EXPECT_EQ(heard(scene.item(u"segmentedPills"_s))->text(QAccessible::Description), u"Similar");
    QAccessibleInterface* box = heard(scene.item(u"checkBox"_s));
    EXPECT_TRUE(box->state().checkable && box->state().checkStateMixed);
    scene.click(scene.item(u"checkBox"_s));
    EXPECT_TRUE(box->state().checked);
    EXPECT_FALSE(box->state().checkStateMixed);
    EXPECT_TRUE(heard(scene.item(u"switch"_s))->state().checked);
    EXPECT_EQ(heard(scene.item(u"picker"_s))->text(QAccessible::Description), u"5 days");

    scene.focused(u"galleryList"_s);
    scene.press(Qt::Key_Down);
    QAccessibleInterface* row = heard(scene.item(u"row-cache"_s));
    EXPECT_EQ(row->text(QAccessible::Name), u"Cache.db, 18.2 MB");
    EXPECT_TRUE(row->state().focused && row->state().checkable);
    EXPECT_FALSE(row->state().checked);
    scene.press(Qt::Key_Space);
    EXPECT_TRUE(row->state().checked);
}
