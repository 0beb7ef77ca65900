#include "Journey.h"

using namespace Qt::StringLiterals;

namespace brivane::testing {

class ScanJourney : public Journey {};

TEST_F(ScanJourney, ByMouseFromTheDiskThroughAPausedScanToItsFolders)
{
    ASSERT_TRUE(app().click(u"mode-Space Scanner"_s));
    ASSERT_TRUE(app().showsText(u"Select a disk to scan"_s));
    holdNextScan();
    ASSERT_TRUE(app().click(u"volumeCard"_s));
    ASSERT_TRUE(isHeld());
    EXPECT_TRUE(app().item(u"initializing"_s));
    EXPECT_TRUE(reads(u"Initializing scan..."_s));

    ASSERT_TRUE(walksOn(lastButOneEntry()));
    EXPECT_FALSE(app().item(u"initializing"_s));
    EXPECT_TRUE(reads(u"Scanning..."_s));
    EXPECT_EQ(rows(), QStringList({u"Users"_s, u"Library"_s, u"Applications"_s}));
    app().click(row(u"Users"_s));
    EXPECT_TRUE(reads(u"robin"_s));

    ASSERT_TRUE(app().click(u"pauseButton"_s));
    EXPECT_TRUE(reads(u"Paused"_s));
    EXPECT_TRUE(reads(u"Resume"_s));
    app().clock().release();
    const auto hasToldOfTheHeldEntry = [&] {
        return scan().progress().filesScanned == lastButOneEntry();
    };
    ASSERT_TRUE(waitUntil(hasToldOfTheHeldEntry));
    EXPECT_TRUE(reads(u"Paused"_s));
    EXPECT_EQ(rows(), QStringList(u"robin"_s)) << "the place was lost";
    ASSERT_TRUE(app().click(u"pauseButton"_s));
    ASSERT_TRUE(app().showsText(u"Completed"_s));

    EXPECT_TRUE(reads(QString::number(lastButOneEntry() + 2))) << "not all was counted";

    EXPECT_FALSE(app().item(u"goUp"_s));
    for (const QString& folder : {u"Users"_s, u"robin"_s, u"Movies"_s})
        app().click(row(folder));
    EXPECT_EQ(rows(), QStringList({u"Feature.mov"_s, u"Trailer.mov"_s}));
    app().click(row(u"Trailer.mov"_s));
    EXPECT_TRUE(row(u"Trailer.mov"_s).property("isSelected").toBool());
    ASSERT_TRUE(app().click(u"goUp"_s));
    EXPECT_EQ(rows(), QStringList({u"Movies"_s, u"Documents"_s}));
    EXPECT_EQ(log().filter(u"scanner: "_s).size(), 2) << qPrintable(log().join(u'\n'));
}

} // namespace brivane::testing
