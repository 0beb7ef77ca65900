#include "platform/linux/FolderEntries.h"

#include <string_view>

namespace brivane::posix {

const dirent64* FolderEntries::next()
{
    for (;;) {
        if (m_at == m_size) {
            const ssize_t read = uninterrupted(
                [&] { return ::getdents64(m_folder, m_buffer.data(), m_buffer.size()); });
            if (read <= 0) {
                m_error = read < 0 ? errno : 0;
                return nullptr;
            }
            m_at = 0;
            m_size = static_cast<std::size_t>(read);
        }
        const void* record = m_buffer.data() + m_at;
        const auto* entry = static_cast<const dirent64*>(record);
        m_at += entry->d_reclen;
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            return entry;
    }
}

} // namespace brivane::posix
