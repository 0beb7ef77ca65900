#include "Journey.h"
#include "core/NotificationNames.h"
#include "platform/PathText.h"

#include <cstdio>

using namespace Qt::StringLiterals;

namespace brivane::testing {

class VolumeJourney : public Journey {
protected:
    VolumeJourney() { disk().machine.file(u"/Volumes/Archive/Tapes/1999/reel", "magnetic"); }

    void mount()
    {
        app().volumes().mount(drive(), SandboxVolumes::externalDrive(u"Archive"_s));
        app().host().notifications.post(NotificationNames::diskSpaceChanged);
    }
    void unmount()
    {
        app().volumes().unmount(drive());
        app().host().notifications.post(NotificationNames::diskSpaceChanged);
    }
    /// Takes the drive's folder away or brings it back.
    void moveFolder(const char16_t* from, const char16_t* to)
    {
        changeDisk([&] {
            ASSERT_EQ(std::rename(PathText::toBytes(disk().machine.path(from)).constData(),
                                  PathText::toBytes(disk().machine.path(to)).constData()),
                      0);
        });
    }
    QString drive() { return disk().machine.path(u"/Volumes/Archive"); }
    QStringList cards() { return names(u"volumeCard"_s); }
};

TEST_F(VolumeJourney, ScreensFollowAndTheSelectedVolumeStays)
{
    ASSERT_TRUE(app().click(u"mode-Space Scanner"_s));
    EXPECT_EQ(cards(), QStringList(u"Macintosh HD"_s));
    mount();
    ASSERT_TRUE(app().click(u"volume-Archive"_s));
    EXPECT_EQ(cards(), QStringList({u"Macintosh HD"_s, u"Archive"_s}));
    EXPECT_TRUE(app().item(u"volume-Archive"_s)->property("isCurrent").toBool());
    unmount();
    ASSERT_TRUE(waitUntil([&] { return cards().size() == 1; }));
    EXPECT_FALSE(app().item(u"volume-Archive"_s));

    app().press(Qt::Key_R, Qt::ControlModifier);
    ASSERT_TRUE(app().showsText(u"Completed"_s));
    EXPECT_EQ(rows(), QStringList(u"Tapes"_s)) << "another volume was scanned";
    EXPECT_EQ(log().first(), u"scanner: Scan started: "_s + drive());
}

TEST_F(VolumeJourney, VanishedOneFailsUntilItIsBack)
{
    mount();
    ASSERT_TRUE(app().click(u"mode-Space Scanner"_s));
    ASSERT_TRUE(app().shows(u"volume-Archive"_s));
    moveFolder(u"/Volumes/Archive", u"/Volumes/away");
    app().click(card(u"Archive"_s));
    ASSERT_TRUE(app().showsText(u"Scan Failed"_s));
    EXPECT_TRUE(
        reads(u"Failed to open /Volumes/Archive for scanning: No such file or directory"_s));
    app().press(Qt::Key_Return);
    ASSERT_TRUE(app().showsText(u"Scan Failed"_s));
    moveFolder(u"/Volumes/away", u"/Volumes/Archive");
    ASSERT_TRUE(app().click(u"retryButton"_s));
    ASSERT_TRUE(app().showsText(u"Completed"_s));
    EXPECT_EQ(rows(), QStringList(u"Tapes"_s));
}

} // namespace brivane::testing
