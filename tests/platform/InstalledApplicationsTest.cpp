#include "platform/InstalledApplications.h"

#include "platform/PropertyList.h"
#include "platform/linux/InstalledSoftware.h"
#include "platform/linux/LeftoverRule.h"
#include "sandbox/SandboxMachine.h"
#include "support/FileTestSupport.h"
#include "support/Variable.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace brivane;
using brivane::testing::Variable;
using namespace Qt::StringLiterals;

TEST(InstalledApplications, BundlesCountByTheirIdentifierAndHostileOnesForNothing)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    const auto bundle = [&](const char* name) {
        return QString(u"/Applications/%1.app/Contents/Info.plist"_s).arg(text(name));
    };
    const auto list = [](const QVariant& value, PropertyList::Encoding encoding) {
        return *PropertyList::write(value, encoding);
    };
    const QString key = u"CFBundleIdentifier"_s;
    machine.file(bundle("Xml"), list(QVariantMap{{key, u"com.a.xml"_s}}, {}));
    machine.file(u"~/Applications/Binary.app/Contents/Info.plist",
                 list(QVariantMap{{key, u"com.a.binary"_s}}, PropertyList::Encoding::Binary));
    machine.file(u"/Applications/Folder/Deep.app/Contents/Info.plist",
                 list(QVariantMap{{key, u"com.a.deep"_s}}, {}));
    machine.file(bundle("Number"), list(QVariantMap{{key, 7}}, {}));
    machine.file(bundle("List"), list(QVariantList{key, u"com.a.list"_s}, {}));
    machine.file(bundle("Cut"), list(QVariantMap{{key, u"com.a.cut"_s}}, {}).chopped(20));
    machine.file(bundle("Huge"), SandboxMachine::Size{qint64(1) << 40});
    machine.link(bundle("Endless"), "/dev/zero");
    machine.link(bundle("Looping"), "Info.plist");
    machine.directory(bundle("Folder"));
    const QByteArray fifo =
        PathText::toBytes(machine.directory(u"/Applications/Fifo.app/Contents"));
    ASSERT_EQ(::mkfifo(fifo + "/Info.plist", 0600), 0);

    EXPECT_EQ(getInstalledAppBundleIds(machine.locations()),
              QSet<QString>({u"com.a.xml"_s, u"com.a.binary"_s}));
    const InstalledNames names = InstalledApplications::ofThisMachine(machine.locations())->names();
    const std::pair<QString, bool> rows[] = {{u"com.a.xml"_s, false},
                                             {u"com.a.xml.plist"_s, true},
                                             {u"com.A.xml"_s, true},
                                             {u"com.a.deep"_s, true},
                                             {u"Atlas"_s, false}};
    for (const auto& [name, isLeft] : rows)
        EXPECT_EQ(names.isLeftover(name), isLeft) << qPrintable(name);
}

TEST(LeftoverRule, OnlyWhatBearsTheNameOfNothingInstalledIsLeft)
{
    QSet<QString> installed;
    for (const QStringView name : {u"gnome",
                                   u"org.gnome.Nautilus",
                                   u"org.gnome.Evolution-alarm-notify",
                                   u"gnome-maps",
                                   u"evolution",
                                   u"gedit",
                                   u"firefox-esr",
                                   u"google-chrome-stable",
                                   u"brave-browser",
                                   u"code",
                                   u"spotify",
                                   u"signal-desktop",
                                   u"telegram-desktop",
                                   u"kate",
                                   u"gimp-2.10",
                                   u"libreoffice7.6",
                                   u"org.freedesktop.portal.Desktop",
                                   u"com.valvesoftware.Steam",
                                   u"dconf-editor",
                                   u"vlc",
                                   u"intellij-idea-community",
                                   u"obs",
                                   u"python3.11",
                                   u"libkf5syntaxhighlighting5",
                                   u"lollypop.desktop"})
        addInstalledName(installed, name);
    // Of ~/.config, ~/.local/share and ~/.var/app.
    const QStringView left[] = {u"com.slack.Slack",
                                u"org.gnome.Boxes",
                                u"org.gnome.Boxes.plist",
                                u"org.kde.kdenliverc",
                                u"io.github.mimbrero.WhatsAppDesktop",
                                u"de.haeckerfelix.Fragments",
                                u"md.obsidian.Obsidian",
                                u"app.drey.Dialect",
                                u"com.example.Desktop"}; // of which sort it is names no program
    const QStringView kept[] = {
        u"org.gnome.Maps", u"org.gnome.Nautilus.desktop", u"org.gnome.nautilus.plist",
        u"org.gnome.Evolution", u"org.gnome.gedit.ini", u"org.mozilla.firefox",
        u"com.google.Chrome", u"com.brave.Browser", u"com.visualstudio.code", u"com.spotify.Client",
        u"org.signal.Signal", u"org.telegram.desktop", u"org.kde.katerc", u"org.gimp.GIMP",
        u"org.libreoffice.LibreOffice", u"ca.desrt.dconf-editor",
        u"com.valvesoftware.Steam.Utility.gamescope", u"org.videolan.VLC",
        u"com.jetbrains.IntelliJ-IDEA-Community", u"org.gnome.Lollypop.conf",
        // These do not say whose they are, or are nobody's.
        u"gtk-3.0", u"user-dirs.dirs", u"mimeapps.list", u"org.kde", u"org.kde.conf",
        u"monitors.xml.old", u"pulse.native.cookie", u".org.chromium.Chromium", u"org.foo.Bar 1",
        u"org.python.3.11", u"com.github.cli", u"org.kde.syntax-highlighting",
        u"org.freedesktop.IBus.Panel", u"", u".."};
    for (const QStringView name : left) {
        EXPECT_TRUE(isLeftover(name, installed)) << name.toUtf8().data();
        EXPECT_FALSE(isLeftover(name, {})) << name.toUtf8().data() << ", with nothing known";
    }
    for (const QStringView name : kept)
        EXPECT_FALSE(isLeftover(name, installed)) << name.toUtf8().data();
}

