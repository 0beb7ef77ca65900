#include "platform/Walk.h"

#include <random>
#include <set>

#include <fcntl.h>
#include <fts.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace brivane;

namespace {

struct Seen {
    int kind = 0; // as in fts_info
    std::uint32_t depth = 0;
    QByteArray path;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;

    bool operator==(const Seen&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Seen& seen)
{
    return out << seen.kind << ' ' << seen.depth << ' ' << seen.path.toPercentEncoding("/").data()
               << ' ' << seen.inode << ' ' << seen.size;
}

int ftsKind(WalkKind kind)
{
    switch (kind) {
    case WalkKind::Directory:
        return FTS_D;
    case WalkKind::DirectoryEnd:
        return FTS_DP;
    case WalkKind::UnreadableDirectory:
        return FTS_DNR;
    case WalkKind::File:
        return FTS_F;
    case WalkKind::SymbolicLink:
        return FTS_SL;
    case WalkKind::Other:
        return FTS_DEFAULT;
    case WalkKind::NoAttributes:
        return FTS_NS;
    }
    return 0;
}

std::vector<Seen> byFts(const QByteArray& path)
{
    std::vector<Seen> entries;
    QByteArray start = path;
    char* paths[] = {start.data(), nullptr};
    FTS* fts = ::fts_open(paths, FTS_NOCHDIR | FTS_PHYSICAL | FTS_XDEV, nullptr);
    while (const FTSENT* entry = ::fts_read(fts)) {
        Seen seen{entry->fts_info, static_cast<std::uint32_t>(entry->fts_level), entry->fts_path};
        if (entry->fts_info != FTS_NS) {
            seen.inode = entry->fts_statp->st_ino;
            seen.size = static_cast<std::uint64_t>(entry->fts_statp->st_size);
        }
        entries.push_back(seen);
    }
    ::fts_close(fts);
    return entries;
}

std::vector<Seen> byWalk(const QByteArray& path, WalkOptions options = {})
{
    std::vector<Seen> entries;
    Walk walk(path, options);
    while (const WalkEntry* entry = walk.next()) {
        entries.push_back({ftsKind(entry->kind), entry->depth, walk.path(), entry->attributes.inode,
                           entry->attributes.size});
    }
    return entries;
}

void expectSame(const QByteArray& path, WalkOptions options = {})
{
    const std::vector<Seen> expected = byFts(path);
    const std::vector<Seen> actual = byWalk(path, options);
    for (std::size_t i = 0; i < std::min(expected.size(), actual.size()); ++i)
        ASSERT_EQ(actual[i], expected[i]) << "at entry " << i;
    ASSERT_EQ(actual.size(), expected.size()) << path.data();
}

} // namespace

TEST(Walk, AgreesWithFtsOnTheWholeOfUsr)
{
    expectSame("/usr");
    expectSame("/usr", {.readAhead = 100, .workers = 3});
}
