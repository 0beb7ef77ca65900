#pragma once

#include <QStringView>

// The folders that are searched for what has no place of its own, in this order.
namespace brivane {

inline constexpr QStringView diskImageFolders[] = {u"~/Downloads", u"~/Desktop"};

inline constexpr QStringView leftoverFolders[] = {
    u"~/Library/Application Support",
    u"~/Library/Preferences",
    u"~/Library/Saved Application State",
};

/// Where projects are, for what their tools have put into them.
inline constexpr QStringView projectFolders[] = {
    u"~/Developer",
    u"~/Projects",
    u"~/Documents",
    u"~/Desktop",
};

inline constexpr QStringView largeFileFolders[] = {u"~/Library"};

inline constexpr QStringView backupFolder = u"~/Library/Application Support/MobileSync/Backup";

inline constexpr QStringView screenshotFolders[] = {u"~/Desktop"};

} // namespace brivane
