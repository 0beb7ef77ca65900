#pragma once

#include <QStringView>

namespace brivane::SafetyTables {

/// Extensions, in lower case, of files that hold keys or passwords.
inline constexpr QStringView dangerousExtensions[] = {
    u"keychain-db",
    u"keychain",
    u"keybag",
};

} // namespace brivane::SafetyTables