TEST(InstalledSoftware, EverySourceOfADesktopKeepsItsDataAndDoubtKeepsAll)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    const auto put = [&](QStringView path, const QByteArray& content = {}) {
        machine.file(path, content);
    };
    put(u"~/share/applications/sub/entry.desktop",
        "[Desktop Entry]\nType=Application\nName=Nice Name\nExec=env A=b /x/launched %u\n"
        "StartupWMClass=Windowed\n");
    put(u"~/share/applications/com.a.Broken.desktop", "no key file");
    machine.link(u"~/share/applications/loop", ".");
    machine.link(u"~/share/applications/com.a.Device.desktop", "/dev/zero");
    put(u"/extra/dbus-1/services/com.a.Bus.service");
    put(u"/usr/share/metainfo/com.a.Component.metainfo.xml");
    machine.directory(u"~/share/flatpak/app/com.a.Flat");
    machine.directory(u"/var/lib/flatpak/runtime/com.a.Platform");
    put(u"/var/lib/snapd/snaps/snapped_12.snap");
    put(u"/var/lib/snapd/desktop/applications/exported_exported.desktop");
    put(u"~/tools/inpath");
    put(u"~/Downloads/Carried_App-1.2-x86_64.AppImage");
    const QString packages =
        machine.file(u"/var/lib/dpkg/status",
                     QByteArray("Package: packaged\nStatus: install ok installed\n\n"
                                "Package: purged\nStatus: deinstall ok config-files\n"));
    const auto lead = [&](QStringView path) { return PathText::toBytes(machine.path(path)); };
    const Variable home("HOME", lead(u"~"));
    const Variable data("XDG_DATA_HOME", lead(u"~/share"));
    const Variable more("XDG_DATA_DIRS", lead(u"/extra") + "/:relative:/missing");
    const Variable path("PATH", lead(u"~/tools/../tools") + ":/");
    const SoftwarePlaces places = SoftwarePlaces::of(Locations::onLinux(), machine.path(u"/"));
    const auto isLeft = [&](QStringView name) {
        return readInstalledNames(places).isLeftover(name);
    };

    for (const QStringView name :
         {u"com.a.sub-entry", u"com.a.NiceName", u"com.a.launched", u"com.a.windowed",
          u"com.a.Broken", u"com.a.Device", u"com.a.Bus", u"com.a.Component", u"com.a.Flat",
          u"com.a.Platform", u"com.a.snapped", u"com.a.exported_exported", u"com.a.inpath",
          u"com.a.CarriedApp", u"com.a.packaged", u"com.brivane.app"})
        EXPECT_FALSE(isLeft(name)) << name.toUtf8().data();
    EXPECT_TRUE(isLeft(u"com.a.purged"));
    EXPECT_TRUE(isLeft(u"com.a.Gone"));

    const QString database = machine.file(u"/var/lib/rpm/rpmdb.sqlite", QByteArray());
    EXPECT_FALSE(isLeft(u"com.a.Gone")) << "packages that only another program can list";
    ASSERT_EQ(::unlink(PathText::toBytes(database)), 0);
    EXPECT_TRUE(isLeft(u"com.a.Gone"));
    ASSERT_EQ(::unlink(PathText::toBytes(packages)), 0);
    EXPECT_FALSE(isLeft(u"com.a.Gone")) << "no packages at all";
    machine.directory(u"/var/lib/pacman/local/arch-ed-1.2-3");
    EXPECT_TRUE(isLeft(u"com.a.Gone"));
    EXPECT_FALSE(isLeft(u"com.a.arched"));
    ASSERT_EQ(::mkfifo(PathText::toBytes(packages), 0600), 0);
    EXPECT_FALSE(isLeft(u"com.a.Gone")) << "packages that cannot be read";
}
