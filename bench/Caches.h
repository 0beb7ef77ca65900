#pragma once

#include <fcntl.h>
#include <unistd.h>

namespace brivane {

/// Makes the kernel forget what it keeps of all disks, so that whoever reads next has to wait for
/// them. Only root may; whether it was done.
inline bool emptyCaches()
{
    const int file = ::open("/proc/sys/vm/drop_caches", O_WRONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    ::sync(); // what is not written yet cannot be forgotten
    const bool isDone = ::write(file, "3", 1) == 1;
    ::close(file);
    return isDone;
}

} // namespace brivane
