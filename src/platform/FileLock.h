#pragma once

#include "platform/FileDescriptor.h"
#include "platform/Result.h"

#include <QString>

namespace brivane {

/// The claim of this process, or rather of this object, to be the only one that works on something.
/// It holds on an open file, against every other program on the machine (and on others, where the
/// file system says so across the network), and ends with the object or the process, however that
/// ends. Any thread.
class FileLock {
public:
    /// Claims the file at `path`, which is made where it is missing; no link is followed there.
    /// EWOULDBLOCK when somebody else has it. Never waits for that.
    [[nodiscard]] static Result<FileLock> take(const QString& path);

private:
    explicit FileLock(FileDescriptor file)
        : m_file(std::move(file))
    {
    }

    FileDescriptor m_file;
};

} // namespace brivane
