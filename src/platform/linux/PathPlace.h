#pragma once

#include "platform/FileMove.h"
#include "platform/linux/SystemCall.h"

#include <QByteArray>

#include <vector>

namespace brivane::posix {

/// Where a path leads: the folder that holds it, open, and the name in it.
///
/// Everything that happens at the path is done from here, so that a folder on the way that is
/// swapped for a link afterwards changes nothing.
class PathPlace {
public:
    /// Opens all that leads to `path`, component by component: length does not matter. EINVAL for a
    /// path that is not absolute, has "." or ".." in it, holds a null byte, or is "/"; EILSEQ for
    /// one that stands for no bytes. Trailing slashes and doubled ones are passed over.
    [[nodiscard]] static Result<PathPlace> find(const QString& path, FileOperation operation,
                                                ParentLinks links = ParentLinks::Follow);

    [[nodiscard]] int folder() const { return m_folder.get(); }
    [[nodiscard]] const char* name() const { return m_name.constData(); }
    /// What stands there, with the folder as part of its identity.
    [[nodiscard]] int readStatus(FileStatus& status) const;
    /// The path as it was given.
    [[nodiscard]] const QString& path() const { return m_path; }
    [[nodiscard]] FileError error(int code, FileOperation operation) const
    {
        return {code, m_path, operation};
    }

private:
    FileDescriptor m_folder;
    QByteArray m_name;
    QString m_path;
};

/// The components of `path`, or the errno value that find() gives for it. Empty for "/".
[[nodiscard]] int splitPath(const QString& path, std::vector<QByteArray>& components);

/// Opens the folder `name` in `folder` as a step on the way to a path: no right to read is needed.
/// What a trusted link leads to is stepped through in the same way, one component after the other.
[[nodiscard]] int stepInto(int folder, const char* name, ParentLinks links, FileDescriptor& opened);

/// A name that nothing has yet, for something that is renamed or removed in a moment.
[[nodiscard]] QByteArray temporaryName();

} // namespace brivane::posix
