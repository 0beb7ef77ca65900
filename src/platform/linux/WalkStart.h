#pragma once

#include "platform/FileDescriptor.h"

#include <string>
#include <string_view>

#include <fcntl.h>

namespace brivane::walking {

/// Where a walk starts, such that system calls take it: paths may be longer than they accept.
class WalkStart {
public:
    WalkStart() = default;
    /// Opens the folders that lead to `path` as far as its length makes that needed. Links on the
    /// way are followed; what stands at its end is not touched.
    explicit WalkStart(std::string_view path);

    /// errno, when a folder on the way could not be opened.
    [[nodiscard]] int error() const { return m_error; }
    /// Where name() leads on from: a descriptor or AT_FDCWD.
    [[nodiscard]] int folder() const { return m_folder.isValid() ? m_folder.get() : AT_FDCWD; }
    [[nodiscard]] const char* name() const { return m_name.c_str(); }

private:
    FileDescriptor m_folder;
    std::string m_name;
    int m_error = 0;
};

} // namespace brivane::walking
