#include "platform/Locations.h"
#include "scanner/DiskScanner.h"

#include <cstring>

namespace brivane {

using namespace Qt::StringLiterals;
using ScanError = DiskScanner::ScanError;

ScanError::ScanError(Case which, const QString& before, const QString& path, const QString& after)
    : std::runtime_error((before + path + after).toStdString())
    , m_case(which)
    , m_before(before)
    , m_path(path)
    , m_after(after)
{
}

QString ScanError::shownDescription(const Locations& locations) const
{
    return m_path.isEmpty() ? errorDescription() : m_before + locations.shown(m_path) + m_after;
}

ScanError ScanError::invalidPath(const QString& path)
{
    return {Case::invalidPath, u"Invalid path: "_s, path};
}

ScanError ScanError::ftsOpenFailed(const QString& path, int error)
{
    return {Case::ftsOpenFailed, u"Failed to open "_s, path,
            u" for scanning: "_s + QString::fromLocal8Bit(std::strerror(error))};
}

ScanError ScanError::permissionDenied(const QString& path)
{
    return {Case::permissionDenied, u"Permission denied: "_s, path,
            u". Try scanning as Administrator."_s};
}

ScanError ScanError::cancelled()
{
    return {Case::cancelled, u"Scan was cancelled."_s};
}

} // namespace brivane
