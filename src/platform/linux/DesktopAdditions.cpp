#include "platform/DesktopAdditions.h"

#include "platform/LiesIn.h"
#include "platform/LocationAliases.h"

#include <QStringBuilder>

#include <span>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

struct Row {
    QStringView name; ///< empty where nobody reads it
    QStringView value;
};

// A value that begins with "~" or with the name of a base lies there; any other is as it stands.

/// Caches as a whole, of what is confined to folders of its own.
constexpr Row applicationCaches[] = {
    {u"*", u"~/.var/app/*/cache"},
    {u"*", u"~/snap/*/common/.cache"},
};

/// Names in the folder of caches, and of confined applications, that the tables below report.
constexpr Row cachesCoveredElsewhere[] = {
    {u"", u"BraveSoftware"},
    {u"", u"Homebrew"},
    {u"", u"chromium"},
    {u"", u"epiphany"},
    {u"", u"evolution"},
    {u"", u"google-chrome"},
    {u"", u"google-chrome-beta"},
    {u"", u"google-chrome-unstable"},
    {u"", u"librewolf"},
    {u"", u"microsoft-edge"},
    {u"", u"microsoft-edge-beta"},
    {u"", u"microsoft-edge-dev"},
    {u"", u"mozilla"},
    {u"", u"node-gyp"},
    {u"", u"opera"},
    {u"", u"pnpm"},
    {u"", u"thunderbird"},
    {u"", u"vivaldi"},
    {u"", u"yarn"},
    // Flatpak
    {u"", u"com.brave.Browser"},
    {u"", u"com.google.Chrome"},
    {u"", u"com.microsoft.Edge"},
    {u"", u"com.opera.Opera"},
    {u"", u"com.vivaldi.Vivaldi"},
    {u"", u"io.gitlab.librewolf-community"},
    {u"", u"org.chromium.Chromium"},
    {u"", u"org.gnome.Epiphany"},
    {u"", u"org.gnome.Evolution"},
    {u"", u"org.mozilla.Thunderbird"},
    {u"", u"org.mozilla.firefox"},
    {u"", u"org.mozilla.thunderbird"},
    // Snap
    {u"", u"brave"},
    {u"", u"firefox"},
};

constexpr Row browserCaches[] = {
    {u"Chrome Beta", u"$CACHE/google-chrome-beta"},
    {u"Chrome Dev", u"$CACHE/google-chrome-unstable"},
    {u"Chromium", u"$CACHE/chromium"},
    {u"Edge Beta", u"$CACHE/microsoft-edge-beta"},
    {u"Edge Dev", u"$CACHE/microsoft-edge-dev"},
    {u"GNOME Web", u"$CACHE/epiphany"},
    {u"LibreWolf", u"$CACHE/librewolf"},
    {u"Vivaldi", u"$CACHE/vivaldi"},
    {u"Brave (Flatpak)", u"~/.var/app/com.brave.Browser/cache"},
    {u"Chrome (Flatpak)", u"~/.var/app/com.google.Chrome/cache"},
    {u"Chromium (Flatpak)", u"~/.var/app/org.chromium.Chromium/cache"},
    {u"Edge (Flatpak)", u"~/.var/app/com.microsoft.Edge/cache"},
    {u"Firefox (Flatpak)", u"~/.var/app/org.mozilla.firefox/cache"},
    {u"GNOME Web (Flatpak)", u"~/.var/app/org.gnome.Epiphany/cache"},
    {u"LibreWolf (Flatpak)", u"~/.var/app/io.gitlab.librewolf-community/cache"},
    {u"Opera (Flatpak)", u"~/.var/app/com.opera.Opera/cache"},
    {u"Vivaldi (Flatpak)", u"~/.var/app/com.vivaldi.Vivaldi/cache"},
    {u"Brave (Snap)", u"~/snap/brave/common/.cache"},
    {u"Chromium (Snap)", u"~/snap/chromium/common/.cache"},
    {u"Firefox (Snap)", u"~/snap/firefox/common/.cache"},
    {u"Opera (Snap)", u"~/snap/opera/common/.cache"},
    {u"Vivaldi (Snap)", u"~/snap/vivaldi/common/.cache"},
};

constexpr Row mailCaches[] = {
    {u"Thunderbird", u"$CACHE/thunderbird"},
    {u"Thunderbird (Flatpak)", u"~/.var/app/org.mozilla.Thunderbird/cache"},
    {u"Thunderbird (Flatpak)", u"~/.var/app/org.mozilla.thunderbird/cache"},
    {u"Thunderbird (Snap)", u"~/snap/thunderbird/common/.cache"},
    {u"Evolution", u"$CACHE/evolution"},
    {u"Evolution (Flatpak)", u"~/.var/app/org.gnome.Evolution/cache"},
};

