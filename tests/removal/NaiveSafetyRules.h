#pragma once

#include <string>
#include <vector>

// The safety rules once more, told as simply and slowly as can be, for comparison. Of
// the code under test only the tables are used. Paths are UTF-8.
namespace brivane::naive {

using Texts = std::vector<std::string>;

struct Rating {
    std::string level; ///< "safe", "caution", "warning" or "blocked"
    std::string named; ///< by the text, as why it is so
};

Rating check(const std::string& path, const std::string& home);
bool isCleanerSafe(const std::string& path, const std::string& home);

/// Every entry of every table as an absolute path, without a slash at its end.
Texts tablePaths(const std::string& home);

} // namespace brivane::naive
