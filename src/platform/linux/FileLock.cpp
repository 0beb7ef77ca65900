#include "platform/FileLock.h"

#include "platform/linux/PathPlace.h"

#include <sys/file.h>

namespace brivane {

using namespace posix;

namespace {

/// How often a file that is replaced just then is tried anew.
constexpr int mostTries = 8;

int claim(const PathPlace& place, FileDescriptor& file)
{
    // For writing: network file systems lock nothing else for one alone.
    int code =
        openAt(place.folder(), place.name(), O_RDWR | O_CREAT | O_NONBLOCK | O_NOCTTY, file, 0600);
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
    if (code != 0)
        return place->error(code, FileOperation::Open);
    return FileLock(std::move(file));
}

} // namespace brivane
