#pragma once

#include <QStringView>

namespace brivane::SafetyTables {

/// Credentials, relative to the home directory: these and everything below them.
inline constexpr QStringView homeBlockedPaths[] = {
    u"Library/Keychains",
    u".ssh",
    u".gnupg",
    u".aws",
    u".kube",
    u"Library/Accounts",
    u"Library/IdentityServices",
    u"Library/PersonalizationPortrait",
    u"Library/Biome",
    u"Library/DoNotDisturb",
};

} // namespace brivane::SafetyTables
