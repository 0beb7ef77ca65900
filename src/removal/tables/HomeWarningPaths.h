#pragma once

#include <QStringView>

namespace brivane::SafetyTables {

/// User data, relative to the home directory: these and everything below them.
inline constexpr QStringView homeWarningPaths[] = {
    u"Library/Mail",
    u"Library/Messages",
    u"Library/Calendars",
    u"Library/Contacts",
    u"Library/Notes",
    u"Library/Safari",
    u"Library/Cookies",
    u"Library/Preferences",
    u"Library/Containers",
    u"Library/Group Containers",
    u"Library/Saved Application State",
    u"Pictures/Photos Library.photoslibrary",
    u"Library/Photos",
    u"Library/Music",
    u"Music/Music",
    u"Library/Application Support/com.apple.sharedfilelist",
    u"Library/Application Support/AddressBook",
    u"Library/Application Support/iCloud",
    u"Library/Application Support/com.apple.TCC",
    u"Library/Application Support/Knowledge",
    u"Library/Fonts",
    u"Library/LaunchAgents",
};

} // namespace brivane::SafetyTables
