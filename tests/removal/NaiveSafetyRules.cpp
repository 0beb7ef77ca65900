#include "NaiveSafetyRules.h"

#include <algorithm>
#include <cctype>

namespace brivane::naive {

Texts listed(const std::string& text)
{
    Texts all;
    std::size_t from = 0;
    for (auto to = text.find(", "); to != std::string::npos; to = text.find(", ", from)) {
        all.push_back(text.substr(from, to - from));
        from = to + 2;
    }
    all.push_back(text.substr(from));
    return all;
}

namespace {

const Texts dangerousExtensions = listed("keychain-db, keychain, keybag");

const Texts blockedPaths = listed(
    "/System, /usr, /bin, /sbin, /private, /private/var, /private/etc, /private/tmp, /cores, "
    "/dev, /etc, /tmp, /var, /Volumes, /private/var/db, "
    "/private/var/db/SystemPolicyConfiguration, /private/var/db/dslocal, "
    "/private/var/db/ConfigurationProfiles, /private/var/folders, /private/var/run, "
    "/private/var/log, /private/var/audit, /private/var/protected, /Library/Apple, "
    "/Library/Extensions, /Library/Frameworks, /Library/Sandbox, /Library/Security, "
    "/Library/SystemProfiler, /Library/CoreMediaIO, /Library/DirectoryServices, "
    "/Library/Filesystems, /Library/Keychains, /Library/OpenDirectory, "
    "/Library/SystemMigration, /System/Library/CoreServices/boot.efi, /Recovery");

const Texts blockedPrefixes = listed(
    "/System/, /usr/bin/, /usr/sbin/, /usr/lib/, /usr/libexec/, /usr/share/, /usr/standalone/, "
    "/bin/, /sbin/, /dev/, /private/var/db/, /private/var/protected/, /private/var/audit/, "
    "/Library/Apple/, /Library/Extensions/, /Library/Frameworks/, /Library/Keychains/, "
    "/Library/Security/, /Library/Sandbox/");

const Texts homeBlockedPaths = listed(
    "Library/Keychains, .ssh, .gnupg, .aws, .kube, Library/Accounts, Library/IdentityServices, "
    "Library/PersonalizationPortrait, Library/Biome, Library/DoNotDisturb");

const Texts homeWarningPaths =
    listed("Library/Mail, Library/Messages, Library/Calendars, Library/Contacts, Library/Notes, "
           "Library/Safari, Library/Cookies, Library/Preferences, Library/Containers, "
           "Library/Group Containers, Library/Saved Application State, "
           "Pictures/Photos Library.photoslibrary, Library/Photos, Library/Music, Music/Music, "
           "Library/Application Support/com.apple.sharedfilelist, "
           "Library/Application Support/AddressBook, Library/Application Support/iCloud, "
           "Library/Application Support/com.apple.TCC, Library/Application Support/Knowledge, "
           "Library/Fonts, Library/LaunchAgents");

const Texts cautionPrefixes = listed(
    "/Library/Caches/, /Library/Application Support/, /Library/Preferences/, /Library/Fonts/, "
    "/Library/LaunchAgents/, /Library/LaunchDaemons/, /Library/PrivilegedHelperTools/, "
    "/Library/Audio/, /Library/Input Methods/, /Library/PreferencePanes/, /Library/Spotlight/, "
    "/Library/QuickLook/, /Applications/");

const Texts cleanerAreas =
    listed("/Library/Caches/, /Library/Logs/, /.Trash/, /Downloads/, "
           "/Library/Developer/Xcode/DerivedData/, /Library/Developer/Xcode/Archives/, "
           "/Library/Developer/CoreSimulator/Caches/, /Library/Caches/com.apple.dt.Xcode/, "
           "/Library/Caches/org.swift.swiftpm/");

const Texts cleanerFolders = listed(
    "/Library/Containers/com.apple.mail/Data/Library/Mail Downloads, "
    "/Library/Containers/com.docker.docker/Data, /Library/Application Support/MobileSync/Backup");

bool isOrBelow(const std::string& path, const std::string& folder)
{
    return path == folder || path.starts_with(folder + "/");
}

std::string replaced(std::string text, const std::string& what, const std::string& by)
{
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what))
        text.replace(at, what.size(), by);
    return text;
}

/// Empty for what is no absolute path.
std::string standardized(std::string path, const std::string& home)
{
    if (path == "~" || path.starts_with("~/"))
        path = home + path.substr(1);
    if (!path.starts_with("/"))
        return "";
    // By rewriting the text until nothing is left to rewrite.
    path = replaced(replaced(path + "/", "//", "/"), "/./", "/");
    for (auto at = path.find("/../"); at != std::string::npos; at = path.find("/../")) {
        const auto parent = at == 0 ? 0 : path.rfind('/', at - 1);
        path.replace(parent, at + 4 - parent, "/");
    }
    return path == "/" ? path : path.substr(0, path.size() - 1);
}

std::string withPrivate(const std::string& path)
{
    for (const std::string folder : {"/var", "/tmp", "/etc"}) {
        if (isOrBelow(path, folder))
            return "/private" + path;
    }
    return path;
}

/// What the object at `path` may be called: with as many "/private" in front as it has, and with
/// ever less. The last one is as the tables would have it.
Texts spellings(const std::string& path, const std::string& home)
{
    Texts all;
    for (std::string plain = standardized(path, home); !plain.empty();) {
        all.push_back(withPrivate(plain));
        plain = plain.starts_with("/private/") ? plain.substr(8) : "";
    }
    return all;
}

