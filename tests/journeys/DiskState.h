#pragma once

#include "platform/PathText.h"

#include <QStringList>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace brivane::testing {

/// What lies in a folder: each path in it with its kind, and of files the size and how the content
/// begins.
using DiskState =
    std::map<std::string, std::tuple<std::filesystem::file_type, std::uintmax_t, std::string>>;

inline DiskState diskState(const QString& folder)
{
    DiskState state;
    const std::filesystem::path top = PathText::toBytes(folder).toStdString();
    constexpr auto asUser = std::filesystem::directory_options::skip_permission_denied;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(top, asUser)) {
        auto& [kind, size, content] = state[entry.path()];
        kind = entry.symlink_status().type();
        if (kind != std::filesystem::file_type::regular)
            continue;
        size = entry.file_size();
        content.resize(std::min<std::uintmax_t>(size, 64));
        std::ifstream(entry.path()).read(content.data(), std::ssize(content));
    }
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
