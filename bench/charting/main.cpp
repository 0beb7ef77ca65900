// The layouts of the charts for one directory of very many children, step by step, as the medians
// of many rounds. The children stand once as a scan finds them and once as it leaves them, sorted.

#include "scanner/FileTree.h"
#include "scanner/charts/SunburstFrame.h"
#include "scanner/charts/Treemap.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

using namespace brivane;

namespace {

std::shared_ptr<FileTree> directoryOf(int children)
{
    std::mt19937 random(11);
    std::lognormal_distribution<double> sizes(9, 2.5);
    auto tree = FileTree::create("/bench");
    for (int i = 0; i < children; ++i) {
        const auto size = static_cast<std::uint64_t>(sizes(random)) + 1;
        FileNode* node = tree->make("entry-" + std::to_string(i) + ".data", false, size);
        tree->attach(node, tree->root());
    }
    tree->root()->recalculateSize();
    return tree;
}

/// Prints the median of the milliseconds that `step` takes, and gives what it made.
template<typename Step>
auto measure(const char* name, int rounds, Step step)
{
    std::vector<double> times;
    decltype(step()) result;
    for (int round = 0; round < rounds; ++round) {
        result = {};
        const auto start = std::chrono::steady_clock::now();
        result = step();
        const std::chrono::duration<double, std::milli> elapsed =
            std::chrono::steady_clock::now() - start;
        times.push_back(elapsed.count());
    }
    std::ranges::nth_element(times, times.begin() + rounds / 2);
    std::printf("  %-36s %8.3f ms\n", name, times[static_cast<std::size_t>(rounds / 2)]);
    return result;
}

void measureAll(const FileNode& directory, int rounds)
{
    const QRectF rect(0, 0, 900, 700);
    const auto children =
        measure("childrenBySize", rounds, [&] { return childrenBySize(directory); });
    measure("displayItems and computeTreemap", rounds,
            [&] { return computeTreemap(displayItems(children), rect); });
    const auto segments = measure("buildSegments", rounds, [&] {
        return SunburstLayout().buildSegments(children, directory.size());
    });
    const SunburstFrame frame(rect.size(), {1.0});
    int turn = 0;
    measure("segmentAt, for one point", rounds, [&] {
        const double angle = turn++;
        const QPointF arm(std::cos(angle) * 100, std::sin(angle) * 100);
        return frame.segmentAt(segments, rect.center() + arm);
    });
}

} // namespace

int main(int argc, char** argv)
{
    const int children = argc > 1 ? std::atoi(argv[1]) : 200'000;
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 41;
    if (children < 1 || rounds < 1) {
        std::fprintf(stderr, "usage: bench_charts [CHILDREN [ROUNDS]]\n");
        return 2;
    }
    const auto tree = directoryOf(children);
    std::printf("%d children as a scan finds them\n", children);
    measureAll(*tree->root(), rounds);
    tree->sortAll();
    std::printf("%d children, sorted\n", children);
    measureAll(*tree->root(), rounds);
    return 0;
}