/// What there is on a Mac alone: told of only where there is something of it.
constexpr Row foreignCategories[] = {
    {u"", u"xcodeJunk"},
    {u"", u"iTunesTemp"},
    {u"", u"iOSBackups"},
};

/// Where what is a log by its name lies among histories and states.
constexpr Row foldersWithLogs[] = {
    {u"", u"$STATE"},
};

constexpr Row systemLogs[] = {
    {u"X Server Logs", u"$DATA/xorg"},
    {u"Login Screen Logs", u"$DATA/sddm"},
    {u"Session Errors", u"~/.xsession-errors.old"}, // the other one is being written
};

constexpr Row nodeModules[] = {
    {u"Yarn Berry Cache", u"~/.yarn/berry/cache"},
    {u"pnpm Metadata", u"$CACHE/pnpm"},
    {u"node-gyp Headers", u"$CACHE/node-gyp"},
    {u"Bun Cache", u"~/.bun/install/cache"},
};

/// What each editor of the family has, in the order of the catalogue's rows.
constexpr Row editorParts[] = {
    {u" Cache", u"/Cache"},
    {u" CachedData", u"/CachedData"},
    {u" Workspaces", u"/User/workspaceStorage"},
    {u" Logs", u"/logs"},
};

constexpr Row editors[] = {
    {u"VSCodium", u"$CONFIG/VSCodium"},
    {u"Code - OSS", u"$CONFIG/Code - OSS"},
    {u"Code - Insiders", u"$CONFIG/Code - Insiders"},
    {u"Windsurf", u"$CONFIG/Windsurf"},
    {u"VS Code (Flatpak)", u"~/.var/app/com.visualstudio.code/config/Code"},
    {u"VSCodium (Flatpak)", u"~/.var/app/com.vscodium.codium/config/VSCodium"},
};

constexpr Row diskImageExtensions[] = {
    {u"", u"deb"}, {u"", u"rpm"}, {u"", u"appimage"}, {u"", u"flatpakref"}, {u"", u"run"},
};

constexpr Row largeFiles[] = {
    {u"", u"$CACHE"}, {u"", u"$CONFIG"}, {u"", u"~/.local"}, {u"", u"~/.var"}, {u"", u"~/snap"},
};

constexpr Row leftovers[] = {
    {u"", u"~/.var/app"},
};

/// A desktop names its folder for them in the language that it speaks.
constexpr Row screenshots[] = {
    {u"", u"$SCREENSHOTS"},
    {u"", u"$PICTURES/Screenshots"},
    {u"", u"$PICTURES/Bildschirmfotos"},
    {u"", u"$PICTURES/Captures d\u2019\u00E9cran"},
    {u"", u"$PICTURES/Zrzuty ekranu"},
    {u"", u"$PICTURES"},
};

/// Desktops write the apostrophe of the language.
constexpr Row screenshotPrefixes[] = {
    {u"", u"Capture d\u2019\u00E9cran"},
};

/// Where a tool is, there is this. The name is the category's.
constexpr Row developerTools[] = {
    {u"dockerData", u"/opt/docker-desktop"},
    {u"dockerData", u"/snap/bin/docker"},
    {u"dockerData", u"/usr/bin/docker"},
    {u"dockerData", u"/usr/local/bin/docker"},
    {u"homebrewCache", u"$CACHE/Homebrew"},
    {u"homebrewCache", u"~/.linuxbrew"},
    {u"nodeModules", u"$CACHE/node-gyp"},
    {u"nodeModules", u"$CACHE/pnpm"},
    {u"nodeModules", u"$CACHE/yarn"},
    {u"nodeModules", u"$DATA/pnpm"},
    {u"nodeModules", u"/snap/bin/node"},
    {u"nodeModules", u"/usr/bin/node"},
    {u"nodeModules", u"~/.bun"},
    {u"nodeModules", u"~/.nvm"},
    {u"nodeModules", u"~/.volta"},
    {u"nodeModules", u"~/.yarn"},
    {u"vsCodeCache", u"$CONFIG/Code - Insiders"},
    {u"vsCodeCache", u"$CONFIG/Code - OSS"},
    {u"vsCodeCache", u"$CONFIG/VSCodium"},
    {u"vsCodeCache", u"$CONFIG/Windsurf"},
    {u"vsCodeCache", u"/snap/bin/code"},
    {u"vsCodeCache", u"/usr/bin/code"},
    {u"vsCodeCache", u"/usr/bin/codium"},
    {u"vsCodeCache", u"~/.var/app/com.visualstudio.code"},
    {u"vsCodeCache", u"~/.var/app/com.vscodium.codium"},
};

