#include "QuarantineDeeds.h"
#include "support/faults/SystemCallFaults.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <gtest/gtest.h>

using namespace brivane;
using namespace brivane::testing;

namespace {

/// The list as it is compared: where things were and where they lie.
QStringList listOf(const WatchedGround& ground)
{
    QStringList list;
    for (const QuarantineItem& item : ground.service->items())
        list += item.originalPath + u" in "_s + item.quarantinePath;
    list.sort();
    return list;
}

void check(WatchedGround& ground, const Deed& deed)
{
    EXPECT_TRUE(ground.service->lastResult().startsWith(deed.result(ground)))
        << ground.service->lastResult().toStdString();
    EXPECT_EQ(ground.mismatches().join(u'\n').toStdString(), std::string());
    for (const QString& path : ground.paths()) {
        const int places = ground.places(path);
        const bool copies = deed.things == Things::OnAnotherVolume;
        EXPECT_TRUE(deed.removes ? places <= 1
                    : copies     ? places >= 1
                                 : places == 1)
            << path.toStdString() << places;
    }
    const QStringList list = listOf(ground);
    ground.clock->setNow(ground.clock->now().addDays(-30)); // nothing is due
    ground.start();
    EXPECT_TRUE(listOf(ground) == list) << "the next start";
}

} // namespace

TEST(QuarantineFault, NothingIsLostAndTheListIsTrueWhicheverCallFails)
{
    for (const Deed& deed : deeds) {
        int points = 0;
        std::vector codes = {ENOSPC, EACCES, EROFS, EXDEV, ENOENT};
        if (deed.things == Things::OnAnotherVolume)
            codes = {ENOSPC, EACCES}; // there are very many calls
        for (const int code : codes) {
            bool wasReached = true;
            for (int n = 0; wasReached && !HasFailure(); ++n, ++points) {
                WatchedGround ground(deed.things);
                deed.prepare(ground);
                wasReached = false;
                const char* failed = "none";
                {
                    int changes = 0;
                    const SystemCallFaults faults([&](const SystemCall& call) {
                        if (!call.changesFiles || changes++ != n)
                            return 0;
                        wasReached = true;
                        failed = call.name;
                        // Of what is there, no kernel says that it is not when it is unlinked.
                        const bool isLie = code == ENOENT && std::strcmp(failed, "unlinkat") == 0;
                        return isLie ? EIO : code;
                    });
                    deed.run(ground);
                }
                const ::testing::ScopedTrace trace(__FILE__, __LINE__,
                                                   std::string(deed.name) + ": " + failed +
                                                       " failed with " + std::to_string(code));
                check(ground, deed);
            }
            --points;
        }
        std::printf("%s: %d faults\n", deed.name, points);
        EXPECT_GT(points, 50) << deed.name;
    }
}

TEST(QuarantineFault, WhereThingsCameFromIsNotForgottenWhicheverLookOfAStartFails)
{
    int looks = 0;
    for (bool wasReached = true; wasReached && !HasFailure(); ++looks) {
        WatchedGround ground(Things::AtHome);
        deeds.back().prepare(ground);
        const QStringList list = listOf(ground);
        ground.service.reset();
        wasReached = false;
        int seen = 0;
        {
            const SystemCallFaults faults([&](const SystemCall& call) {
                if (call.changesFiles || seen++ != looks)
                    return 0;
                wasReached = true;
                return EIO;
            });
            ground.start();
            ground.quarantine({}); // and with what was read then the list is written
        }
        ground.start();
        EXPECT_TRUE(listOf(ground) == list)
            << "look " << looks << listOf(ground).join(u'\n').toStdString();
    }
    EXPECT_GT(looks, 10);
}
