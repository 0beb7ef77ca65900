#pragma once

#include "cleaner/CleanerCategory.h"

namespace brivane {

/// A place that shows that a developer tool is here.
struct DeveloperTool {
    CleanerCategory::CategoryType type;
    QStringView path; ///< of the catalogue
};

/// In the order in which their categories come; any one place is enough.
inline constexpr DeveloperTool developerTools[] = {
    {CleanerCategory::CategoryType::dockerData, u"~/Library/Containers/com.docker.docker"},
    {CleanerCategory::CategoryType::dockerData, u"/Applications/Docker.app"},
    {CleanerCategory::CategoryType::nodeModules, u"~/.npm"},
    {CleanerCategory::CategoryType::nodeModules, u"/usr/local/bin/node"},
    {CleanerCategory::CategoryType::nodeModules, u"/opt/homebrew/bin/node"},
    {CleanerCategory::CategoryType::homebrewCache, u"/opt/homebrew"},
    {CleanerCategory::CategoryType::homebrewCache, u"/usr/local/Homebrew"},
    {CleanerCategory::CategoryType::homebrewCache, u"~/Library/Caches/Homebrew"},
    {CleanerCategory::CategoryType::vsCodeCache, u"/Applications/Visual Studio Code.app"},
    {CleanerCategory::CategoryType::vsCodeCache, u"~/Library/Application Support/Code"},
    {CleanerCategory::CategoryType::vsCodeCache, u"/Applications/Cursor.app"},
    {CleanerCategory::CategoryType::vsCodeCache, u"~/Library/Application Support/Cursor"},
};

} // namespace brivane
