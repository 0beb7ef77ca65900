// The sizes of the folders in a folder, all at once, against one bare walk after the other over the
// same trees; and the same for very many small trees. Each round runs both, in turns, so that a
// busy machine is busy for both; the figures are medians.

#include "platform/FolderSizes.h"
#include "platform/PathText.h"
#include "sandbox/NastyTree.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

using namespace brivane;

namespace {

QStringList childrenOf(const std::string& folder)
{
    QStringList paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        paths += PathText::fromBytes(entry.path().native());
    paths.sort();
    return paths;
}

std::uint64_t byBareWalks(const QStringList& paths)
{
    std::uint64_t bytes = 0;
    for (const QString& path : paths) {
        Walk walk(PathText::toBytes(path));
        while (const WalkEntry* entry = walk.next()) {
            if (entry->kind == WalkKind::File)
                bytes += entry->attributes.size;
        }
    }
    return bytes;
}

std::uint64_t byFolderSizes(const QStringList& paths)
{
    std::uint64_t bytes = 0;
    for (const FolderSize& size : FolderSizes::measureNow(paths))
        bytes += size.bytes;
    return bytes;
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

/// What one way of measuring took, round by round.
struct Times {
    std::vector<double> elapsed;
    std::vector<double> busy; ///< of all cores together

    std::uint64_t take(std::uint64_t (*measure)(const QStringList&), const QStringList& paths)
    {
        const auto start = std::chrono::steady_clock::now();
        const std::clock_t before = std::clock();
        const std::uint64_t bytes = measure(paths);
        busy.push_back(static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC);
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
        elapsed.push_back(passed.count());
        return bytes;
    }
};

/// Whether both saw the same.
bool compare(const char* what, const QStringList& paths, int rounds)
{
    Times bare;
    Times own;
    bool isSame = byFolderSizes(paths) == byBareWalks(paths); // warms the caches
    for (int round = 0; round < rounds; ++round)
        isSame = bare.take(byBareWalks, paths) == own.take(byFolderSizes, paths) && isSame;
    std::printf("%-26s %5lld paths, walks %6.3f s, sizes %6.3f s: %.2f; busy %6.3f s, %6.3f s%s\n",
                what, static_cast<long long>(paths.size()), median(bare.elapsed),
                median(own.elapsed), median(own.elapsed) / median(bare.elapsed), median(bare.busy),
                median(own.busy), isSame ? "" : "  (they differ)");
    return isSame;
}

} // namespace

int main(int argc, char** argv)
{
    const std::string folder = argc > 1 ? argv[1] : "/usr";
    const int rounds = argc > 2 ? std::max(1, std::atoi(argv[2])) : 7;
    bool isSame = compare(folder.c_str(), childrenOf(folder), rounds);

    std::string name = (std::filesystem::temp_directory_path() / "brivane-sizes-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        return 1;
    for (int i = 0; i < 4000; ++i)
        buildFlatFolder(QByteArray::fromStdString(name + '/' + std::to_string(i)), 10);
    isSame = compare("small trees of ten files", childrenOf(name), rounds) && isSame;
    std::filesystem::remove_all(name);
    return isSame ? 0 : 1;
}
