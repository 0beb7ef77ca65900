#include "NaiveSafetyRules.h"

#include "removal/tables/BlockedPaths.h"
#include "removal/tables/BlockedPrefixes.h"
#include "removal/tables/CautionPrefixes.h"
#include "removal/tables/CleanerAreas.h"
#include "removal/tables/DangerousExtensions.h"
#include "removal/tables/HomeBlockedPaths.h"
#include "removal/tables/HomeWarningPaths.h"

#include <QString>

#include <algorithm>
#include <cctype>
#include <span>

namespace brivane::naive {

namespace {

Texts texts(std::span<const QStringView> table)
{
    Texts all;
    for (const QStringView entry : table)
        all.push_back(entry.toString().toStdString());
    return all;
}

const Texts dangerousExtensions = texts(SafetyTables::dangerousExtensions);
const Texts blockedPaths = texts(SafetyTables::blockedPaths);
const Texts blockedPrefixes = texts(SafetyTables::blockedPrefixes);
const Texts homeBlockedPaths = texts(SafetyTables::homeBlockedPaths);
const Texts homeWarningPaths = texts(SafetyTables::homeWarningPaths);
const Texts cautionPrefixes = texts(SafetyTables::cautionPrefixes);
const Texts cleanerAreas = texts(SafetyTables::homeCleanerAreas);
const Texts cleanerFolders = texts(SafetyTables::homeCleanerFolders);

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
        return {"blocked", "(" + extension + ")"};
    if (holds(blockedPaths, path))
        return {"blocked", name};
    if (isApp && begins("/System/Applications"))
        return {"blocked", name};
    if (begins("/usr/local/"))
        return {"caution", "/usr/local/"};
    if (const std::string entry = firstOf(blockedPrefixes, begins); !entry.empty())
        return {"blocked", entry};
    if (isApp && begins("/Applications/"))
        return {"caution", name};
    if (begins(home)) {
        const std::string relative = path.size() > home.size() ? path.substr(home.size() + 1) : "";
        const auto isAbove = [&](const std::string& entry) { return isOrBelow(relative, entry); };
        if (const std::string entry = firstOf(homeBlockedPaths, isAbove); !entry.empty())
            return {"blocked", "'" + entry + "'"};
        if (const std::string entry = firstOf(homeWarningPaths, isAbove); !entry.empty())
            return {"warning", "'" + entry + "'"};
        const std::string support = "Library/Application Support/";
        if (relative.starts_with(support) && relative.size() > support.size()) {
            const std::string rest = relative.substr(support.size());
            return {"caution", "'" + rest.substr(0, rest.find('/')) + "'"};
        }
    }
    if (const std::string entry = firstOf(cautionPrefixes, begins); !entry.empty())
        return {"caution", entry};
    return {"safe", ""};
}

const Texts levels = {"safe", "caution", "warning", "blocked"};

int gravity(const Rating& rating)
{
    return static_cast<int>(std::ranges::find(levels, rating.level) - levels.begin());
}

} // namespace

Rating check(const std::string& path, const std::string& home)
{
    const Texts all = spellings(path, home);
    if (all.empty())
        return {"blocked", "'" + path + "'"};
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
