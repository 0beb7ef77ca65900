#pragma once

#include <QStringView>

#include <cstring>

// How paths are compared with the entries of tables, thousands of times a millisecond.
//
// A path is compared with an entry only where it has a slash at the entry's length, which few have:
// so a search through a whole table costs little more than one comparison. Texts are compared unit
// by unit; letter case counts.
namespace brivane::PathMatch {

/// Whether `text` starts with `start`, which is not empty.
inline bool startsWith(QStringView text, QStringView start)
{
    return text.size() >= start.size() &&
           std::memcmp(text.utf16(), start.utf16(), static_cast<std::size_t>(start.size()) * 2) ==
               0;
}

/// Whether both are the same; `entry` is not empty.
inline bool isSame(QStringView text, QStringView entry)
{
    return text.size() == entry.size() && startsWith(text, entry);
}

/// Whether `path` lies below `prefix`, which ends in a slash and is not taken for lying in itself
/// without it (for that, see platform/LiesIn.h).
inline bool liesBelow(QStringView path, QStringView prefix)
{
    return path.size() >= prefix.size() && path[prefix.size() - 1] == u'/' &&
           startsWith(path, prefix);
}

} // namespace brivane::PathMatch
