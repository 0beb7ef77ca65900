// The quarantine with many items and with a huge one.

#include "Lateness.h"
#include "core/AppSettings.h"
#include "platform/DefaultFileSystem.h"
#include "platform/Volumes.h"
#include "removal/QuarantineService.h"
#include "removal/RestoreJournal.h"
#include "sandbox/SandboxMachine.h"

#include <cstdio>

using namespace brivane;
using namespace Qt::StringLiterals;

namespace {

class Stopwatch {
public:
    Stopwatch() { m_clock.start(); }
    [[nodiscard]] Milliseconds elapsed() const
    {
        return static_cast<Milliseconds>(m_clock.nsecsElapsed()) / 1e6;
    }

private:
    QElapsedTimer m_clock;
};

/// A machine with a quarantine in its home.
class Ground {
public:
    Ground()
        : m_host(m_machine.locations())
        , m_settings(m_host.host().defaults, m_host.host().clock, m_machine.locations().home())
    {
        m_machine.directory(u"~");
    }

    void close() { m_service.reset(); }
    void open()
    {
        m_service = std::make_unique<QuarantineService>(m_host.host(), m_settings, store());
    }
    [[nodiscard]] QString store() const { return m_machine.path(u"~/.Brivane_Quarantine"); }
    [[nodiscard]] const SandboxMachine& machine() const { return m_machine; }
    QuarantineService& service() { return *m_service; }

private:
    SandboxMachine m_machine = SandboxMachine::temporary();
    OwnedHost m_host;
    AppSettings m_settings;
    std::unique_ptr<QuarantineService> m_service;
};

template<typename Task>
QCoro::Task<> watch(Task task, bool& isDone)
{
    co_await task;
    isDone = true;
}

template<typename Task>
void measure(const char* what, Lateness& lateness, Task task)
{
    lateness.startAfresh();
    const Stopwatch clock;
    bool isDone = false;
    const QCoro::Task<> watching = watch(std::move(task), isDone);
    runUntil([&] { return isDone; });
    std::printf("%-22s %.0f ms\n", what, clock.elapsed());
    lateness.report("  GUI thread");
}

void openMany(Ground& ground, Lateness& lateness, int count)
{
    QStringList paths;
    for (int i = 0; i < count; ++i)
        paths += ground.machine().file(u"~/many/%1"_s.arg(i), QByteArray("content"));
    ground.open();
    std::printf("%d items\n", count);
    measure("hand over", lateness, ground.service().quarantine(paths, u"Bench"_s));
    for (int round = 0; round < 3; ++round) {
        ground.close();
        const Stopwatch clock;
        ground.open();
        std::printf("%-22s %.1f ms, %lld items\n", "open", clock.elapsed(),
                    static_cast<long long>(ground.service().items().size()));
    }
    measure("restore all", lateness, ground.service().restoreAll());
    measure("hand over again", lateness, ground.service().quarantine(paths, u"Bench"_s));
    measure("purge all", lateness, ground.service().purgeAll());
}

/// 20 GB in 2,000 files that take no room.
void moveHuge(Ground& ground)
{
    constexpr qint64 fileSize = 10'000'000;
    for (int i = 0; i < 2000; ++i)
        ground.machine().file(u"~/huge/%1/%2"_s.arg(i / 50).arg(i), SandboxMachine::Size{fileSize});
    const QString path = ground.machine().path(u"~/huge");
    ground.open();
    const Stopwatch measuring;
    const auto moves =
        QuarantineMoves::planMoves({{path}}, ground.store(), ground.machine().locations().home())
            .moves;
    std::printf("20 GB in one folder\n%-22s %.1f ms, %.2f GB\n", "measure", measuring.elapsed(),
                static_cast<double>(moves.at(0).size) / 1e9);
    const Stopwatch moving;
    DefaultFileSystem fileSystem;
    RestoreJournal journal(ground.store() + u"/.restoring.json"_s, fileSystem);
    const auto report = QuarantineMoves::moveToQuarantine(moves, journal, fileSystem);
    std::printf("%-22s %.2f ms, %lld moved\n", "move", moving.elapsed(),
                static_cast<long long>(report.outcomes.size()));
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Lateness lateness;
    for (const int count : {5'000, 10'000}) {
        Ground ground;
        openMany(ground, lateness, count);
    }
    Ground ground;
    moveHuge(ground);
    return 0;
}
