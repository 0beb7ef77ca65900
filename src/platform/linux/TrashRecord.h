#pragma once

#include "platform/FileDescriptor.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace brivane::posix {

/// What the Trash of a desktop has written down of a thing that lies directly in it: where that
/// came from, and when. The record is of no use without the thing.
///
/// A Trash has the things in "files" and beside it their records in "info". It is named "Trash", or
/// lies at the top of a volume as ".Trash-UID" or ".Trash/UID".
class TrashRecord {
public:
    /// The record of what lies at `path`, when that is a place in a Trash; whether there is one on
    /// disk is not asked. The folders of the Trash are opened now, no link is followed at them: so
    /// what happens to the path in between leads nowhere else.
    [[nodiscard]] static std::optional<TrashRecord> of(const QString& path);

    /// Removes the record, if it is a regular file and nothing stands at the thing's place by now.
    void removeWithoutThing() const;

private:
    FileDescriptor m_files;
    FileDescriptor m_info;
    QByteArray m_name;
};

} // namespace brivane::posix
