#pragma once

#include <QString>

namespace brivane {

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
    /// One line that names the operation, the path as it may be shown, and the reason.
    [[nodiscard]] QString text() const;
};

} // namespace brivane
