#include "core/LocalSnapshots.h"

#include "sandbox/SandboxMachine.h"
#include "support/AwaitTask.h"

#include <gtest/gtest.h>

using namespace brivane;
using namespace brivane::testing;
using namespace Qt::StringLiterals;

TEST(LocalSnapshots, AreReadFromTheListingNewestFirst)
{
    const QList<SnapshotInfo> found =
        LocalSnapshots::parseSnapshots(u"Snapshots for disk /:\n"
                                       "com.apple.TimeMachine.2023-01-02-030405.local\n"
                                       " \tcom.apple.TimeMachine.2024-02-29-235959.local \n"
                                       "com.apple.TimeMachine.2024-02-30-000000.local\n"
                                       "com.apple.TimeMachine\n"
                                       "com.apple.os.update.2024-05-05-050505\n"_s);
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0].name, u"com.apple.TimeMachine.2024-02-29-235959.local");
    EXPECT_EQ(found[0].date, QDateTime({2024, 2, 29}, {23, 59, 59}));
    EXPECT_EQ(found[1].volumeName, u"/");
}

TEST(LocalSnapshots, CommandTellsBothItsOutputsAndFailsWithThem)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    const QString tool = u"/usr/bin/tmutil"_s;
    SandboxCommand command = machine.command(tool);
    command.answer({.output = "com.apple.TimeMachine.2023-01-02-030405.local\n", .uses = 1});
    EXPECT_TRUE(awaitTask(LocalSnapshots::exist(machine.locations())));
    command.answer({.output = "one", .error = "two", .uses = 1});
    const QString both = awaitTask(LocalSnapshots::runCommand(machine.locations(), tool, {}));
    EXPECT_TRUE(both == u"onetwo" || both == u"twoone") << both.toStdString();
    command.answer({.error = "why", .status = 2, .uses = 2});
    EXPECT_FALSE(awaitTask(LocalSnapshots::exist(machine.locations())));
    try {
        awaitTask(LocalSnapshots::runCommand(machine.locations(), tool, {}));
        ADD_FAILURE();
    } catch (const LocalSnapshots::SnapshotError& failure) {
        EXPECT_EQ(failure.errorDescription(), u"Command '/usr/bin/tmutil' failed: why");
    }
}
