#pragma once

#include <string>
#include <vector>

// The safety rules once more, told as simply and slowly as can be, for comparison. Nothing here
// comes from the code under test; the tables are typed a second time. Paths are UTF-8.
namespace brivane::naive {

using Texts = std::vector<std::string>;

/// What stands in `text` between ", " and ", ".
Texts listed(const std::string& text);

struct Rating {
    std::string level; ///< "safe", "caution", "warning" or "blocked"
    std::string text;

    bool operator==(const Rating&) const = default;
};

Rating check(const std::string& path, const std::string& home);
bool isCleanerSafe(const std::string& path, const std::string& home);

/// Every entry of every table as an absolute path, without a slash at its end.
Texts tablePaths(const std::string& home);

} // namespace brivane::naive
