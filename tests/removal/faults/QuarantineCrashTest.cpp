#include "QuarantineDeeds.h"
#include "support/faults/SystemCallFaults.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>

#include <gtest/gtest.h>
#include <sys/wait.h>

using namespace brivane;
using namespace brivane::testing;

namespace {

/// Runs `body` in a process of its own, with an event loop: this one has no threads, so that it can
/// be copied. How that process ended.
int statusOf(const std::function<void()>& body)
{
    return statusOfChild([&] {
        int argumentCount = 1;
        char name[] = "child";
        char* arguments[] = {name, nullptr};
        const QCoreApplication application(argumentCount, arguments);
        body();
    });
}

bool passes(const std::function<void()>& body)
{
    const int status = statusOf(body);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// Does it, and is killed before the system call number `last` of those that change the disk, which
/// is after the one before. Whether it came that far.
bool isKilled(const std::function<void()>& deed, int last)
{
    const int status = statusOf([&] {
        int changes = 0;
        const SystemCallFaults faults([&](const SystemCall& call) {
            if (call.changesFiles && changes++ == last)
                ::kill(::getpid(), SIGKILL);
            return 0;
        });
        deed();
    });
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL)
        return true;
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    return false;
}

/// What the next start finds, and whether all can go on from there.
void checkNextStart(WatchedGround& ground, const Deed& deed)
{
    ground.start();
    EXPECT_TRUE(waitUntil([&] { return ground.mismatches().isEmpty(); }))
        << ground.mismatches().join(u'\n').toStdString();
    if (deed.removes) {
        // What was cut off in the middle is listed, and the rest of it can be removed.
        awaitTask(ground.service->purgeAll());
        EXPECT_TRUE(ground.service->items().isEmpty());
        return;
    }
    // A copy is whole before anything of what was copied goes.
    const bool copies = deed.things == Things::OnAnotherVolume;
    for (const QString& path : ground.paths()) {
        const int places = ground.places(path);
        EXPECT_TRUE(copies ? places >= 1 : places == 1) << path.toStdString() << places;
    }
    QStringList results; // of all of them, for a failure
    QObject::connect(ground.service.get(), &QuarantineService::lastResultChanged,
                     [&] { results += ground.service->lastResult(); });
    WatchedGround::await(ground.service->restoreAll());
    // What a copy had left at its place is in the way of the whole.
    for (const QString& path : ground.paths()) {
        EXPECT_TRUE(ground.isWholeAtItsPlace(path) ||
                    (copies && ground.isWholeAtItsPlace(path, u" 2"_s)))
            << path.toStdString();
    }
    EXPECT_TRUE(ground.service->items().isEmpty()) << results.join(u'\n').toStdString();
    EXPECT_TRUE(waitUntil([&] { return ground.rests().isEmpty(); }))
        << ground.rests().join(u'\n').toStdString();
}

} // namespace

TEST(QuarantineCrash, AfterAKillAtAnyStepEachThingIsAtItsPlaceOrListed)
{
    for (const Deed& deed : deeds) {
        int points = 0;
        for (bool wasKilled = true; wasKilled && !HasFailure(); ++points) {
            WatchedGround ground(deed.things);
            ASSERT_TRUE(passes([&] { deed.prepare(ground); }));
            wasKilled = isKilled([&] { deed.run(ground); }, points);
            EXPECT_TRUE(passes([&] { checkNextStart(ground, deed); }))
                << deed.name << ", killed before change " << points;
        }
        std::printf("%s: killed at %d points\n", deed.name, points - 1);
        RecordProperty(std::string(deed.name) + " kill points", points - 1);
        EXPECT_GT(points, 5) << deed.name;
    }
}
