#include "Loops.h"

#include <string>

#include <fts.h>
#include <sys/stat.h>

namespace brivane::bench {

Sum plainFts(const char* path)
{
    Sum sum;
    std::string start = path;
    char* paths[] = {start.data(), nullptr};
    FTS* fts = ::fts_open(paths, FTS_NOCHDIR | FTS_PHYSICAL | FTS_XDEV, nullptr);
    while (const FTSENT* entry = ::fts_read(fts)) {
        ++sum.entries;
        if (entry->fts_info == FTS_F)
            sum.bytes += static_cast<std::uint64_t>(entry->fts_statp->st_size);
    }
    ::fts_close(fts);
    return sum;
}

} // namespace brivane::bench
