#pragma once

#include "platform/linux/SystemCall.h"

#include <array>
#include <cstddef>

#include <dirent.h>

namespace brivane::posix {

/// Lists a folder, one entry at a time and without "." and "..", in bounded memory. The order is
/// the file system's. Entries may be removed while the listing is under way.
class FolderEntries {
public:
    /// `folder` stays the caller's and stays open for as long as this is used.
    explicit FolderEntries(int folder)
        : m_folder(folder)
    {
    }

    /// The next entry, valid until the next call; null at the end and on an error.
    const dirent64* next();
    /// errno of the listing that broke off, else 0.
    [[nodiscard]] int error() const { return m_error; }

private:
    int m_folder;
    int m_error = 0;
    std::size_t m_at = 0;
    std::size_t m_size = 0;
    alignas(dirent64) std::array<std::byte, 32768> m_buffer;
};

} // namespace brivane::posix
