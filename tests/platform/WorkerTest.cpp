#include "platform/Worker.h"

#include "platform/Parallel.h"

#include <QSemaphore>

#include <atomic>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

using namespace brivane;
using namespace Qt::StringLiterals;

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

TEST(Parallel, EachNumberIsWorkedOnOnce)
{
    for (const std::size_t count : {0U, 1U, 5U, 1000U}) {
        std::vector<std::atomic<int>> done(count);
        forEachInParallel(count, [&](std::size_t i) { ++done[i]; });
        EXPECT_TRUE(std::ranges::all_of(done, [](const auto& times) { return times == 1; }));
    }
}
