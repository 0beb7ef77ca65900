#pragma once

#include "platform/FileWriting.h"

#include <QString>

// What lies in the store's folder beside what is stored: the files of the store itself.
namespace brivane::StoreNames {

inline const QString manifest = QStringLiteral(".manifest.json");
inline const QString lock = QStringLiteral(".lock");
inline const QString reserve = QStringLiteral(".reserve");
inline const QString journal = QStringLiteral(".restoring.json");

/// Whether `name` is the store's own. Everything else is something of the user's.
inline bool isOwn(const QString& name)
{
    const auto isOrWasAside = [&](const QString& own) {
        return name == own || name.startsWith(own + QStringLiteral(".damaged-"));
    };
    return isOrWasAside(manifest) || isOrWasAside(journal) || name == lock || name == reserve ||
           isTemporaryName(name);
}

} // namespace brivane::StoreNames