/// Desktop entries whose names do not stand in the paths of what is theirs.
constexpr Row runningApplications[] = {
    {u"firefox", u"$CACHE/mozilla/firefox"},
    {u"firefox-esr", u"$CACHE/mozilla/firefox"},
    {u"org.mozilla.firefox", u"$CACHE/mozilla/firefox"},
    {u"firefox_firefox", u"~/snap/firefox/"},
    {u"com.google.chrome", u"$CACHE/google-chrome"},
    {u"com.google.chrome", u"$CONFIG/google-chrome"},
    {u"chromium-browser", u"$CACHE/chromium"},
    {u"chromium_chromium", u"~/snap/chromium/"},
    {u"brave-browser", u"$CACHE/BraveSoftware"},
    {u"com.brave.browser", u"$CACHE/BraveSoftware"},
    {u"brave_brave", u"~/snap/brave/"},
    {u"com.microsoft.edge", u"$CACHE/microsoft-edge"},
    {u"opera_opera", u"~/snap/opera/"},
    {u"vivaldi-stable", u"$CACHE/vivaldi"},
    {u"vivaldi_vivaldi", u"~/snap/vivaldi/"},
    {u"org.gnome.epiphany", u"$CACHE/epiphany"},
    {u"org.mozilla.thunderbird", u"$CACHE/thunderbird"},
    {u"thunderbird-esr", u"$CACHE/thunderbird"},
    {u"thunderbird_thunderbird", u"~/snap/thunderbird/"},
    {u"org.gnome.evolution", u"$CACHE/evolution"},
    {u"code_code", u"$CONFIG/Code/"}, // others of the family begin alike
    {u"codium", u"$CONFIG/VSCodium"},
    {u"codium_codium", u"$CONFIG/VSCodium"},
    {u"code-oss", u"$CONFIG/Code - OSS"},
    {u"code-insiders", u"$CONFIG/Code - Insiders"},
    {u"docker-desktop", u"~/.docker/desktop"},
};

constexpr struct {
    QStringView name;
    std::span<const Row> rows;
} tables[] = {
    {u"applicationCaches", applicationCaches},
    {u"browserCaches", browserCaches},
    {u"cachesCoveredElsewhere", cachesCoveredElsewhere},
    {u"developerTools", developerTools},
    {u"diskImageExtensions", diskImageExtensions},
    {u"foldersWithLogs", foldersWithLogs},
    {u"foreignCategories", foreignCategories},
    {u"largeFiles", largeFiles},
    {u"leftovers", leftovers},
    {u"mailCaches", mailCaches},
    {u"nodeModules", nodeModules},
    {u"runningApplications", runningApplications},
    {u"screenshotPrefixes", screenshotPrefixes},
    {u"screenshots", screenshots},
    {u"systemLogs", systemLogs},
};

/// `value` with its base; empty when the desktop has no such base.
QString resolved(QStringView value, const AliasBases& bases)
{
    const QString& pictures = bases.user.pictures;
    const struct {
        QStringView name;
        QString folder;
    } folders[] = {
        {u"$CACHE", bases.cache},
        {u"$CONFIG", bases.config},
        {u"$DATA", bases.data},
        {u"$PICTURES", pictures.isEmpty() ? bases.home + u"/Pictures"_s : pictures},
        {u"$SCREENSHOTS", bases.user.screenshots},
        {u"$STATE", bases.state},
        {u"~", bases.home},
    };
    for (const auto& [name, folder] : folders) {
        if (liesIn(value, name))
            return folder.isEmpty() ? QString() : QString(folder % value.sliced(name.size()));
    }
    return value.toString();
}

} // namespace

std::map<QString, QList<Locations::Addition>> desktopAdditions(const AliasBases& bases)
{
    std::map<QString, QList<Locations::Addition>> all;
    for (const auto& [name, rows] : tables) {
        QList<Locations::Addition>& additions = all[name.toString()];
        for (const Row& row : rows) {
            if (const QString value = resolved(row.value, bases); !value.isEmpty())
                additions.push_back({row.name.toString(), value});
        }
    }
    for (const Row& editor : editors) {
        for (const Row& part : editorParts)
            all[u"vsCodeCache"_s].push_back(
                {editor.name % part.name, resolved(editor.value, bases) % part.value});
    }
    for (Locations::Addition& application : all[u"runningApplications"_s])
        application.value = application.value.toLower();
    return all;
}

} // namespace brivane
