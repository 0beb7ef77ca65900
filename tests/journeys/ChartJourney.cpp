#include "Journey.h"

using namespace Qt::StringLiterals;

namespace brivane::testing {

class ChartJourney : public Journey {
protected:
    void press(std::initializer_list<Qt::Key> keys)
    {
        for (const Qt::Key key : keys) {
            app().press(key);
            app().picture(); // the chart follows with the next frame
        }
    }
    QString folder()
    {
        app().picture();
        return app().item(u"focusName"_s)->property("text").toString();
    }
    /// The name of the block that stands out, as the chart tells it.
    QString block(const QString& chart)
    {
        QQuickItem* item = app().item(chart);
        QString name;
        QMetaObject::invokeMethod(item, "nameOf", Q_RETURN_ARG(QString, name),
                                  Q_ARG(int, item->property("hoveredIndex").toInt()));
        return name;
    }
    /// The middle of the block at `index`, in the window's coordinates.
    QPoint placeOf(const QString& chart, int index)
    {
        app().picture();
        QQuickItem* item = app().item(chart);
        QRectF bounds;
        QMetaObject::invokeMethod(item, "boundsOf", Q_RETURN_ARG(QRectF, bounds),
                                  Q_ARG(int, index));
        return item->mapToScene(bounds.center()).toPoint();
    }
};

TEST_F(ChartJourney, BothChartsAreWalkedWithoutTheMouse)
{
    app().press(Qt::Key_1, Qt::ControlModifier);
    ASSERT_TRUE(app().shows(u"volumePickerView"_s));
    press({Qt::Key_Return});
    ASSERT_TRUE(app().showsText(u"Completed"_s));

    ASSERT_TRUE(tabTo(u"chartPicker"_s));
    press({Qt::Key_Right});
    const QString treemap = u"treemapView"_s;
    ASSERT_TRUE(tabTo(treemap));
    EXPECT_EQ(block(treemap), u"Users"_s);
    EXPECT_EQ(focusSeen(), treemap);
    QStringList seen;
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Up}) {
        press({key});
        seen += block(treemap);
    }
    EXPECT_EQ(seen, QStringList({u"Library"_s, u"Applications"_s, u"Users"_s}));
    press({Qt::Key_Return, Qt::Key_Return});
    EXPECT_EQ(folder(), u"robin"_s);
    EXPECT_EQ(block(treemap), u"Movies"_s) << "the keyboard was lost on the way down";
    press({Qt::Key_Backspace, Qt::Key_Backspace, Qt::Key_Backspace});
    EXPECT_EQ(folder(), u"Macintosh HD"_s);

    ASSERT_TRUE(tabTo(u"chartPicker"_s));
    press({Qt::Key_Left});
    const QString sunburst = u"sunburstChart"_s;
    ASSERT_TRUE(tabTo(sunburst));
    EXPECT_EQ(block(sunburst), u"Users"_s);
    press({Qt::Key_Right});
    const QString next = block(sunburst);
    EXPECT_EQ(next, u"Library"_s);
    press({Qt::Key_Delete});
    EXPECT_TRUE(log().last().startsWith(u"delete: Staged for deletion: Library"_s));
    press({Qt::Key_Left, Qt::Key_Return});
    EXPECT_EQ(folder(), u"Users"_s);

    ASSERT_TRUE(tabTo(u"rescanButton"_s));
    press({Qt::Key_Space});
    ASSERT_TRUE(app().showsText(u"Completed"_s));
    EXPECT_EQ(folder(), u"Macintosh HD"_s);
}

TEST_F(ChartJourney, PointerAndListLightUpTheSameAndClicksGoDown)
{
    app().press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_TRUE(app().showsText(u"Completed"_s));
    ASSERT_TRUE(app().click(u"treemapToggle"_s));
    const QString treemap = u"treemapView"_s;
    QTest::mouseMove(&app().window(), app().centre(row(u"Library"_s)));
    EXPECT_EQ(block(treemap), u"Library"_s);
    const QPoint users = placeOf(treemap, 0);
    QTest::mouseMove(&app().window(), users - QPoint(1, 0));
    QTest::mouseMove(&app().window(), users);
    EXPECT_EQ(block(treemap), u"Users"_s);
    EXPECT_TRUE(app().item(u"stageRow"_s)) << "the row did not light up";

    QTest::mouseClick(&app().window(), Qt::RightButton, {}, users);
    ASSERT_TRUE(app().shows(u"menuCopyPath"_s));
    app().press(Qt::Key_Escape);
    ASSERT_TRUE(waitUntil([&] { return !app().item(u"menuCopyPath"_s); }));
    QTest::mouseClick(&app().window(), Qt::LeftButton, {}, users);
    EXPECT_EQ(folder(), u"Users"_s);
    EXPECT_EQ(block(treemap), u"robin"_s) << "what lies under the resting pointer";
}

} // namespace brivane::testing
