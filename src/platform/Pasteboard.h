#pragma once

#include <QString>

#include <memory>

namespace brivane {

/// What was copied last, for all programs of the desktop. GUI thread of a QGuiApplication.
class Pasteboard {
public:
    Pasteboard() = default;
    Pasteboard(const Pasteboard&) = delete;
    Pasteboard& operator=(const Pasteboard&) = delete;
    virtual ~Pasteboard() = default;

    static std::unique_ptr<Pasteboard> ofThisMachine();

    /// Puts `path` there in place of what was there: as text with exactly the path's bytes, and as
    /// nothing else, so that pasting writes the path and never copies the file.
    virtual void setPath(const QString& path) = 0;
};

} // namespace brivane
