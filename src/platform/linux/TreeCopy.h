#pragma once

#include "platform/FileError.h"
#include "platform/linux/PathPlace.h"

#include <unordered_map>

namespace brivane::posix {

/// Each object that was copied, by inode, as it was at that time. All lie on one device.
class CopiedObjects {
public:
    void add(const FileStatus& status);
    /// Whether `status` is an object that was copied and has not changed since.
    [[nodiscard]] bool holds(const FileStatus& status) const;

private:
    std::unordered_map<std::uint64_t, FileIdentity> m_objects;
};

/// Copies the object at `from` that `found` describes to the free name `name` in `folder`, and
/// syncs each object. Another one at `from` is ESTALE. What is inside another mount, a socket or a
/// device file, or changes while it is copied, ends the copy with an error; what was copied so far
/// is then the caller's to remove. Folders of this user's that their mode locks are opened up while
/// they are read.
[[nodiscard]] Result<CopiedObjects> copyTree(const PathPlace& from, const FileStatus& found,
                                             int folder, const QByteArray& name);

} // namespace brivane::posix
