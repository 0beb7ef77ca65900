#pragma once

#include "cleaner/CleanerCategory.h"

namespace brivane {

/// A folder of junk that is known by its place.
struct NamedPlace {
    CleanerCategory::CategoryType type;
    QStringView name;
    QStringView path; ///< of the catalogue
};

/// In the order in which they are looked at.
inline constexpr NamedPlace namedPlaces[] = {
    {CleanerCategory::CategoryType::browserCaches, u"Safari", u"~/Library/Caches/com.apple.Safari"},
    {CleanerCategory::CategoryType::browserCaches, u"Safari Previews",
     u"~/Library/Caches/com.apple.Safari.SafeBrowsing"},
    {CleanerCategory::CategoryType::browserCaches, u"Chrome", u"~/Library/Caches/Google/Chrome"},
    {CleanerCategory::CategoryType::browserCaches, u"Chrome (alt)",
     u"~/Library/Application Support/Google/Chrome/Default/Cache"},
    {CleanerCategory::CategoryType::browserCaches, u"Firefox", u"~/Library/Caches/Firefox"},
    {CleanerCategory::CategoryType::browserCaches, u"Brave", u"~/Library/Caches/BraveSoftware"},
    {CleanerCategory::CategoryType::browserCaches, u"Edge", u"~/Library/Caches/Microsoft Edge"},
    {CleanerCategory::CategoryType::browserCaches, u"Opera",
     u"~/Library/Caches/com.operasoftware.Opera"},
    {CleanerCategory::CategoryType::browserCaches, u"Arc",
     u"~/Library/Caches/company.thebrowser.Browser"},
    {CleanerCategory::CategoryType::systemLogs, u"Crash Reports",
     u"~/Library/Logs/DiagnosticReports"},
    {CleanerCategory::CategoryType::systemLogs, u"Analytics", u"~/Library/Logs/CoreSimulator"},
    {CleanerCategory::CategoryType::iTunesTemp, u"Music Cache",
     u"~/Library/Caches/com.apple.Music"},
    {CleanerCategory::CategoryType::iTunesTemp, u"Podcasts Cache",
     u"~/Library/Caches/com.apple.podcasts"},
    {CleanerCategory::CategoryType::mailCaches, u"Mail Downloads",
     u"~/Library/Containers/com.apple.mail/Data/Library/Mail Downloads"},
    {CleanerCategory::CategoryType::mailCaches, u"Mail Caches", u"~/Library/Caches/com.apple.mail"},
    {CleanerCategory::CategoryType::xcodeJunk, u"Derived Data",
     u"~/Library/Developer/Xcode/DerivedData"},
    {CleanerCategory::CategoryType::xcodeJunk, u"Archives", u"~/Library/Developer/Xcode/Archives"},
    {CleanerCategory::CategoryType::xcodeJunk, u"iOS Device Logs",
     u"~/Library/Developer/Xcode/iOS Device Logs"},
    {CleanerCategory::CategoryType::xcodeJunk, u"Old Simulators",
     u"~/Library/Developer/CoreSimulator/Caches"},
    {CleanerCategory::CategoryType::xcodeJunk, u"Simulator Runtime",
     u"~/Library/Developer/CoreSimulator/Devices"},
    {CleanerCategory::CategoryType::xcodeJunk, u"Xcode Cache",
     u"~/Library/Caches/com.apple.dt.Xcode"},
    {CleanerCategory::CategoryType::xcodeJunk, u"Swift Package Cache",
     u"~/Library/Caches/org.swift.swiftpm"},
    {CleanerCategory::CategoryType::xcodeJunk, u"Previews",
     u"~/Library/Developer/Xcode/UserData/Previews"},
    {CleanerCategory::CategoryType::dockerData, u"Docker Desktop Data",
     u"~/Library/Containers/com.docker.docker/Data"},
    {CleanerCategory::CategoryType::dockerData, u"Docker Caches",
     u"~/Library/Caches/com.docker.docker"},
    {CleanerCategory::CategoryType::dockerData, u"Docker Logs", u"~/Library/Logs/Docker"},
    {CleanerCategory::CategoryType::homebrewCache, u"Homebrew Downloads",
     u"~/Library/Caches/Homebrew"},
    {CleanerCategory::CategoryType::homebrewCache, u"Homebrew Logs", u"~/Library/Logs/Homebrew"},
    {CleanerCategory::CategoryType::vsCodeCache, u"VS Code Cache",
     u"~/Library/Application Support/Code/Cache"},
    {CleanerCategory::CategoryType::vsCodeCache, u"VS Code CachedData",
     u"~/Library/Application Support/Code/CachedData"},
    {CleanerCategory::CategoryType::vsCodeCache, u"VS Code Workspaces",
     u"~/Library/Application Support/Code/User/workspaceStorage"},
    {CleanerCategory::CategoryType::vsCodeCache, u"VS Code Logs",
     u"~/Library/Application Support/Code/logs"},
    {CleanerCategory::CategoryType::vsCodeCache, u"Cursor Cache",
     u"~/Library/Application Support/Cursor/Cache"},
    {CleanerCategory::CategoryType::vsCodeCache, u"Cursor CachedData",
     u"~/Library/Application Support/Cursor/CachedData"},
    {CleanerCategory::CategoryType::vsCodeCache, u"Cursor Workspaces",
     u"~/Library/Application Support/Cursor/User/workspaceStorage"},
    {CleanerCategory::CategoryType::vsCodeCache, u"Cursor Logs",
     u"~/Library/Application Support/Cursor/logs"},
    {CleanerCategory::CategoryType::nodeModules, u"npm Cache", u"~/.npm/_cacache"},
    {CleanerCategory::CategoryType::nodeModules, u"npm Logs", u"~/.npm/_logs"},
    {CleanerCategory::CategoryType::nodeModules, u"Yarn Cache", u"~/Library/Caches/Yarn"},
    {CleanerCategory::CategoryType::nodeModules, u"pnpm Cache", u"~/Library/pnpm/store"},
};

} // namespace brivane
