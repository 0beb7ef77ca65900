#include "platform/FileError.h"

#include "platform/Locations.h"
#include "platform/PathText.h"

#include <cerrno>
#include <system_error>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

QString verb(FileOperation operation)
{
    switch (operation) {
    case FileOperation::Inspect:
        return u"inspect"_s;
    case FileOperation::Open:
        return u"open"_s;
    case FileOperation::List:
        return u"list"_s;
    case FileOperation::Read:
        return u"read"_s;
    case FileOperation::Write:
        return u"write"_s;
    case FileOperation::Sync:
        return u"sync"_s;
    case FileOperation::Copy:
        return u"copy"_s;
    case FileOperation::Move:
        return u"move"_s;
    case FileOperation::Trash:
        return u"move to the Trash"_s;
    case FileOperation::Remove:
        return u"remove"_s;
    case FileOperation::Make:
        return u"make"_s;
    }
    Q_UNREACHABLE();
}

QString line(const FileError& error, const QString& shownPath)
{
    return u"Cannot %1 “%2”: %3"_s.arg(verb(error.operation), shownPath, error.reason());
}

} // namespace

QString FileError::reason() const
{
    if (!detail.isEmpty())
        return detail;
    if (code == ESTALE)
        return u"It has changed in the meantime"_s;
    if (code == EXDEV)
        return u"It is on another volume"_s;
    return QString::fromStdString(std::generic_category().message(code));
}

QString FileError::text() const
{
    return line(*this, PathText::forDisplay(path));
}

QString FileError::text(const Locations& locations) const
{
    return line(*this, locations.shown(path));
}

} // namespace brivane
