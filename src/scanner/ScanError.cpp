#include "scanner/DiskScanner.h"

#include <cstring>

namespace brivane {

using namespace Qt::StringLiterals;
using ScanError = DiskScanner::ScanError;

ScanError::ScanError(Case which, const QString& description)
    : std::runtime_error(description.toStdString())
    , m_case(which)
    , m_description(description)
{
}

ScanError ScanError::invalidPath(const QString& path)
{
    return {Case::invalidPath, u"Invalid path: "_s + path};
}

ScanError ScanError::ftsOpenFailed(const QString& path, int error)
{
    return {Case::ftsOpenFailed, u"Failed to open "_s + path + u" for scanning: "_s +
                                     QString::fromLocal8Bit(std::strerror(error))};
}

ScanError ScanError::permissionDenied(const QString& path)
{
    return {Case::permissionDenied,
            u"Permission denied: "_s + path + u". Try scanning as Administrator."_s};
}

ScanError ScanError::cancelled()
{
    return {Case::cancelled, u"Scan was cancelled."_s};
}

} // namespace brivane
