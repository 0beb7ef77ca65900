#include "DiskState.h"

#include "platform/PathText.h"

#include <filesystem>
#include <stdexcept>

#include <sys/stat.h>

namespace brivane::testing {

namespace {

std::array<long, 10> factsOf(const std::string& path)
{
    struct stat is = {};
    if (::lstat(path.c_str(), &is) != 0)
        throw std::runtime_error(path);
    return {static_cast<long>(is.st_mode),
            static_cast<long>(is.st_ino),
            static_cast<long>(is.st_nlink),
            is.st_uid,
            is.st_gid,
            is.st_size,
            is.st_mtim.tv_sec,
            is.st_mtim.tv_nsec,
            is.st_ctim.tv_sec,
            is.st_ctim.tv_nsec};
}

} // namespace

DiskState DiskState::of(const QString& folder)
{
    DiskState state;
    const std::string top = PathText::toBytes(folder).toStdString();
    state.m_entries.emplace(top, factsOf(top));
    constexpr auto asUser = std::filesystem::directory_options::skip_permission_denied;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(top, asUser))
        state.m_entries.emplace(entry.path(), factsOf(entry.path()));
    return state;
}

QStringList DiskState::differences(const DiskState& other) const
{
    QStringList paths;
    for (const auto& [path, facts] : m_entries) {
        const auto there = other.m_entries.find(path);
        if (there == other.m_entries.end() || there->second != facts)
            paths += QString::fromStdString(path);
    }
    for (const auto& [path, facts] : other.m_entries) {
        if (!m_entries.contains(path))
            paths += QString::fromStdString(path);
    }
    return paths;
}

long DiskState::walkLength() const
{
    long length = 0;
    for (const auto& [path, facts] : m_entries)
        length += S_ISDIR(static_cast<mode_t>(facts[0])) ? 2 : 1;
    return length;
}

} // namespace brivane::testing
