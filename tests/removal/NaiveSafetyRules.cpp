#include "NaiveSafetyRules.h"

#include <algorithm>
#include <cctype>

namespace brivane::naive {

namespace {

const std::vector<std::string> dangerousExtensions = {"keychain-db", "keychain", "keybag"};

const std::vector<std::string> blockedPaths = {"/System",
                                               "/usr",
                                               "/bin",
                                               "/sbin",
                                               "/private",
                                               "/private/var",
                                               "/private/etc",
                                               "/private/tmp",
                                               "/cores",
                                               "/dev",
                                               "/etc",
                                               "/tmp",
                                               "/var",
                                               "/Volumes",
                                               "/private/var/db",
                                               "/private/var/db/SystemPolicyConfiguration",
                                               "/private/var/db/dslocal",
                                               "/private/var/db/ConfigurationProfiles",
                                               "/private/var/folders",
                                               "/private/var/run",
                                               "/private/var/log",
                                               "/private/var/audit",
                                               "/private/var/protected",
                                               "/Library/Apple",
                                               "/Library/Extensions",
                                               "/Library/Frameworks",
                                               "/Library/Sandbox",
                                               "/Library/Security",
                                               "/Library/SystemProfiler",
                                               "/Library/CoreMediaIO",
                                               "/Library/DirectoryServices",
                                               "/Library/Filesystems",
                                               "/Library/Keychains",
                                               "/Library/OpenDirectory",
                                               "/Library/SystemMigration",
                                               "/System/Library/CoreServices/boot.efi",
                                               "/Recovery"};

const std::vector<std::string> blockedPrefixes = {"/System/",
                                                  "/usr/bin/",
                                                  "/usr/sbin/",
                                                  "/usr/lib/",
                                                  "/usr/libexec/",
                                                  "/usr/share/",
                                                  "/usr/standalone/",
                                                  "/bin/",
                                                  "/sbin/",
                                                  "/dev/",
                                                  "/private/var/db/",
                                                  "/private/var/protected/",
                                                  "/private/var/audit/",
                                                  "/Library/Apple/",
                                                  "/Library/Extensions/",
                                                  "/Library/Frameworks/",
                                                  "/Library/Keychains/",
                                                  "/Library/Security/",
                                                  "/Library/Sandbox/"};

const std::vector<std::string> homeBlockedPaths = {"Library/Keychains",
                                                   ".ssh",
                                                   ".gnupg",
                                                   ".aws",
                                                   ".kube",
                                                   "Library/Accounts",
                                                   "Library/IdentityServices",
                                                   "Library/PersonalizationPortrait",
                                                   "Library/Biome",
                                                   "Library/DoNotDisturb"};

const std::vector<std::string> homeWarningPaths = {
    "Library/Mail",
    "Library/Messages",
    "Library/Calendars",
    "Library/Contacts",
    "Library/Notes",
    "Library/Safari",
    "Library/Cookies",
    "Library/Preferences",
    "Library/Containers",
    "Library/Group Containers",
    "Library/Saved Application State",
    "Pictures/Photos Library.photoslibrary",
    "Library/Photos",
    "Library/Music",
    "Music/Music",
    "Library/Application Support/com.apple.sharedfilelist",
    "Library/Application Support/AddressBook",
    "Library/Application Support/iCloud",
    "Library/Application Support/com.apple.TCC",
    "Library/Application Support/Knowledge",
    "Library/Fonts",
    "Library/LaunchAgents"};

const std::vector<std::string> cautionPrefixes = {"/Library/Caches/",
                                                  "/Library/Application Support/",
                                                  "/Library/Preferences/",
                                                  "/Library/Fonts/",
                                                  "/Library/LaunchAgents/",
                                                  "/Library/LaunchDaemons/",
                                                  "/Library/PrivilegedHelperTools/",
                                                  "/Library/Audio/",
                                                  "/Library/Input Methods/",
                                                  "/Library/PreferencePanes/",
                                                  "/Library/Spotlight/",
                                                  "/Library/QuickLook/",
                                                  "/Applications/"};

const std::vector<std::string> cleanerAreas = {"/Library/Caches/",
                                               "/Library/Logs/",
                                               "/.Trash/",
                                               "/Downloads/",
                                               "/Library/Developer/Xcode/DerivedData/",
                                               "/Library/Developer/Xcode/Archives/",
                                               "/Library/Developer/CoreSimulator/Caches/",
                                               "/Library/Caches/com.apple.dt.Xcode/",
                                               "/Library/Caches/org.swift.swiftpm/"};

const std::vector<std::string> cleanerFolders = {
    "/Library/Containers/com.apple.mail/Data/Library/Mail Downloads",
    "/Library/Containers/com.docker.docker/Data", "/Library/Application Support/MobileSync/Backup"};

bool startsWith(const std::string& text, const std::string& prefix)
{
    return text.substr(0, prefix.size()) == prefix;
}

bool endsWith(const std::string& text, const std::string& suffix)
{
    return text.size() >= suffix.size() && text.substr(text.size() - suffix.size()) == suffix;
}

bool isOrBelow(const std::string& path, const std::string& folder)
{
    return path == folder || startsWith(path, folder + "/");
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
    if (path == "~" || startsWith(path, "~/"))
        path = home + path.substr(1);
    if (!startsWith(path, "/"))
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

Rating rate(const std::string& path, const std::string& home)
{
    const std::string name = nameOf(path);
    const std::string extension = extensionOf(name);
    if (std::ranges::count(dangerousExtensions, extension) != 0)
        return {"blocked", "This file (" + extension +
                               ") contains encryption keys or passwords. Deleting it will cause "
                               "irreversible data loss."};
    if (std::ranges::count(blockedPaths, path) != 0)
        return {"blocked",
                "'" + name + "' is a system-critical directory. Deleting it will break macOS."};
    if (endsWith(path, ".app") && startsWith(path, "/System/Applications"))
        return {"blocked", "'" + name + "' is a system application and cannot be deleted."};
    if (startsWith(path, "/usr/local/"))
        return {"caution", "Files in /usr/local/ are user-installed (e.g., Homebrew). Deleting "
                           "may break installed tools."};
    for (const std::string& entry : blockedPrefixes) {
        if (startsWith(path, entry))
            return {"blocked", "Files in " + entry +
                                   " are protected by System Integrity Protection (SIP). They "
                                   "cannot be deleted."};
    }
    if (endsWith(path, ".app") && startsWith(path, "/Applications/"))
        return {"caution", "'" + name +
                               "' is an installed application. Uninstall properly to remove all "
                               "associated data."};
    if (startsWith(path, home)) {
        const std::string relative = path.size() > home.size() ? path.substr(home.size() + 1) : "";
        for (const std::string& entry : homeBlockedPaths) {
            if (isOrBelow(relative, entry))
                return {"blocked", "'" + entry +
                                       "' contains security credentials (passwords, keys, "
                                       "tokens). Deleting it will lock you out of services."};
        }
        for (const std::string& entry : homeWarningPaths) {
            if (isOrBelow(relative, entry))
                return {"warning", "'" + entry +
                                       "' contains important user data. Deleting it may cause "
                                       "data loss. Make a backup first."};
        }
        const std::string support = "Library/Application Support/";
        if (startsWith(relative, support)) {
            std::string rest = relative.substr(support.size());
            rest = rest.substr(0, rest.find('/'));
            if (!rest.empty())
                return {"caution", "Application data for '" + rest +
                                       "'. Deleting may reset the app or cause data loss."};
        }
    }
    for (const std::string& entry : cautionPrefixes) {
        if (startsWith(path, entry))
            return {"caution", "Files in " + entry +
                                   " may affect system services or applications. Review before "
                                   "deleting."};
    }
    return {"safe", ""};
}

int gravity(const Rating& rating)
{
    const std::vector<std::string> levels = {"safe", "caution", "warning", "blocked"};
    return static_cast<int>(std::ranges::find(levels, rating.level) - levels.begin());
}

} // namespace

Rating check(const std::string& path, const std::string& home)
{
    const std::string plain = standardized(path, home);
    if (plain.empty())
        return {"blocked", "'" + path + "' does not say where it lies. It cannot be deleted."};
    // A disk on which no shorter path exists, and one on which every one does.
    const std::string ownHome = withPrivate(home);
    const Rating kept = rate(withPrivate(plain), ownHome);
    if (!startsWith(plain, "/private/"))
        return kept;
    const Rating dropped = rate(withPrivate(plain.substr(8)), ownHome);
    return gravity(dropped) > gravity(kept) ? dropped : kept;
}

bool isCleanerSafe(const std::string& path, const std::string& home)
{
    const std::string plain = standardized(path, home);
    if (plain.empty())
        return false;
    if (startsWith(plain, "/private/var/folders/"))
        return true;
    for (const std::string& area : cleanerAreas) {
        if (startsWith(plain, home + area))
            return true;
    }
    for (const std::string& folder : cleanerFolders) {
        if (isOrBelow(plain, home + folder))
            return true;
    }
    const std::string level = check(path, home).level;
    return level == "safe" || level == "caution";
}

std::vector<std::string> tablePaths(const std::string& home)
{
    std::vector<std::string> paths = {"/usr/local", "/System/Applications", "/Applications",
                                      home + "/Library/Application Support"};
    for (const auto* table : {&blockedPaths, &blockedPrefixes, &cautionPrefixes}) {
        for (const std::string& entry : *table)
            paths.push_back(entry.back() == '/' ? entry.substr(0, entry.size() - 1) : entry);
    }
    for (const auto* table : {&homeBlockedPaths, &homeWarningPaths}) {
        for (const std::string& entry : *table)
            paths.push_back(home + "/" + entry);
    }
    for (const auto* table : {&cleanerAreas, &cleanerFolders}) {
        for (const std::string& entry : *table)
            paths.push_back(home +
                            (entry.back() == '/' ? entry.substr(0, entry.size() - 1) : entry));
    }
    return paths;
}

} // namespace brivane::naive
