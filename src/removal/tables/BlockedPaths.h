#pragma once

#include <QStringView>

namespace brivane::SafetyTables {

/// Folders and files without which the system does not run: these paths themselves.
inline constexpr QStringView blockedPaths[] = {
    u"/System",
    u"/usr",
    u"/bin",
    u"/sbin",
    u"/private",
    u"/private/var",
    u"/private/etc",
    u"/private/tmp",
    u"/cores",
    u"/dev",
    u"/etc",
    u"/tmp",
    u"/var",
    u"/Volumes",
    u"/private/var/db",
    u"/private/var/db/SystemPolicyConfiguration",
    u"/private/var/db/dslocal",
    u"/private/var/db/ConfigurationProfiles",
    u"/private/var/folders",
    u"/private/var/run",
    u"/private/var/log",
    u"/private/var/audit",
    u"/private/var/protected",
    u"/Library/Apple",
    u"/Library/Extensions",
    u"/Library/Frameworks",
    u"/Library/Sandbox",
    u"/Library/Security",
    u"/Library/SystemProfiler",
    u"/Library/CoreMediaIO",
    u"/Library/DirectoryServices",
    u"/Library/Filesystems",
    u"/Library/Keychains",
    u"/Library/OpenDirectory",
    u"/Library/SystemMigration",
    u"/System/Library/CoreServices/boot.efi",
    u"/Recovery",
};

} // namespace brivane::SafetyTables
