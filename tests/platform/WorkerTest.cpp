#include "platform/Worker.h"

#include "platform/Clock.h"
#include "platform/NotificationCenter.h"
#include "support/AwaitTask.h"
#include "support/FileTestSupport.h"

#include <QCoreApplication>
#include <QSemaphore>
#include <QThread>

#include <filesystem>
#include <stdexcept>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace brivane;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

TEST(Worker, ACancelReachesWhatRunsAndWhatWaitsAndEveryJobStillEnds)
{
    Worker worker(u"test"_s);
    QSemaphore started;
    std::vector<int> order; // the worker's thread's
    const auto running = worker.run([&](const std::stop_token& stop) {
        started.release();
        while (!stop.stop_requested())
            std::this_thread::yield();
        order.push_back(1);
        return stop.stop_requested();
    });
    const auto waiting = worker.run([&](const std::stop_token& stop) {
        order.push_back(2);
        return stop.stop_requested();
    });
    const auto failing = worker.run([]() -> int { throw std::runtime_error("no"); });
    ASSERT_TRUE(started.tryAcquire(1, 10'000));
    worker.cancel();
    const auto later = worker.run([&](const std::stop_token& stop) {
        order.push_back(3);
        return stop.stop_requested();
    });
    EXPECT_FALSE(later.result());
    EXPECT_TRUE(running.result() && waiting.result());
    EXPECT_THROW(QFuture(failing).waitForFinished(), std::runtime_error);
    EXPECT_EQ(order, std::vector({1, 2, 3}));
}

TEST(Worker, WhoLeavesAJobThatHangsDoesNotWaitForIt)
{
    const auto gate = std::make_shared<QSemaphore>();
    const auto passed = std::make_shared<QSemaphore>();
    {
        Worker worker(u"hangs"_s);
        worker.run([gate, passed] {
            gate->acquire();
            passed->release();
        });
        EXPECT_FALSE(worker.leave(std::chrono::milliseconds(1)));
    }
    gate->release();
    EXPECT_TRUE(passed->tryAcquire(1, 10'000));
}

static std::ptrdiff_t threadCount()
{
    const std::filesystem::directory_iterator threads("/proc/self/task");
    return std::distance(begin(threads), end(threads));
}

TEST(Worker, AThreadThatComesLateStillRunsOneJobAtATime)
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

TEST(NotificationCenter, APostReachesLivingReceiversOfItsNameOnTheirThread)
{
    NotificationCenter center;
    QList<QThread*> heardOn;
    auto receiver = std::make_unique<QObject>();
    center.subscribe(u"one"_s, receiver.get(), [&] { heardOn += QThread::currentThread(); });
    center.post(u"other"_s);
    std::thread([&] { center.post(u"one"_s); }).join();
    EXPECT_TRUE(heardOn.isEmpty());
    QCoreApplication::sendPostedEvents();
    center.post(u"one"_s);
    receiver.reset();
    center.post(u"one"_s);
    EXPECT_EQ(heardOn, QList<QThread*>(2, QThread::currentThread()));
}

TEST(Clock, ASleepEndsWhenItIsOverAndAtOnceWhenItIsStopped)
{
    SystemClock clock;
    const QCoro::Task<> none = clock.sleep(0ms);
    EXPECT_TRUE(brivane::testing::waitUntil([&] { return none.isReady(); }));
    std::stop_source source;
    const QCoro::Task<> sleeping = clock.sleep(1h, source.get_token());
    EXPECT_FALSE(sleeping.isReady());
    source.request_stop();
    EXPECT_TRUE(sleeping.isReady());
    EXPECT_TRUE(clock.sleep(1h, source.get_token()).isReady());
}
