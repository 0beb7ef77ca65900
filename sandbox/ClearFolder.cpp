#include "sandbox/ClearFolder.h"

#include "platform/FileDescriptor.h"

#include <cstring>
#include <memory>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brivane {

namespace {

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
};

/// Removes what is no folder, and folders that are empty. The names of the others.
std::vector<QByteArray> clearLevel(int folder)
{
    std::vector<QByteArray> remaining;
    const int own = ::openat(folder, ".", folderFlags);
    const std::unique_ptr<DIR, CloseDirectory> directory(own < 0 ? nullptr : ::fdopendir(own));
    while (directory != nullptr) {
        const dirent* entry = ::readdir(directory.get());
        if (entry == nullptr)
            break;
        const char* name = entry->d_name;
        if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0)
            continue;
        if (::unlinkat(folder, name, 0) == 0 || ::unlinkat(folder, name, AT_REMOVEDIR) == 0)
            continue;
        remaining.emplace_back(name);
    }
    return remaining;
}

} // namespace

bool clearFolder(const QByteArray& folder)
{
    ::chmod(folder.constData(), S_IRWXU);
    const FileDescriptor top(::open(folder.constData(), folderFlags));
    if (!top.isValid())
        return false;
    // Each pass moves the folders of the second level up into the first and thus empties the first.
    // Neither the stack nor the number of open files grows with the depth of the tree.
    quint64 moved = 0;
    for (;;) {
        const std::vector<QByteArray> level = clearLevel(top.get());
        if (level.empty())
            break;
        bool progress = false;
        for (const QByteArray& name : level) {
            ::fchmodat(top.get(), name.constData(), S_IRWXU, 0);
            const FileDescriptor below(::openat(top.get(), name.constData(), folderFlags));
            if (!below.isValid())
                continue;
            for (const QByteArray& child : clearLevel(below.get())) {
                ::fchmodat(below.get(), child.constData(), S_IRWXU, 0);
                const QByteArray place = "cleared-" + QByteArray::number(moved++);
                progress |=
                    ::renameat(below.get(), child.constData(), top.get(), place.constData()) == 0;
            }
            progress |= ::unlinkat(top.get(), name.constData(), AT_REMOVEDIR) == 0;
        }
        if (!progress)
            return false;
    }
    return ::rmdir(folder.constData()) == 0;
}

} // namespace brivane
