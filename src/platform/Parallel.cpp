#include "platform/Parallel.h"

#include <algorithm>
#include <atomic>
#include <system_error>
#include <thread>
#include <vector>

namespace brivane {

void forEachInParallel(std::size_t count, const std::function<void(std::size_t)>& work)
{
    std::atomic<std::size_t> next = 0;
    const auto takeTurns = [&] {
        for (std::size_t i = next++; i < count; i = next++)
            work(i);
    };
    const std::size_t cores = std::max(std::thread::hardware_concurrency(), 1U);
    std::vector<std::jthread> helpers;
    try {
        for (std::size_t i = 1; i < std::min(cores, count); ++i)
            helpers.emplace_back(takeTurns);
    } catch (const std::system_error&) {
        // Then with those that there are.
    }
    takeTurns();
}

} // namespace brivane
