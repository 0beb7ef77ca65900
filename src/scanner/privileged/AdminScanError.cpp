#include "scanner/privileged/PrivilegedScanner.h"

namespace brivane {

using namespace Qt::StringLiterals;
using AdminScanError = PrivilegedScanner::AdminScanError;

AdminScanError::AdminScanError(Case which, const QString& description)
    : std::runtime_error(description.toStdString())
    , m_case(which)
    , m_description(description)
{
}

AdminScanError AdminScanError::scriptFailed(const QString& message)
{
    return {Case::scriptFailed, u"Admin scan failed: "_s + message};
}

AdminScanError AdminScanError::alreadyRunning()
{
    return {Case::alreadyRunning, u"Admin scan is already running."_s};
}

AdminScanError AdminScanError::compileFailed()
{
    return {Case::compileFailed, u"Failed to compile the scanner helper."_s};
}

AdminScanError AdminScanError::cancelled()
{
    return {Case::cancelled, u"Admin scan was cancelled."_s};
}

AdminScanError AdminScanError::userCancelled()
{
    return {Case::userCancelled, u"Administrator authentication was cancelled."_s};
}

} // namespace brivane
