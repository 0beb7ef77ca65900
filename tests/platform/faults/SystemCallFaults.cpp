#include "SystemCallFaults.h"

#include <cerrno>
#include <mutex>
#include <utility>

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

bool SystemCallFaults::strike(const char* name)
{
    if (isDeciding)
        return false;
    const std::lock_guard lock(mutex);
    if (!active)
        return false;
    const int before = errno;
    isDeciding = true;
    const int code = active->m_decide({name, active->m_calls++});
    isDeciding = false;
    errno = code != 0 ? code : before;
    return code != 0;
}

} // namespace brivane

// Each name stands in CMakeLists.txt as well, for the linker.
#define WRAP(type, name, parameters, arguments)                                                    \
    extern "C" type __real_##name parameters;                                                      \
    extern "C" type __wrap_##name parameters                                                       \
    {                                                                                              \
        return brivane::SystemCallFaults::strike(#name) ? type(-1) : __real_##name arguments;      \
    }

WRAP(int, openat64, (int folder, const char* path, int flags, mode_t mode),
     (folder, path, flags, mode))
WRAP(int, unlinkat, (int folder, const char* path, int flags), (folder, path, flags))
WRAP(int, statx, (int folder, const char* path, int flags, unsigned mask, struct statx* status),
     (folder, path, flags, mask, status))
WRAP(ssize_t, getdents64, (int folder, void* buffer, size_t size), (folder, buffer, size))
WRAP(int, renameat, (int folder, const char* from, int toFolder, const char* to),
     (folder, from, toFolder, to))
WRAP(int, renameat2, (int folder, const char* from, int toFolder, const char* to, unsigned flags),
     (folder, from, toFolder, to, flags))
WRAP(int, linkat, (int folder, const char* from, int toFolder, const char* to, int flags),
     (folder, from, toFolder, to, flags))
WRAP(int, symlinkat, (const char* target, int folder, const char* path), (target, folder, path))
WRAP(ssize_t, readlinkat, (int folder, const char* path, char* target, size_t size),
     (folder, path, target, size))
WRAP(int, mkdirat, (int folder, const char* path, mode_t mode), (folder, path, mode))
WRAP(int, mkfifoat, (int folder, const char* path, mode_t mode), (folder, path, mode))
WRAP(int, fsync, (int file), (file))
WRAP(ssize_t, write, (int file, const void* bytes, size_t size), (file, bytes, size))
WRAP(ssize_t, pread64, (int file, void* bytes, size_t size, off_t at), (file, bytes, size, at))
WRAP(ssize_t, pwrite64, (int file, const void* bytes, size_t size, off_t at),
     (file, bytes, size, at))
WRAP(off_t, lseek64, (int file, off_t at, int whence), (file, at, whence))
WRAP(int, ftruncate64, (int file, off_t size), (file, size))
WRAP(int, fchmod, (int file, mode_t mode), (file, mode))
WRAP(int, fchmodat, (int folder, const char* path, mode_t mode, int flags),
     (folder, path, mode, flags))
WRAP(int, fchown, (int file, uid_t owner, gid_t group), (file, owner, group))
WRAP(int, fchownat, (int folder, const char* path, uid_t owner, gid_t group, int flags),
     (folder, path, owner, group, flags))
WRAP(int, futimens, (int file, const timespec* times), (file, times))
WRAP(int, utimensat, (int folder, const char* path, const timespec* times, int flags),
     (folder, path, times, flags))
WRAP(ssize_t, flistxattr, (int file, char* names, size_t size), (file, names, size))
WRAP(ssize_t, fgetxattr, (int file, const char* name, void* value, size_t size),
     (file, name, value, size))
WRAP(int, fsetxattr, (int file, const char* name, const void* value, size_t size, int flags),
     (file, name, value, size, flags))
