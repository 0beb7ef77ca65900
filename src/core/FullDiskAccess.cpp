#include "core/FullDiskAccess.h"

#include "platform/PathText.h"

#include <algorithm>
#include <iterator>

#include <fcntl.h>
#include <unistd.h>

namespace brivane {

namespace {

constexpr QStringView probes[] = {
    u"~/Library/Safari",
    u"~/Library/Messages",
    u"~/Library/Cookies",
    u"/Library/Application Support/com.apple.TCC",
};

} // namespace

bool checkFullDiskAccess(const Locations& locations)
{
    return std::any_of(std::begin(probes), std::end(probes), [&](QStringView probe) {
        const QByteArray path = PathText::toBytes(locations.path(probe));
        return ::faccessat(AT_FDCWD, path.constData(), R_OK, AT_EACCESS) == 0;
    });
}

} // namespace brivane
