#pragma once

#include "platform/PathText.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <filesystem>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <sys/stat.h>

namespace brivane::testing {

/// What lies in a folder: each path in it with its mode, inode, links, size and the times of its
/// last changes. The very last of them also tells of owners and attributes.
using DiskState = std::map<std::string, std::array<long, 6>>;

inline DiskState diskState(const QString& folder)
{
    DiskState state;
    const auto add = [&](const std::string& path) {
        struct stat is = {};
        if (::lstat(path.c_str(), &is) != 0)
            throw std::runtime_error(path);
        const auto nanoseconds = [](const timespec& t) {
            return t.tv_sec * 1'000'000'000 + t.tv_nsec;
        };
        state[path] = {static_cast<long>(is.st_mode),  static_cast<long>(is.st_ino),
                       static_cast<long>(is.st_nlink), is.st_size,
                       nanoseconds(is.st_mtim),        nanoseconds(is.st_ctim)};
    };
    const std::string top = PathText::toBytes(folder).toStdString();
    add(top);
    constexpr auto asUser = std::filesystem::directory_options::skip_permission_denied;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(top, asUser))
        add(entry.path());
    return state;
}

/// The paths that are in one only, or differ: then they come twice.
inline QStringList differences(const DiskState& before, const DiskState& after)
{
    std::vector<DiskState::value_type> found;
    std::ranges::set_symmetric_difference(before, after, std::back_inserter(found));
    QStringList paths;
    for (const auto& [path, facts] : found)
        paths += QString::fromStdString(path);
    return paths;
}

} // namespace brivane::testing
