#pragma once

#include <QByteArrayView>
#include <QStringView>

#include <cstring>
#include <string_view>

// Whether a path lies in a folder: the one answer that the whole program gives.
//
// Whole components count: "/a/bc" does not lie in "/a/b". A folder lies in itself; slashes at its
// end make no difference, and everything absolute lies in "/". In an empty folder lies nothing.
// Letter case counts, and paths are compared as they are spelled: who has two spellings of a place
// brings them into one form before. Pure, any thread.
namespace brivane {

namespace detail {

/// Tables are searched with this thousands of times a millisecond: the one unit where `path` must
/// have a slash is looked at first, which few have, and the rest is compared in one go.
template<typename Unit>
bool liesIn(std::basic_string_view<Unit> path, std::basic_string_view<Unit> folder)
{
    constexpr Unit slash{'/'};
    if (folder.empty())
        return false;
    while (!folder.empty() && folder.back() == slash)
        folder.remove_suffix(1);
    return path.size() >= folder.size() &&
           (path.size() == folder.size() ? !path.empty() : path[folder.size()] == slash) &&
           std::memcmp(path.data(), folder.data(), folder.size() * sizeof(Unit)) == 0;
}

} // namespace detail

inline bool liesIn(QStringView path, QStringView folder)
{
    const auto units = [](QStringView text) {
        return std::u16string_view(text.utf16(), static_cast<std::size_t>(text.size()));
    };
    return detail::liesIn(units(path), units(folder));
}

inline bool liesIn(QByteArrayView path, QByteArrayView folder)
{
    const auto bytes = [](QByteArrayView text) {
        return std::string_view(text.data(), static_cast<std::size_t>(text.size()));
    };
    return detail::liesIn(bytes(path), bytes(folder));
}

} // namespace brivane
