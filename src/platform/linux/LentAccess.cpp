#include "platform/linux/LentAccess.h"

#include <grp.h>

namespace brivane::posix {

namespace {

/// Also for a descriptor that was opened by O_PATH, which fchmod refuses.
int changeMode(int folder, mode_t mode)
{
    const int code = errorOf([&] { return ::fchmod(folder, mode); });
    if (code != EBADF)
        return code;
    const QByteArray path = "/proc/self/fd/" + QByteArray::number(folder);
    return errorOf([&] { return ::fchmodat(AT_FDCWD, path.constData(), mode, 0); });
}

/// The system silently takes the set-group bit where its group is not one of the user's.
bool canBeSetAgain(const FileStatus& status)
{
    return (status.mode & S_ISGID) == 0 || status.group == ::getegid() ||
           ::group_member(status.group) != 0;
}

} // namespace

int LentAccess::lend(int folder)
{
    FileStatus status;
    if (m_mode)
        return EACCES;
    if (const int code = readStatus(folder, status))
        return code;
    if (!status.isDirectory() || status.owner != ::geteuid() ||
        (status.mode & S_IRWXU) == S_IRWXU || !canBeSetAgain(status))
        return EACCES;
    const mode_t mode = status.mode & 07777;
    const int code = changeMode(folder, mode | S_IRWXU);
    if (code == 0)
        m_mode = mode;
    return code;
}

int LentAccess::open(int folder, FileDescriptor& opened)
{
    int code = lend(folder);
    if (code == 0)
        code = openFolder(folder, ".", opened);
    if (code != 0)
        giveBack(folder);
    return code;
}

void LentAccess::giveBack(int folder)
{
    if (m_mode)
        (void)changeMode(folder, *m_mode);
    m_mode.reset();
}

bool mayChange(int folder)
{
    return ::faccessat(folder, ".", W_OK | X_OK, AT_EACCESS) == 0;
}

int moveLending(const PathPlace& place, const FileStatus& found, const std::function<int()>& move,
                const std::function<bool()>& isElsewhereWritable)
{
    int code = move();
    if (code != EACCES || !found.isDirectory() || (found.mode & S_IWUSR) != 0 ||
        !mayChange(place.folder()) || (isElsewhereWritable && !isElsewhereWritable()))
        return code;
    FileDescriptor folder;
    FileStatus now;
    LentAccess access;
    if (stepInto(place.folder(), place.name(), ParentLinks::Refuse, folder) != 0 ||
        readStatus(folder.get(), now) != 0 || !now.identity.isSameObject(found.identity) ||
        access.lend(folder.get()) != 0)
        return code;
    code = move();
    access.giveBack(folder.get());
    return code;
}

} // namespace brivane::posix
