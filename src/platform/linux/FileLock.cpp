#include "platform/FileLock.h"

#include "platform/linux/PathPlace.h"

#include <sys/file.h>

namespace brivane {

using namespace posix;

namespace {

/// How often a file that is replaced just then is tried anew.
constexpr int mostTries = 8;

/// For writing where that is allowed: NFS asks that of who wants to keep all others out.
int openLock(const PathPlace& place, FileDescriptor& file)
{
    const auto open = [&](int access) {
        return openAt(place.folder(), place.name(), access | O_CREAT | O_NONBLOCK | O_NOCTTY, file,
                      0600);
    };
    const int code = open(O_RDWR);
    return code == EACCES ? open(O_RDONLY) : code;
}

int claim(const PathPlace& place, FileDescriptor& file)
{
    int code = openLock(place, file);
    FileStatus status;
    if (code == 0)
        code = readStatus(file.get(), status);
    if (code == 0 && !S_ISREG(status.mode))
        code = EINVAL;
    if (code == 0)
        code = errorOf([&] { return ::flock(file.get(), LOCK_EX | LOCK_NB); });
    // A lock on a file that is no longer there keeps nobody out.
    FileStatus named;
    if (code == 0 && (readStatus(place.folder(), place.name(), named) != 0 ||
                      !named.identity.isSameObject(status.identity)))
        code = ESTALE;
    return code;
}

/// Where folders cannot be claimed, the file has to do.
int claimFolder(const PathPlace& place, FileDescriptor& folder)
{
    if (openFolder(place.folder(), ".", folder) != 0)
        return 0;
    const int code = errorOf([&] { return ::flock(folder.get(), LOCK_EX | LOCK_NB); });
    if (code != 0)
        folder.close();
    return code == EWOULDBLOCK ? code : 0;
}

} // namespace

Result<FileLock> FileLock::take(const QString& path)
{
    const auto place = PathPlace::find(path, FileOperation::Open);
    if (!place)
        return place.error();
    FileDescriptor file;
    int code = ESTALE;
    for (int tries = 0; code == ESTALE && tries < mostTries; ++tries)
        code = claim(*place, file);
    FileDescriptor folder;
    if (code == 0)
        code = claimFolder(*place, folder);
    if (code != 0)
        return place->error(code, FileOperation::Open);
    return FileLock(path, std::move(file), std::move(folder));
}

Result<> FileLock::check() const
{
    const auto place = PathPlace::find(m_path, FileOperation::Open);
    if (!place)
        return place.error();
    FileStatus held;
    FileStatus named;
    int code =
        m_folder.isValid() ? readStatus(m_folder.get(), held) : readStatus(m_file.get(), held);
    if (code == 0) {
        code = m_folder.isValid() ? readStatus(place->folder(), named)
                                  : readStatus(place->folder(), place->name(), named);
    }
    if (code != 0 || !named.identity.isSameObject(held.identity))
        return place->error(ESTALE, FileOperation::Open);
    return {};
}

} // namespace brivane
