// Starts the real program again and again, and tells how long it takes from before the process
// exists to the first frame of its window.

#include "platform/DefaultFileSystem.h"
#include "platform/Locations.h"
#include "platform/Process.h"
#include "platform/UserDefaults.h"
#include "sandbox/SandboxMachine.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <stdexcept>

using namespace brivane;
using namespace Qt::StringLiterals;

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

/// The home of a user who has been through the onboarding.
void prepareHome(const SandboxMachine& machine)
{
    for (const char* name : {"XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qunsetenv(name);
    qputenv("HOME", machine.directory(u"~").toUtf8());
    DefaultFileSystem fileSystem;
    UserDefaults defaults(Locations::onLinux().path(u"~/Library/Preferences/com.brivane.app.plist"),
                          fileSystem);
    defaults.setBool(u"onboardingCompleted"_s, true);
    if (!defaults.waitUntilSaved())
        throw std::runtime_error("the preferences could not be written");
}

Milliseconds startOnce(const SandboxMachine& machine, int round)
{
    // One that was killed leaves its lock behind, and the next one would meet it.
    const QString runtime = u"/run/%1"_s.arg(round);
    const QString runtimeDir = machine.directory(runtime);
    machine.setMode(runtime, 0700);

    std::promise<Clock::time_point> firstFrame;
    std::promise<void> end;
    QByteArray said; // both belong to the thread of the handlers
    bool isShown = false;
    // The scene graph's own account of its frames costs a line for each.
    Process program(u"/usr/bin/env"_s,
                    {u"--unset=XDG_CACHE_HOME"_s, u"--unset=XDG_CONFIG_HOME"_s,
                     u"--unset=XDG_DATA_HOME"_s, u"HOME="_s + machine.directory(u"~"),
                     u"XDG_RUNTIME_DIR="_s + runtimeDir,
                     u"QT_LOGGING_RULES=qt.scenegraph.time.renderloop=true"_s,
                     QStringLiteral(BRIVANE_PROGRAM)});
    program.setErrorHandler([&](QByteArrayView text) {
        const Clock::time_point now = Clock::now();
        if (isShown)
            return;
        said += text;
        isShown = said.toLower().contains("frame rendered");
        if (isShown)
            firstFrame.set_value(now);
    });
    program.setTerminationHandler([&](ProcessEnd /*end*/) {
        if (!isShown)
            firstFrame.set_exception(
                std::make_exception_ptr(std::runtime_error("it ended without a frame: " + said)));
        end.set_value();
    });
    auto frame = firstFrame.get_future();
    const Clock::time_point start = Clock::now();
    program.start();
    const bool isInTime = frame.wait_for(std::chrono::seconds(30)) == std::future_status::ready;
    program.terminate();
    end.get_future().wait();
    if (!isInTime)
        throw std::runtime_error("there is no frame after 30 seconds");
    return frame.get() - start;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 20;
    try {
        const SandboxMachine machine = SandboxMachine::temporary();
        prepareHome(machine);
        startOnce(machine, 0); // fills the caches
        std::vector<double> all;
        for (int round = 1; round <= rounds; ++round)
            all.push_back(startOnce(machine, round).count());
        std::ranges::sort(all);
        std::printf(
            "first frame after: min %.0f ms, median %.0f ms, max %.0f ms (%zu warm starts)\n",
            all.front(), all[all.size() / 2], all.back(), all.size());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_start: %s\n", error.what());
        return 1;
    }
    return 0;
}
