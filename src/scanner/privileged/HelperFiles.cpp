#include "scanner/privileged/HelperFiles.h"

#include "platform/PrivateDirectory.h"
#include "scanner/privileged/AdminHelperScript.h"

#include <cerrno>
#include <utility>

namespace brivane {

using namespace Qt::StringLiterals;

HelperFiles::HelperFiles(Locations locations, FileSystemProviding& fileSystem)
    : m_locations(std::move(locations))
    , m_fileSystem(fileSystem)
{
}

Result<> HelperFiles::write()
{
    const QString binary = u"/brivane_admin_helper"_s;
    const QString directory = m_locations.temporaryDirectory();
    if (directory.isEmpty())
        return FileError{EACCES, m_locations.path(u"/tmp"_s), FileOperation::Make};
    m_binary = directory + binary;
    m_source = m_binary + u".swift"_s;
    for (const QString& place : {m_source, m_binary}) {
        const RemovalReport report = m_fileSystem.removeItem(place);
        if (!report.isComplete() && report.failures.front().code != ENOENT)
            return report.failures.front();
    }
    return m_fileSystem.writeAtomically(m_source, AdminHelperScript::sourceText(), 0600);
}

bool HelperFiles::isBinaryTrustworthy() const
{
    return keepToOurselves(m_binary);
}

void HelperFiles::remove()
{
    for (const QString& place : {m_source, m_binary}) {
        if (!place.isEmpty())
            (void)m_fileSystem.removeItem(place);
    }
}

} // namespace brivane
