#include "platform/linux/WalkStart.h"

#include <algorithm>
#include <cerrno>
#include <climits>

namespace brivane::walking {

WalkStart::WalkStart(std::string_view path)
{
    // To system calls it would be another path: one that ends there, or the working directory.
    if (path.empty() || path.find('\0') != std::string_view::npos) {
        m_error = path.empty() ? ENOENT : EINVAL;
        return;
    }
    while (path.size() >= PATH_MAX) {
        const std::size_t slash = path.rfind('/', PATH_MAX - 2);
        if (slash == std::string_view::npos) {
            m_error = ENAMETOOLONG;
            return;
        }
        const std::string step(path.substr(0, slash + 1));
        const int opened = ::openat(folder(), step.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        if (opened < 0) {
            m_error = errno;
            return;
        }
        m_folder = FileDescriptor(opened);
        // What is left leads on from there, and no more from the root.
        path.remove_prefix(std::min(path.find_first_not_of('/', slash), path.size()));
    }
    m_name = path.empty() ? "." : path;
}

} // namespace brivane::walking
