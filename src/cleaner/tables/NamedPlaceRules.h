#pragma once

#include "cleaner/CleanerCategory.h"

namespace brivane {

/// How the named places of a category are listed.
struct NamedPlaceRule {
    CleanerCategory::CategoryType type;
    quint64 minSize; ///< bytes; only what is larger is listed
    QStringView icon;
};

inline constexpr NamedPlaceRule namedPlaceRules[] = {
    {CleanerCategory::CategoryType::browserCaches, 0, u"globe"},
    {CleanerCategory::CategoryType::systemLogs, 1024, u"gearshape.fill"},
    {CleanerCategory::CategoryType::iTunesTemp, 0, u"music.note"},
    {CleanerCategory::CategoryType::mailCaches, 0, u"envelope.fill"},
    {CleanerCategory::CategoryType::xcodeJunk, 1024, u"hammer.fill"},
    {CleanerCategory::CategoryType::dockerData, 1024, u"shippingbox.fill"},
    {CleanerCategory::CategoryType::homebrewCache, 1024, u"mug.fill"},
    {CleanerCategory::CategoryType::vsCodeCache, 1024, u"chevron.left.forwardslash.chevron.right"},
    {CleanerCategory::CategoryType::nodeModules, 1024, u"cube.fill"},
};

} // namespace brivane
