#include "platform/ThreadPriority.h"

#include <sys/resource.h>
#include <unistd.h>

namespace brivane {

void giveWayToPainting()
{
    // A third of the share of a thread that does not give way. Linux has this for each thread.
    constexpr int niceness = 5;
    const auto thread = static_cast<id_t>(::gettid());
    if (::getpriority(PRIO_PROCESS, thread) < niceness)
        ::setpriority(PRIO_PROCESS, thread, niceness);
}

} // namespace brivane
