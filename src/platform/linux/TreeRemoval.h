#pragma once

#include "platform/FileRemoval.h"
#include "platform/linux/SystemCall.h"

#include <QByteArray>

#include <functional>

namespace brivane::posix {

/// Says of an object whether it may be removed; one that may not is ESTALE and stays.
using RemovalFilter = std::function<bool(const FileStatus&)>;

/// What one removal is about: the object `name` in the open folder `folder`.
struct RemovalTarget {
    int folder = -1;
    QByteArray name;
    QString path; ///< for the report
    std::optional<FileIdentity> expected = {};
    RemovalFilter filter = {}; ///< asked about each object; none lets everything go
};

/// removeTree() for an object whose folder is open already.
[[nodiscard]] RemovalReport removeTarget(const RemovalTarget& target);

} // namespace brivane::posix
