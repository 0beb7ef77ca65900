#pragma once

#include "cleaner/CleanerCategory.h"

namespace brivane {

/// The categories that every machine has, in the order in which they are scanned and listed. Those
/// of developer tools follow where there are such tools.
inline constexpr CleanerCategory::CategoryType baseCategories[] = {
    CleanerCategory::CategoryType::applicationCaches,
    CleanerCategory::CategoryType::browserCaches,
    CleanerCategory::CategoryType::xcodeJunk,
    CleanerCategory::CategoryType::unusedDiskImages,
    CleanerCategory::CategoryType::applicationLogs,
    CleanerCategory::CategoryType::systemLogs,
    CleanerCategory::CategoryType::applicationLeftovers,
    CleanerCategory::CategoryType::iTunesTemp,
    CleanerCategory::CategoryType::mailCaches,
    CleanerCategory::CategoryType::downloads,
    CleanerCategory::CategoryType::trash,
    CleanerCategory::CategoryType::largeFiles,
    CleanerCategory::CategoryType::screenshots,
    CleanerCategory::CategoryType::iOSBackups,
};

} // namespace brivane
