#include "CleanerGround.h"
#include "core/Composition.h"
#include "support/Variable.h"

#include <optional>

using namespace brivane;
using namespace brivane::testing;

namespace {

struct Thing {
    QStringView place;
    int days;
    std::optional<Type> type; ///< none: it is nobody's junk
    QStringView name = {};
};

/// What lies in the home of somebody who works on such a desktop.
constexpr Thing things[] = {
    {u"~/.cache/thumbnails/large/a.png", 1, Type::applicationCaches, u"thumbnails"},
    {u"~/.cache/Google/AndroidStudio/a", 1, Type::applicationCaches, u"Google"},
    {u"~/.cache/mozilla/firefox/x.default/cache2/a", 1, Type::browserCaches, u"Firefox"},
    {u"~/.cache/google-chrome/Default/Cache/a", 1, Type::browserCaches, u"Chrome"},
    {u"~/.cache/chromium/Default/Cache/a", 1, Type::browserCaches, u"Chromium"},
    {u"~/.var/app/org.mozilla.firefox/cache/a", 1, Type::browserCaches, u"Firefox (Flatpak)"},
    {u"~/.var/app/org.gnome.Maps/cache/a", 1, Type::applicationCaches, u"org.gnome.Maps"},
    {u"~/.cache/thunderbird/x.default/a", 1, Type::mailCaches, u"Thunderbird"},
    {u"~/.config/Code/CachedData/a", 1, Type::vsCodeCache, u"VS Code CachedData"},
    {u"~/.config/VSCodium/logs/a", 1, Type::vsCodeCache, u"VSCodium Logs"},
    {u"~/.config/Code/User/settings.json", 1, {}},
    {u"~/.npm/_cacache/a", 1, Type::nodeModules, u"npm Cache"},
    {u"~/.cache/yarn/a", 1, Type::nodeModules, u"Yarn Cache"},
    {u"~/.local/state/tool/log/today", 1, Type::applicationLogs, u"tool/log"},
    {u"~/.local/state/other/run.log.1", 1, Type::applicationLogs, u"other/run.log.1"},
    {u"~/.local/state/tool/history", 1, {}},
    {u"~/.local/state/wireplumber/routes", 1, {}},
    {u"~/.local/share/Trash/files/Thrown", 1, Type::trash, u"Thrown"},
    {u"~/Tisch/Heruntergeladen/tool.deb", 90, Type::unusedDiskImages, u"tool.deb"},
    {u"~/Tisch/Heruntergeladen/Tool.AppImage", 1, Type::unusedDiskImages, u"Tool.AppImage"},
    {u"~/Tisch/Heruntergeladen/Paper.pdf", 90, Type::downloads, u"Paper.pdf"},
    {u"~/Tisch/Akten/pier/node_modules/a", 1, Type::nodeModules, u"node_modules (pier)"},
    {u"~/Bilder/Captures d’écran/Capture d’écran du 2020-01-01.png", 90, Type::screenshots,
     u"Capture d’écran du 2020-01-01.png"},
    {u"~/Bilder/Screenshots/Screenshot from 2020-01-01.png", 90, Type::screenshots,
     u"Screenshot from 2020-01-01.png"},
    {u"~/.local/share/org.gone.Instrument/a", 1, Type::applicationLeftovers,
     u"org.gone.Instrument"},
    {u"~/.local/share/org.here.Kept/a", 1, {}},
    {u"~/.config/gtk-3.0/settings.ini", 1, {}},
    {u"~/.ssh/id_ed25519", 90, {}},
};

} // namespace

TEST(LinuxDesktop, WhatItsProgramsLeaveIsFoundWhereTheyPutItAndTheTrashKeepsNoRecord)
{
    const SandboxMachine disk = SandboxMachine::temporary();
    const Variable home("HOME", PathText::toBytes(disk.path(u"~")));
    const Variable data("XDG_DATA_DIRS", PathText::toBytes(disk.directory(u"/share")));
    const Variable cache("XDG_CACHE_HOME", {});
    const Variable config("XDG_CONFIG_HOME", {});
    const Variable state("XDG_STATE_HOME", {});
    const Variable own("XDG_DATA_HOME", {});
    disk.file(u"~/.config/user-dirs.dirs",
              QByteArray("XDG_DESKTOP_DIR=\"$HOME/Tisch\"\n"
                         "XDG_DOCUMENTS_DIR=\"$HOME/Tisch/Akten\"\n"
                         "XDG_DOWNLOAD_DIR=\"$HOME/Tisch/Heruntergeladen\"\n"
                         "XDG_PICTURES_DIR=\"$HOME/Bilder\"\n"));
    for (const QStringView id : {u"org.here.Kept", u"org.mozilla.firefox", u"org.gnome.Maps"})
        disk.file(u"/share/applications/%1.desktop"_s.arg(id),
                  QByteArray("[Desktop Entry]\nType=Application\nName=Kept\nExec=kept\n"));
    const QString record =
        disk.file(u"~/.local/share/Trash/info/Thrown.trashinfo", QByteArray("[Trash Info]\n"));
    const QDateTime now = QDateTime::currentDateTimeUtc();
    for (const Thing& thing : things) {
        disk.file(thing.place, Size{2'000'000});
        disk.setTimes(thing.place, now.addDays(-thing.days), now);
    }

    OwnedHost machine(Locations::onLinux());
    Composition composition(machine.host());
    auto& service = composition.get<CleanerService>();
    QStringList rows;
    QObject receiver;
    QObject::connect(&service, &CleanerService::categoriesChanged, &receiver, [&] {
        for (const auto& category : service.categories())
            rows += factsOf(category->type()).rawValue;
    });
    service.scanAll();
    ASSERT_TRUE(waitUntil([&] { return service.scanComplete(); }));
    for (const QStringView ofMac : {u"xcodeJunk", u"iTunesTemp", u"iOSBackups"})
        EXPECT_FALSE(rows.contains(ofMac)) << "nothing of the kind is here";
    QStringList found;
    for (const auto& category : service.categories()) {
        for (const CleanerItem& item : category->items())
            found += factsOf(category->type()).rawValue + u": "_s + item.name;
    }
    QStringList expected = {u"downloads: tool.deb"_s}; // an old installer is both
    for (const Thing& thing : things) {
        if (thing.type)
            expected += factsOf(*thing.type).rawValue + u": "_s + thing.name.toString();
    }
    EXPECT_THAT(found, ::testing::UnorderedElementsAreArray(expected));

    const auto result = awaitTask(service.cleanSelectedPermanently());
    EXPECT_EQ(result.failed, QStringList());
    EXPECT_FALSE(FileIdentity::of(disk.path(u"~/.local/share/Trash/files/Thrown")));
    EXPECT_FALSE(FileIdentity::of(record));
    for (const QStringView kept : {u"~/.local/state/tool/history", u"~/.config/Code/CachedData/a",
                                   u"~/Tisch/Heruntergeladen/Paper.pdf"})
        EXPECT_TRUE(FileIdentity::of(disk.path(kept))) << "of no kind that is safe";
}
