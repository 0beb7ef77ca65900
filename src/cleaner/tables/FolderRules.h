#pragma once

#include "cleaner/CleanerCategory.h"

namespace brivane {

/// A folder of which everything that lies in it is junk.
struct FolderRule {
    CleanerCategory::CategoryType type;
    QStringView path;   ///< of the catalogue
    quint64 minSize;    ///< bytes of an entry; as many are enough
    bool hasExclusions; ///< whether what is covered elsewhere is left out
};

inline constexpr FolderRule folderRules[] = {
    {CleanerCategory::CategoryType::applicationCaches, u"~/Library/Caches", 1024, true},
    {CleanerCategory::CategoryType::applicationLogs, u"~/Library/Logs", 1024, false},
    {CleanerCategory::CategoryType::trash, u"~/.Trash", 0, false},
};

} // namespace brivane
