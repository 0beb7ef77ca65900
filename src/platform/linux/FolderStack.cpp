#include "platform/linux/FolderStack.h"

namespace brivane::posix {

namespace {

constexpr std::size_t openLevels = 16;

} // namespace

FolderStack::FolderStack(FileDescriptor root, const FileStatus& status)
{
    m_levels.push_back({{}, status.identity, std::move(root)});
}

QByteArray FolderStack::path() const
{
    QByteArray path;
    for (std::size_t i = 1; i < m_levels.size(); ++i)
        path += '/' + m_levels[i].name;
    return path;
}

void FolderStack::enter(QByteArray name, FileDescriptor opened, const FileStatus& status)
{
    m_levels.push_back({std::move(name), status.identity, std::move(opened)});
    if (m_levels.size() - m_firstOpen > openLevels)
        m_levels[m_firstOpen++].descriptor.close();
}

int FolderStack::leave(FileDescriptor& left)
{
    left = std::move(m_levels.back().descriptor);
    m_levels.pop_back();
    Level& level = m_levels.back();
    if (level.descriptor.isValid())
        return 0;
    m_firstOpen = m_levels.size() - 1;
    if (left.isValid() && reopen(left.get(), "..", level) == 0)
        return 0;
    return descendAgain();
}

int FolderStack::reopen(int folder, const char* name, Level& level)
{
    FileDescriptor opened;
    FileStatus status;
    if (const int code = openFolder(folder, name, opened))
        return code;
    if (const int code = readStatus(opened.get(), status))
        return code;
    if (!status.identity.isSameObject(level.identity))
        return ESTALE;
    level.descriptor = std::move(opened);
    return 0;
}

int FolderStack::descendAgain()
{
    Level step;
    int folder = root();
    for (std::size_t i = 1; i < m_levels.size(); ++i) {
        step.identity = m_levels[i].identity;
        if (const int code = reopen(folder, m_levels[i].name.constData(), step))
            return code;
        folder = step.descriptor.get();
    }
    m_levels.back().descriptor = std::move(step.descriptor);
    return 0;
}

} // namespace brivane::posix
