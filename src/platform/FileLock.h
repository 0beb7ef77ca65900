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
    ///
    /// The folder that holds the file is claimed as well, so that it keeps others out when somebody
    /// removes the file; but for file systems on which a folder cannot be claimed, as NFS.
    [[nodiscard]] static Result<FileLock> take(const QString& path);

    /// ESTALE when the path no longer leads to what is claimed: the folder was moved away or
    /// replaced, and what is done there now is not kept from anybody.
    [[nodiscard]] Result<> check() const;

private:
    FileLock(QString path, FileDescriptor file, FileDescriptor folder)
        : m_path(std::move(path))
        , m_file(std::move(file))
        , m_folder(std::move(folder))
    {
    }

    QString m_path;
    FileDescriptor m_file;
    FileDescriptor m_folder; ///< invalid where it cannot be claimed
};

} // namespace brivane
