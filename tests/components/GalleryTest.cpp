#include "QmlScene.h"
#include "components/Motion.h"

#include <QImage>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// With BRIVANE_PICTURES set to a folder, the page is kept there to be looked at.
TEST(Gallery, EveryComponentRendersAtRestAndInMotionWithoutAWarning)
{
    for (const bool moves : {true, false}) {
        brivane::Motion::instance().setEnabled(moves);
        QmlScene scene("Gallery { Item { Spring on x { from: 0; to: 1 } } }", {1200, 3000});
        scene.focused(u"capsuleButton"_s);
        const QImage picture = scene.view().grabWindow();
        EXPECT_FALSE(picture.isNull());
        EXPECT_EQ(scene.warnings().join(u'\n'), QString());
        const QString folder = qEnvironmentVariable("BRIVANE_PICTURES");
        EXPECT_TRUE(folder.isEmpty() || moves || picture.save(folder + u"/gallery.png"_s));
    }
}
