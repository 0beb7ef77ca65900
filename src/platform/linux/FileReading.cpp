#include "platform/FileReading.h"

#include "platform/linux/PathPlace.h"

namespace brivane {

using namespace posix;

Result<QByteArray> readWholeFile(const QString& path, qsizetype limit)
{
    const auto place = PathPlace::find(path, FileOperation::Read);
    if (!place)
        return place.error();
    // A FIFO is not waited for.
    const FileDescriptor file(uninterrupted([&] {
        return ::openat(place->folder(), place->name(),
                        O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    }));
    if (!file.isValid())
        return place->error(errno, FileOperation::Open);
    FileStatus status;
    if (const int code = readStatus(file.get(), status))
        return place->error(code, FileOperation::Inspect);
    if (!S_ISREG(status.mode))
        return place->error(EINVAL, FileOperation::Read);
    if (status.size > static_cast<quint64>(limit))
        return place->error(EFBIG, FileOperation::Read);
    QByteArray bytes;
    bytes.reserve(static_cast<qsizetype>(status.size));
    char buffer[16384];
    for (;;) {
        const ssize_t got =
            uninterrupted([&] { return ::read(file.get(), buffer, sizeof buffer); });
        if (got < 0)
            return place->error(errno, FileOperation::Read);
        if (got == 0)
            return bytes;
        if (got > limit - bytes.size()) // it has grown, or has no size to tell
            return place->error(EFBIG, FileOperation::Read);
        bytes.append(buffer, got);
    }
}

} // namespace brivane
