#pragma once

#include <QString>

namespace brivane {

class Locations;

/// What was being done to a file when it failed.
enum class FileOperation {
    Inspect,
    Open,
    List,
    Read,
    Write,
    Sync,
    Copy,
    Move,
    Trash,
    Remove,
    Make
};

/// Why something could not be done to one file. A plain value.
struct FileError {
    /// An errno value. Two of them have a meaning of their own here: ESTALE, the object at the path
    /// is not the one that was meant; EXDEV, the object lies on another volume.
    int code = 0;
    QString path;
    FileOperation operation = FileOperation::Inspect;
    /// The reason in the words of whoever refused, where that says more than `code` does.
    QString detail = {};

    /// The reason alone, as "Permission denied".
    [[nodiscard]] QString reason() const;
    /// One line that names the operation, the path and the reason: for the log, which names places
    /// as the system does, and for the user of the machine that `locations` tells of.
    [[nodiscard]] QString text() const;
    [[nodiscard]] QString text(const Locations& locations) const;
};

} // namespace brivane
