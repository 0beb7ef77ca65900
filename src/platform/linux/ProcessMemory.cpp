#include "platform/ProcessMemory.h"

#include <cstdio>

#include <unistd.h>

namespace brivane {

std::optional<std::uint64_t> residentMemory()
{
    std::FILE* file = std::fopen("/proc/self/statm", "re");
    if (!file)
        return {};
    unsigned long total = 0;
    unsigned long resident = 0;
    const bool isRead = std::fscanf(file, "%lu %lu", &total, &resident) == 2;
    std::fclose(file);
    if (!isRead)
        return {};
    return resident * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

} // namespace brivane
