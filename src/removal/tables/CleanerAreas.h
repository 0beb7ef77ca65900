#pragma once

#include <QStringView>

namespace brivane::SafetyTables {

/// What may be cleaned whatever the other tables say: everything below these folders.
inline constexpr QStringView cleanerAreas[] = {
    u"/private/var/folders/",
};

/// The same, as what follows the home directory.
inline constexpr QStringView homeCleanerAreas[] = {
    u"/Library/Caches/",
    u"/Library/Logs/",
    u"/.Trash/",
    u"/Downloads/",
    u"/Library/Developer/Xcode/DerivedData/",
    u"/Library/Developer/Xcode/Archives/",
    u"/Library/Developer/CoreSimulator/Caches/",
    u"/Library/Caches/com.apple.dt.Xcode/",
    u"/Library/Caches/org.swift.swiftpm/",
};

/// As what follows the home directory: these folders themselves and everything below them.
inline constexpr QStringView homeCleanerFolders[] = {
    u"/Library/Containers/com.apple.mail/Data/Library/Mail Downloads",
    u"/Library/Containers/com.docker.docker/Data",
    u"/Library/Application Support/MobileSync/Backup",
};

} // namespace brivane::SafetyTables
