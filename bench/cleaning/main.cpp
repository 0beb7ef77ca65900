// Smart Clean's scan of a home full of junk, against a bare walk of the same files on all cores.
// Each round runs both, in turns, so that a busy machine is busy for both; the figures are medians.

#include "Lateness.h"
#include "cleaner/CleanerService.h"
#include "cleaning/JunkHome.h"
#include "core/Composition.h"
#include "core/Log.h"
#include "platform/FolderSizes.h"
#include "platform/Host.h"
#include "platform/Volumes.h"
#include "platform/Worker.h"
#include "sandbox/SandboxMachine.h"
#include "sandbox/SandboxVolumes.h"
#include "sandbox/SandboxWorkspace.h"

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <map>
#include <string>

using namespace brivane;

namespace {

/// A figure of /proc/self/status in bytes, or 0.
double memory(const std::string& figure)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(figure + ':'))
            return std::stod(line.substr(figure.size() + 1)) * 1024;
    }
    return 0;
}

/// Makes the peak of memory (VmHWM) what is in use now.
void forgetPeak()
{
    std::ofstream("/proc/self/clear_refs") << "5";
}

/// What one way to look at the home took, round by round.
struct Times {
    std::vector<double> elapsed;
    std::vector<double> busy; ///< of all cores together

    template<typename Work>
    void take(const Work& work)
    {
        const auto start = std::chrono::steady_clock::now();
        const std::clock_t before = std::clock();
        work();
        busy.push_back(static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC);
        elapsed.push_back(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
};

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void scan(CleanerService& service)
{
    service.scanAll();
    runUntil([&] { return service.scanComplete(); });
}

/// How long each category took in the last scan, in milliseconds.
class CategoryTimes : public QObject {
public:
    explicit CategoryTimes(CleanerService& service)
    {
        connect(&service, &CleanerService::categoriesChanged, this, [this, &service] {
            if (service.isScanning() && !service.categories().empty())
                m_clock.start();
            for (const auto& category : service.categories())
                connect(category.get(), &CleanerCategory::isScanningChanged, this,
                        &CategoryTimes::note, Qt::UniqueConnection);
        });
    }

    [[nodiscard]] Milliseconds of(const CleanerCategory& category) const
    {
        const auto found = m_ends.find(&category);
        return found == m_ends.end() ? 0 : found->second;
    }

private:
    void note()
    {
        m_ends[sender()] = static_cast<double>(m_clock.nsecsElapsed()) / 1e6;
        m_clock.start();
    }

    QElapsedTimer m_clock;
    std::map<const QObject*, Milliseconds> m_ends;
};

/// What was found; whether there is something in every category.
bool report(const CleanerService& service, const CategoryTimes& times)
{
    for (const auto& category : service.categories())
        std::printf("  %-26s %6zu items, %8.1f MB, %6.1f ms\n", qPrintable(category->name()),
                    category->items().size(), static_cast<double>(category->totalSize()) / 1e6,
                    times.of(*category));
    return service.categories().size() == categoryCatalogue().size();
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const LogCapture log; // it is not what is to be read here
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 7;
    const int files = argc > 2 ? std::max(1000, std::atoi(argv[2])) : 500'000;
    const SandboxMachine machine = SandboxMachine::temporary();
    std::printf("%d files\n", buildJunkHome(machine, files));
    OwnedHost host(machine.locations(), std::make_unique<SandboxVolumes>(machine), nullptr,
                   std::make_unique<SandboxWorkspace>());
    Composition composition(host.host());
    auto& service = composition.get<CleanerService>();
    const CategoryTimes times(service);
    const QStringList roots = junkRoots(machine);

    // The first scan is the one of a program that has just been started.
    Lateness lateness;
    const double before = memory("VmRSS");
    forgetPeak();
    Times first;
    first.take([&] { scan(service); });
    const double peak = memory("VmHWM") - before;
    std::printf("first scan %.3f s, peak memory %.1f MiB beyond the %.1f MiB before it\n",
                first.elapsed[0], peak / (1 << 20), before / (1 << 20));
    lateness.report("  GUI thread");

    // On a worker as well, so that both get as much of a busy machine.
    Worker worker(QStringLiteral("bare walk"));
    const auto walk = [&] {
        const auto sizes = worker.run([&] { return FolderSizes::measureNow(roots); });
        runUntil([&] { return sizes.isFinished(); });
    };
    Times walks;
    Times scans;
    for (int round = 0; round < rounds; ++round) {
        walks.take(walk);
        scans.take([&] { scan(service); });
    }
    std::printf("bare walk %.3f s, scan %.3f s: %.2f; busy %.3f s, %.3f s: %.2f\n",
                median(walks.elapsed), median(scans.elapsed),
                median(scans.elapsed) / median(walks.elapsed), median(walks.busy),
                median(scans.busy), median(scans.busy) / median(walks.busy));
    const bool isComplete = report(service, times);
    if (!isComplete)
        std::fprintf(stderr, "some categories are empty\n");
    return isComplete ? 0 : 1;
}
