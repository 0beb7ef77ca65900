#include "QmlScene.h"
#include "components/Motion.h"

#include <QImage>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Gallery, EveryAnimationStartsWithoutAWarning)
{
    brivane::Motion::instance().setEnabled(true);
    {
        QmlScene scene("Gallery { Item { Spring on x { from: 0; to: 1 } } }", {1200, 750});
        EXPECT_FALSE(scene.view().grabWindow().isNull());
        EXPECT_EQ(scene.warnings().join(u'\n'), QString());
    }
    brivane::Motion::instance().setEnabled(false);
}

// With BRIVANE_PICTURES set to a folder, the page is kept there to be looked at.
TEST(Gallery, EveryComponentRendersWithoutAWarning)
{
    QmlScene scene("Gallery {}", {1200, 750});
    scene.focused(u"capsuleButton"_s);
    const QImage picture = scene.view().grabWindow();
    EXPECT_EQ(picture.size(), QSize(1200, 750) * scene.view().devicePixelRatio());
    EXPECT_EQ(scene.warnings().join(u'\n'), QString());

    const QString folder = qEnvironmentVariable("BRIVANE_PICTURES");
    if (!folder.isEmpty()) {
        EXPECT_TRUE(
            picture.save(u"%1/gallery@%2x.png"_s.arg(folder).arg(scene.view().devicePixelRatio())));
        QQuickItem* flickable = scene.item(u"galleryFlickable"_s);
        flickable->setProperty("contentY", flickable->property("contentHeight").toReal() - 750);
        EXPECT_TRUE(scene.view().grabWindow().save(
            u"%1/gallery-end@%2x.png"_s.arg(folder).arg(scene.view().devicePixelRatio())));
    }
}
