#include "platform/linux/TrustedLink.h"

#include "platform/linux/SystemCall.h"

#include <climits>
#include <string_view>
#include <vector>

#include <grp.h>
#include <pwd.h>
#include <sys/xattr.h>

namespace brivane::posix {

namespace {

bool isOurs(uid_t owner)
{
    return owner == 0 || owner == ::geteuid();
}

/// Asks for a record of the user database by a call of the form of getpwuid_r.
template<typename Record, typename Call>
const Record* lookUp(Call call, Record& record, std::vector<char>& buffer)
{
    constexpr std::size_t enough = 1 << 20;
    Record* found = nullptr;
    int code = ERANGE;
    for (std::size_t size = 4096; code == ERANGE && size <= enough; size *= 2) {
        buffer.resize(size);
        code = call(&record, buffer.data(), size, &found);
    }
    return code == 0 ? found : nullptr;
}

/// Whether `group` is there for this user alone.
bool isPrivateGroup(gid_t group)
{
    if (group != ::getegid())
        return false;
    passwd userRecord = {};
    struct group groupRecord = {};
    std::vector<char> userBuffer;
    std::vector<char> groupBuffer;
    const passwd* user = lookUp([](auto... rest) { return ::getpwuid_r(::geteuid(), rest...); },
                                userRecord, userBuffer);
    const struct group* found = lookUp([&](auto... rest) { return ::getgrgid_r(group, rest...); },
                                       groupRecord, groupBuffer);
    if (!user || !found || user->pw_gid != group)
        return false;
    const std::string_view name = user->pw_name;
    for (char* const* member = found->gr_mem; *member; ++member) {
        if (name != *member)
            return false;
    }
    return name == found->gr_name;
}

/// Whether a folder has no entries for users and groups of their own, whose rights the mode shows
/// as the group's.
bool hasNoAccessList(int folder)
{
    FileDescriptor readable;
    if (openFolder(folder, ".", readable) != 0)
        return false;
    const int code =
        errorOf([&] { return ::fgetxattr(readable.get(), "system.posix_acl_access", nullptr, 0); });
    return code == ENODATA || code == ENOTSUP;
}

bool onlyWeMayWriteTo(int folder)
{
    FileStatus status;
    if (readStatus(folder, status) != 0 || !isOurs(status.owner) || (status.mode & S_IWOTH) != 0)
        return false;
    return (status.mode & S_IWGRP) == 0 ||
           (status.owner == ::geteuid() && isPrivateGroup(status.group) && hasNoAccessList(folder));
}

} // namespace

int readTrustedLink(int folder, const char* name, QByteArray& target)
{
    FileDescriptor link;
    FileStatus status;
    if (const int code = openAt(folder, name, O_PATH, link))
        return code;
    if (const int code = readStatus(link.get(), status))
        return code;
    if (!S_ISLNK(status.mode) || !isOurs(status.owner) || !onlyWeMayWriteTo(folder))
        return ENOTDIR;
    target.resize(PATH_MAX);
    const ssize_t size = uninterrupted([&] {
        return ::readlinkat(link.get(), "", target.data(), static_cast<std::size_t>(target.size()));
    });
    if (size < 0)
        return errno;
    target.resize(size);
    return 0;
}

} // namespace brivane::posix
