#include "platform/linux/TrashRecord.h"

#include "platform/linux/PathPlace.h"

#include <algorithm>
#include <vector>

namespace brivane::posix {

namespace {

bool isUser(QByteArrayView text)
{
    return !text.isEmpty() &&
           std::ranges::all_of(text, [](char digit) { return digit >= '0' && digit <= '9'; });
}

/// How many of `components`, at the end of the way to a thing in it, are the Trash's own folder.
std::size_t lengthOfTrash(const std::vector<QByteArray>& components)
{
    constexpr QByteArrayView ofUser = ".Trash-";
    const std::size_t count = components.size();
    if (count < 3 || components[count - 2] != "files")
        return 0;
    const QByteArray& folder = components[count - 3];
    if (folder == "Trash" || (folder.startsWith(ofUser) && isUser(folder.sliced(ofUser.size()))))
        return 1;
    return count > 3 && components[count - 4] == ".Trash" && isUser(folder) ? 2 : 0;
}

} // namespace

std::optional<TrashRecord> TrashRecord::of(const QString& path)
{
    std::vector<QByteArray> components;
    if (splitPath(path, components) != 0)
        return {};
    const std::size_t length = lengthOfTrash(components);
    if (length == 0)
        return {};
    const std::size_t trashEnd = components.size() - 2;
    FileDescriptor trash;
    int code = stepInto(AT_FDCWD, "/", ParentLinks::Follow, trash);
    for (std::size_t i = 0; code == 0 && i < trashEnd; ++i) {
        const auto links = i < trashEnd - length ? ParentLinks::Follow : ParentLinks::Refuse;
        code = stepInto(trash.get(), components[i].constData(), links, trash);
    }
    TrashRecord record;
    if (code == 0)
        code = stepInto(trash.get(), "files", ParentLinks::Refuse, record.m_files);
    if (code == 0)
        code = stepInto(trash.get(), "info", ParentLinks::Refuse, record.m_info);
    if (code != 0)
        return {};
    record.m_name = components.back();
    return record;
}

void TrashRecord::removeWithoutThing() const
{
    const QByteArray record = m_name + ".trashinfo";
    FileStatus status;
    if (readStatus(m_files.get(), m_name.constData(), status) == ENOENT &&
        readStatus(m_info.get(), record.constData(), status) == 0 && S_ISREG(status.mode))
        (void)removeAt(m_info.get(), record.constData());
}

} // namespace brivane::posix
