#pragma once

#include "platform/PathText.h"

#include <QStringList>

#include <array>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>

#include <sys/stat.h>

namespace brivane::testing {

/// What lies in a folder: each path in it with all that the system tells of it, but for the time of
/// the last look.
using DiskState = std::map<std::string, std::array<long, 10>>;

inline DiskState diskState(const QString& folder)
{
    DiskState state;
    const auto add = [&](const std::string& path) {
        struct stat is = {};
        if (::lstat(path.c_str(), &is) != 0)
            throw std::runtime_error(path);
        state[path] = {static_cast<long>(is.st_mode),
                       static_cast<long>(is.st_ino),
                       static_cast<long>(is.st_nlink),
                       is.st_uid,
                       is.st_gid,
                       is.st_size,
                       is.st_mtim.tv_sec,
                       is.st_mtim.tv_nsec,
                       is.st_ctim.tv_sec,
                       is.st_ctim.tv_nsec};
    };
    const std::string top = PathText::toBytes(folder).toStdString();
    add(top);
    constexpr auto asUser = std::filesystem::directory_options::skip_permission_denied;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(top, asUser))
        add(entry.path());
    return state;
}

/// The paths that are in one only, or differ.
inline QStringList differences(const DiskState& before, const DiskState& after)
{
    QStringList paths;
    for (const auto& [path, facts] : before) {
        const auto there = after.find(path);
        if (there == after.end() || there->second != facts)
            paths += QString::fromStdString(path);
    }
    for (const auto& [path, facts] : after) {
        if (!before.contains(path))
            paths += QString::fromStdString(path);
    }
    return paths;
}

} // namespace brivane::testing