std::string nameOf(const std::string& path)
{
    return path == "/" ? path : path.substr(path.rfind('/') + 1);
}

std::string extensionOf(const std::string& name)
{
    const auto dot = name.rfind('.');
    if (dot == std::string::npos || dot == 0)
        return "";
    std::string extension = name.substr(dot + 1);
    std::ranges::transform(extension, extension.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

bool holds(const Texts& list, const std::string& text)
{
    return std::ranges::count(list, text) != 0;
}

/// The first of `folders` that `isAbove`; empty when none is.
template<typename Condition>
std::string firstOf(const Texts& folders, Condition isAbove)
{
    const auto found = std::ranges::find_if(folders, isAbove);
    return found == folders.end() ? "" : *found;
}

Rating rate(const std::string& path, const std::string& home)
{
    const std::string name = "'" + nameOf(path) + "'";
    const std::string extension = extensionOf(nameOf(path));
    const bool isApp = path.ends_with(".app");
    const auto begins = [&](const std::string& entry) { return path.starts_with(entry); };
    if (holds(dangerousExtensions, extension))
        return {"blocked", "This file (" + extension +
                               ") contains encryption keys or passwords. Deleting it will cause "
                               "irreversible data loss."};
    if (holds(blockedPaths, path))
        return {"blocked", name + " is a system-critical directory. Deleting it will break macOS."};
    if (isApp && begins("/System/Applications"))
        return {"blocked", name + " is a system application and cannot be deleted."};
    if (begins("/usr/local/"))
        return {"caution", "Files in /usr/local/ are user-installed (e.g., Homebrew). Deleting "
                           "may break installed tools."};
    if (const std::string entry = firstOf(blockedPrefixes, begins); !entry.empty())
        return {"blocked", "Files in " + entry +
                               " are protected by System Integrity Protection (SIP). They cannot "
                               "be deleted."};
    if (isApp && begins("/Applications/"))
        return {"caution", name + " is an installed application. Uninstall properly to remove all "
                                  "associated data."};
    if (begins(home)) {
        const std::string relative = path.size() > home.size() ? path.substr(home.size() + 1) : "";
        const auto isAbove = [&](const std::string& entry) { return isOrBelow(relative, entry); };
        if (const std::string entry = firstOf(homeBlockedPaths, isAbove); !entry.empty())
            return {"blocked", "'" + entry +
                                   "' contains security credentials (passwords, keys, tokens). "
                                   "Deleting it will lock you out of services."};
        if (const std::string entry = firstOf(homeWarningPaths, isAbove); !entry.empty())
            return {"warning", "'" + entry +
                                   "' contains important user data. Deleting it may cause data "
                                   "loss. Make a backup first."};
        const std::string support = "Library/Application Support/";
        if (relative.starts_with(support) && relative.size() > support.size()) {
            const std::string rest = relative.substr(support.size());
            return {"caution", "Application data for '" + rest.substr(0, rest.find('/')) +
                                   "'. Deleting may reset the app or cause data loss."};
        }
    }
    if (const std::string entry = firstOf(cautionPrefixes, begins); !entry.empty())
        return {"caution", "Files in " + entry +
                               " may affect system services or applications. Review before "
                               "deleting."};
    return {"safe", ""};
}

const Texts levels = listed("safe, caution, warning, blocked");

int gravity(const Rating& rating)
{
    return static_cast<int>(std::ranges::find(levels, rating.level) - levels.begin());
}

} // namespace

Rating check(const std::string& path, const std::string& home)
{
    const Texts all = spellings(path, home);
    if (all.empty())
        return {"blocked", "'" + path + "' does not say where it lies. It cannot be deleted."};
    const std::string ownHome = spellings(home, home).back();
    Rating gravest{"safe", ""};
    for (const std::string& spelling : all) {
        const Rating rating = rate(spelling, ownHome);
        if (gravity(rating) > gravity(gravest))
            gravest = rating;
    }
    return gravest;
}

bool isCleanerSafe(const std::string& path, const std::string& home)
{
    if (spellings(path, home).empty())
        return false;
    const std::string plain = spellings(path, home).back();
    const std::string ownHome = spellings(home, home).back();
    const auto begins = [&](const std::string& area) { return plain.starts_with(ownHome + area); };
    const auto isAbove = [&](const std::string& area) { return isOrBelow(plain, ownHome + area); };
    return plain.starts_with("/private/var/folders/") ||
           std::ranges::any_of(cleanerAreas, begins) ||
           std::ranges::any_of(cleanerFolders, isAbove) || gravity(check(path, home)) <= 1;
}

Texts tablePaths(const std::string& home)
{
    Texts paths = {"/usr/local", "/System/Applications", "/Applications",
                   home + "/Library/Application Support"};
    const auto add = [&](const std::string& base, const std::vector<const Texts*>& tables) {
        for (const Texts* table : tables) {
            for (const std::string& entry : *table)
                paths.push_back(base + entry.substr(0, entry.size() - (entry.back() == '/')));
        }
    };
    add("", {&blockedPaths, &blockedPrefixes, &cautionPrefixes});
    add(home + "/", {&homeBlockedPaths, &homeWarningPaths});
    add(home, {&cleanerAreas, &cleanerFolders});
    return paths;
}

} // namespace brivane::naive
