#pragma once

#include <QStringView>

namespace brivane::SafetyTables {

/// What the system itself protects: everything below these folders.
inline constexpr QStringView blockedPrefixes[] = {
    u"/System/",
    u"/usr/bin/",
    u"/usr/sbin/",
    u"/usr/lib/",
    u"/usr/libexec/",
    u"/usr/share/",
    u"/usr/standalone/",
    u"/bin/",
    u"/sbin/",
    u"/dev/",
    u"/private/var/db/",
    u"/private/var/protected/",
    u"/private/var/audit/",
    u"/Library/Apple/",
    u"/Library/Extensions/",
    u"/Library/Frameworks/",
    u"/Library/Keychains/",
    u"/Library/Security/",
    u"/Library/Sandbox/",
};

} // namespace brivane::SafetyTables
