#pragma once

#include <QStringView>

namespace brivane::SafetyTables {

/// What services and applications of the whole machine use: everything below these folders.
inline constexpr QStringView cautionPrefixes[] = {
    u"/Library/Caches/",
    u"/Library/Application Support/",
    u"/Library/Preferences/",
    u"/Library/Fonts/",
    u"/Library/LaunchAgents/",
    u"/Library/LaunchDaemons/",
    u"/Library/PrivilegedHelperTools/",
    u"/Library/Audio/",
    u"/Library/Input Methods/",
    u"/Library/PreferencePanes/",
    u"/Library/Spotlight/",
    u"/Library/QuickLook/",
    u"/Applications/",
};

} // namespace brivane::SafetyTables
