// Complete scans of one tree, side by side with other tools and with two loops that build nothing.
// Each round runs everybody once, so that a busy machine is busy for all; the figures are medians.
// Everything is in the caches, or with --cold nothing is before each run.

#include "Caches.h"
#include "Contender.h"
#include "Loops.h"
#include "core/Log.h"
#include "platform/Clock.h"
#include "platform/PathText.h"
#include "platform/Walk.h"
#include "scanner/DiskScanner.h"
#include "scanner/FileTree.h"

#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

using namespace brivane;
using namespace brivane::bench;

namespace {

/// What the child that scans tells its parent about the tree.
struct TreeFigures {
    std::size_t nodes = 0;
    std::size_t bytes = 0;
    std::size_t nameBytes = 0;
};

int scanCompletely(const QString& path, TreeFigures& figures)
{
    const LogCapture quiet;
    SystemClock clock;
    DiskScanner scanner(clock);
    const FileNodePtr root = scanner.scan(path);
    figures.nodes = root->tree().nodeCount();
    figures.bytes = root->tree().memoryUse();
    return 0;
}

std::size_t lengthOfNames(const QByteArray& path)
{
    std::size_t bytes = 0;
    Walk walk(path);
    while (const WalkEntry* entry = walk.next()) {
        if (entry->kind != WalkKind::DirectoryEnd)
            bytes += entry->name.size();
    }
    return bytes;
}

void printRatios(const std::vector<Contender>& contenders)
{
    const double own = median(contenders.front().seconds);
    const Contender* fastest = nullptr;
    std::printf("\n%-24s %8s %8s %9s %7s\n", "", "median", "fastest", "peak MiB", "ours /");
    for (const Contender& contender : contenders) {
        const double time = median(contender.seconds);
        std::printf("%-24s %7.3fs %7.3fs %9.1f %7.2f\n", contender.name.c_str(), time,
                    *std::min_element(contender.seconds.begin(), contender.seconds.end()),
                    static_cast<double>(contender.peakKiB) / 1024, own / time);
        if (contender.isPeer && (!fastest || time < median(fastest->seconds)))
            fastest = &contender;
    }
    if (fastest)
        std::printf("\nfastest peer: %s, ratio %.2f\n", fastest->name.c_str(),
                    own / median(fastest->seconds));
}

} // namespace

int main(int argc, char** argv)
{
    const bool isCold = argc > 1 && std::string_view(argv[1]) == "--cold";
    const std::span<char*> arguments =
        std::span(argv, static_cast<std::size_t>(argc)).subspan(isCold ? 2 : 1);
    if (arguments.empty()) {
        std::fprintf(stderr, "usage: bench_scan [--cold] PATH [ROUNDS]\n");
        return 2;
    }
    if (isCold && !emptyCaches()) {
        std::fprintf(stderr, "bench_scan: only root may empty the caches, which --cold needs\n");
        return 2;
    }
    const std::string path = arguments[0];
    const QString text = PathText::fromBytes(path.c_str());
    const int usualRounds = isCold ? 3 : 7;
    const int rounds = arguments.size() > 1 ? std::max(1, std::atoi(arguments[1])) : usualRounds;
    void* shared = ::mmap(nullptr, sizeof(TreeFigures), PROT_READ | PROT_WRITE,
                          MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED)
        return 1;
    auto* figures = new (shared) TreeFigures;

    std::vector<Contender> contenders;
    contenders.push_back(
        {.name = "brivane, whole tree", .body = [&] { return scanCompletely(text, *figures); }});
    const auto loop = [&path](Sum (*sum)(const char*)) {
        return [&path, sum] { return sum(path.c_str()).entries > 0 ? 0 : 1; };
    };
    contenders.push_back({.name = "bare loop, 2 threads", .body = loop(bareLoop)});
    contenders.push_back({.name = "plain fts, 1 thread", .body = loop(plainFts)});
    const char* const namesOnly = "find (names only)"; // no peer of who reads sizes
    const std::pair<const char*, std::vector<std::string>> commands[] = {
        {"du -s", {"du", "-sx", path}},
        {namesOnly, {"find", path, "-xdev"}},
        {"find -printf %s", {"find", path, "-xdev", "-printf", "%s\\n"}},
        {"ncdu -o", {"ncdu", "-0", "-x", "-o", "/dev/null", path}},
        {"gdu -n", {"gdu", "-n", "-p", "-x", path}},
    };
    for (const auto& [name, words] : commands) {
        if (std::optional<Contender> peer = command(name, words)) {
            peer->isPeer = name != namesOnly;
            contenders.push_back(std::move(*peer));
        } else {
            std::printf("%s: not installed, left out\n", name);
        }
    }

    if (!isCold) {
        for (Contender& contender : contenders) // warms the caches
            runOnce(contender);
        for (Contender& contender : contenders)
            contender.seconds.clear();
    }
    for (int round = 0; round < rounds; ++round) {
        for (Contender& contender : contenders) {
            if (isCold)
                emptyCaches();
            if (!runOnce(contender))
                std::printf("%s did not end well\n", contender.name.c_str());
        }
    }

    const std::size_t names = lengthOfNames(path.c_str());
    std::printf("%s: %zu nodes, %d rounds, %s\n", path.c_str(), figures->nodes, rounds,
                isCold ? "cold" : "warm");
    if (figures->nodes > 0)
        std::printf("tree: %.1f bytes for a node, %.1f of them its name\n",
                    static_cast<double>(figures->bytes) / static_cast<double>(figures->nodes),
                    static_cast<double>(names) / static_cast<double>(figures->nodes));
    printRatios(contenders);
    return 0;
}
