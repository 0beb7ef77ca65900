#include "SystemCallFaults.h"

#include <cerrno>
#include <mutex>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <time.h>

namespace brivane {

namespace {

std::mutex mutex;
SystemCallFaults* active = nullptr; ///< guarded by `mutex`
thread_local bool isDeciding = false;

} // namespace

SystemCallFaults::SystemCallFaults(Decision decide)
    : m_decide(std::move(decide))
{
    const std::lock_guard lock(mutex);
    active = this;
}

SystemCallFaults::~SystemCallFaults()
{
    const std::lock_guard lock(mutex);
    active = nullptr;
}

bool SystemCallFaults::strike(const char* name, bool changesFiles)
{
    if (isDeciding)
        return false;
    const std::lock_guard lock(mutex);
    if (!active)
        return false;
    const int before = errno;
    isDeciding = true;
    const int code = active->m_decide({name, changesFiles, active->m_calls++});
    isDeciding = false;
    errno = code != 0 ? code : before;
    return code != 0;
}

} // namespace brivane

// Each name stands in CMakeLists.txt as well, for the linker.
#define WRAP(changesFiles, type, name, parameters, arguments)                                      \
    extern "C" type __real_##name parameters;                                                      \
    extern "C" type __wrap_##name parameters                                                       \
    {                                                                                              \
        return brivane::SystemCallFaults::strike(#name, changesFiles) ? type(-1)                   \
                                                                      : __real_##name arguments;   \
    }
#define WRAP_LOOK(type, name, parameters, arguments) WRAP(false, type, name, parameters, arguments)
#define WRAP_CHANGE(type, name, parameters, arguments) WRAP(true, type, name, parameters, arguments)

WRAP((flags & (O_CREAT | O_TRUNC)) != 0, int, openat64,
     (int folder, const char* path, int flags, mode_t mode), (folder, path, flags, mode))
WRAP_CHANGE(int, unlinkat, (int folder, const char* path, int flags), (folder, path, flags))
WRAP_LOOK(int, statx,
          (int folder, const char* path, int flags, unsigned mask, struct statx* status),
          (folder, path, flags, mask, status))
WRAP_LOOK(ssize_t, getdents64, (int folder, void* buffer, size_t size), (folder, buffer, size))
WRAP_CHANGE(int, renameat, (int folder, const char* from, int toFolder, const char* to),
            (folder, from, toFolder, to))
WRAP_CHANGE(int, renameat2,
            (int folder, const char* from, int toFolder, const char* to, unsigned flags),
            (folder, from, toFolder, to, flags))
WRAP_CHANGE(int, linkat, (int folder, const char* from, int toFolder, const char* to, int flags),
            (folder, from, toFolder, to, flags))
WRAP_CHANGE(int, symlinkat, (const char* target, int folder, const char* path),
            (target, folder, path))
WRAP_LOOK(ssize_t, readlinkat, (int folder, const char* path, char* target, size_t size),
          (folder, path, target, size))
WRAP_CHANGE(int, mkdirat, (int folder, const char* path, mode_t mode), (folder, path, mode))
WRAP_CHANGE(int, mkfifoat, (int folder, const char* path, mode_t mode), (folder, path, mode))
// Asked about and never done: no test can tell, and disks take long.
extern "C" int __wrap_fsync(int /*file*/)
{
    return brivane::SystemCallFaults::strike("fsync", true) ? -1 : 0;
}
WRAP_CHANGE(ssize_t, write, (int file, const void* bytes, size_t size), (file, bytes, size))
WRAP_LOOK(ssize_t, pread64, (int file, void* bytes, size_t size, off_t at), (file, bytes, size, at))
WRAP_CHANGE(ssize_t, pwrite64, (int file, const void* bytes, size_t size, off_t at),
            (file, bytes, size, at))
WRAP_LOOK(off_t, lseek64, (int file, off_t at, int whence), (file, at, whence))
WRAP_CHANGE(int, ftruncate64, (int file, off_t size), (file, size))
WRAP_CHANGE(int, fchmod, (int file, mode_t mode), (file, mode))
WRAP_CHANGE(int, fchmodat, (int folder, const char* path, mode_t mode, int flags),
            (folder, path, mode, flags))
WRAP_CHANGE(int, fchown, (int file, uid_t owner, gid_t group), (file, owner, group))
WRAP_CHANGE(int, fchownat, (int folder, const char* path, uid_t owner, gid_t group, int flags),
            (folder, path, owner, group, flags))
WRAP_LOOK(int, faccessat, (int folder, const char* path, int mode, int flags),
          (folder, path, mode, flags))
WRAP_CHANGE(int, fallocate64, (int file, int mode, off_t at, off_t size), (file, mode, at, size))
WRAP_CHANGE(int, futimens, (int file, const timespec* times), (file, times))
WRAP_CHANGE(int, utimensat, (int folder, const char* path, const timespec* times, int flags),
            (folder, path, times, flags))
WRAP_LOOK(ssize_t, flistxattr, (int file, char* names, size_t size), (file, names, size))
WRAP_LOOK(ssize_t, fgetxattr, (int file, const char* name, void* value, size_t size),
          (file, name, value, size))
WRAP_CHANGE(int, fsetxattr, (int file, const char* name, const void* value, size_t size, int flags),
            (file, name, value, size, flags))
