#include "platform/Host.h"
#include "platform/Volumes.h"

namespace brivane {

Host& Host::shared()
{
    // Never destroyed: threads may still use it while the process ends.
    static OwnedHost* const owned = new OwnedHost(Locations::onLinux());
    return owned->host();
}

} // namespace brivane
