#include "platform/Walk.h"
#include "platform/Worker.h"
#include "platform/linux/LinuxVolumes.h"
#include "support/FileTestSupport.h"

#include <filesystem>
#include <iterator>
#include <system_error>
#include <thread>
#include <utility>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace brivane;

TEST(ThreadShortage, WalksAndVolumesDoWithTheThreadsThatTheyGet)
{
    const TestFolder folder;
    ASSERT_EQ(::chmod(folder.path(), 0755), 0);
    buildNastyTree(folder / "tree", {.levels = 30});
    const auto listing = [&folder] {
        QByteArray all;
        Walk walk(folder.path(), {.readAhead = 100, .workers = 4});
        while (const WalkEntry* entry = walk.next())
            all += walk.path() + QByteArray::number(static_cast<int>(entry->kind)) + '\n';
        return all;
    };
    // For whom permissions bind, limits do as well.
    EXPECT_TRUE(passesUnprivileged([&] {
        const QByteArray expected = listing();
        struct rlimit limit = {};
        ASSERT_EQ(::getrlimit(RLIMIT_NPROC, &limit), 0);
        for (limit.rlim_cur = 0; limit.rlim_cur < 8; ++limit.rlim_cur) {
            ASSERT_EQ(::setrlimit(RLIMIT_NPROC, &limit), 0);
            EXPECT_EQ(listing(), expected);
            if (limit.rlim_cur == 0) {
                EXPECT_THROW(std::thread([] {}).join(), std::system_error);
                EXPECT_EQ(LinuxVolumes().volumeInfo(QStringLiteral("/"))->totalCapacity, 0U);
            }
        }
    }));
}

static std::ptrdiff_t threadCount()
{
    const std::filesystem::directory_iterator threads("/proc/self/task");
    return std::distance(begin(threads), end(threads));
}

TEST(ThreadShortage, AWorkerThatGetsItsThreadLateStillRunsOneJobAtATime)
{
    EXPECT_TRUE(passesUnprivileged([] {
        struct rlimit limit = {};
        ASSERT_EQ(::getrlimit(RLIMIT_NPROC, &limit), 0);
        const rlim_t enough = std::exchange(limit.rlim_cur, 0);
        ASSERT_EQ(::setrlimit(RLIMIT_NPROC, &limit), 0);
        Worker worker(QStringLiteral("late"));
        worker.run([&] {
            limit.rlim_cur = enough;
            ASSERT_EQ(::setrlimit(RLIMIT_NPROC, &limit), 0);
            const std::ptrdiff_t before = threadCount(); // a sanitizer may have one too
            worker.run([] {});
            EXPECT_EQ(threadCount(), before);
        });
        worker.waitForDone();
        const std::thread::id here = std::this_thread::get_id();
        EXPECT_NE(worker.run([] { return std::this_thread::get_id(); }).result(), here);
    }));
}
