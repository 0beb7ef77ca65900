// What works with threads of its own does so without where the machine gives none.

#include "platform/Walk.h"
#include "platform/linux/LinuxVolumes.h"
#include "support/FileTestSupport.h"

#include <algorithm>
#include <system_error>
#include <thread>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace brivane;

namespace {

/// For whom permissions bind, limits do as well.
void limitThreads(rlim_t count)
{
    struct rlimit limit = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NPROC, &limit), 0);
    limit.rlim_cur = std::min(count, limit.rlim_max);
    ASSERT_EQ(::setrlimit(RLIMIT_NPROC, &limit), 0);
}

bool canStartThread()
{
    try {
        std::thread([] {}).join();
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

QByteArray listing(const QByteArray& path)
{
    QByteArray all;
    Walk walk(path, {.readAhead = 100, .workers = 4});
    while (const WalkEntry* entry = walk.next())
        all += walk.path() + QByteArray::number(int(entry->kind)) + '\n';
    return all;
}

} // namespace

TEST(ThreadShortage, AWalkReadsAloneOrWithThoseThreadsThatItGets)
{
    const TestFolder folder;
    ASSERT_EQ(::chmod(folder.path(), 0755), 0);
    buildNastyTree(folder / "tree", {.levels = 30});
    EXPECT_TRUE(passesUnprivileged([&] {
        const QByteArray expected = listing(folder.path());
        rlim_t limit = 0;
        limitThreads(limit);
        ASSERT_FALSE(canStartThread());
        EXPECT_EQ(listing(folder.path()), expected);
        while (!canStartThread())
            limitThreads(++limit);
        EXPECT_EQ(listing(folder.path()), expected);
    }));
}

TEST(ThreadShortage, AVolumeThatCannotBeAskedIsAsOneThatDoesNotAnswer)
{
    EXPECT_TRUE(passesUnprivileged([] {
        LinuxVolumes volumes;
        limitThreads(0);
        ASSERT_FALSE(canStartThread());
        const auto silent = volumes.volumeInfo(QStringLiteral("/"));
        ASSERT_TRUE(silent.has_value());
        EXPECT_EQ(silent->totalCapacity, 0U);
        limitThreads(RLIM_INFINITY);
        const auto answered = volumes.volumeInfo(QStringLiteral("/"));
        EXPECT_TRUE(answered && answered->totalCapacity > 0) << "it is not asked any more";
    }));
}
