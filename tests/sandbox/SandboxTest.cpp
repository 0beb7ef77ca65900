#include "demo/DemoContent.h"
#include "sandbox/ClearFolder.h"
#include "sandbox/SandboxMachine.h"
#include "support/FileTestSupport.h"
#include "support/RecordedProcess.h"

#include <list>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace brivane;
using namespace brivane::testing;
using namespace Qt::StringLiterals;

TEST(SandboxCommand, CallsAtTheSameTimeAreAllRecordedByteForByteAndShareNoUse)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    SandboxCommand command = machine.command(u"~/bin/tool with blanks");
    command.answer({.status = 3, .uses = 7});
    const QStringList odd = {
        u""_s,       u"-e"_s, u"two\nlines"_s,        PathText::fromBytes("\xFF\xC3"),
        u"'\"\\$"_s, u"é"_s,  QString(100'000, u'x'), u""_s};
    std::list<RecordedProcess> calls;
    for (int i = 0; i < 40; ++i)
        calls.emplace_back(command.path(), odd + QStringList{QString::number(i)}).process->start();
    int answered = 0;
    for (RecordedProcess& call : calls)
        answered += call.status() == 3;
    EXPECT_EQ(answered, 7);

    QStringList numbers;
    for (const QStringList& arguments : command.calls()) {
        numbers += arguments.value(odd.size());
        EXPECT_EQ(arguments, odd + QStringList{numbers.last()});
    }
    EXPECT_EQ(numbers.size(), 40);
    EXPECT_EQ(numbers.removeDuplicates(), 0);
}

TEST(SandboxCommand, AnswersFollowTheirOrderTheirUsesAndTheArguments)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    SandboxCommand command = machine.command(u"/usr/bin/tmutil");
    EXPECT_EQ(statusOf(command.path(), {}), 0);
    command.answer({.status = 1, .uses = 1})
        .answer({.status = 2, .when = {u"list"_s, u"/"_s}})
        .answer({.status = 3, .uses = 1})
        .answer({.status = 4});
    const std::pair<QString, int> rows[] = {{u"list,/"_s, 1},
                                            {u"list,/,more"_s, 2},
                                            {u"list"_s, 3},
                                            {u"list,/x"_s, 4},
                                            {u"list/"_s, 4}};
    for (const auto& [arguments, status] : rows)
        EXPECT_EQ(statusOf(command.path(), arguments.split(u',')), status);
    command.forgetAnswers();
    EXPECT_EQ(statusOf(command.answer({.status = 255}).path(), {}), 255);
}

TEST(SandboxMachine, LeavesNothingBehindAndNothingElseTouched)
{
    const TestFolder outside;
    writeFile(outside / "file", "content");
    QByteArray gone;
    QByteArray goneFromDevice;
    {
        SandboxMachine machine = SandboxMachine::temporary();
        gone = PathText::toBytes(machine.folder());
        machine.link(u"~/to folder", outside.path());
        machine.link(u"~/a/b/to file", outside / "file");
        machine.link(u"~/a/loop", "../a");
        machine.file(u"~/cleared-0/cleared-1/cleared-0/cleared-0/x", SandboxMachine::Size{1});
        machine.command(u"/usr/bin/tmutil").answer({.uses = 3});
        if (const auto device = machine.secondDevice()) {
            goneFromDevice = PathText::toBytes(*device);
            EXPECT_TRUE(stands(goneFromDevice));
        }
        const SandboxMachine moved = std::move(machine);
        EXPECT_TRUE(stands(gone));
    }
    EXPECT_FALSE(stands(gone) || stands(goneFromDevice));
    EXPECT_EQ(readFile(outside / "file"), "content");
}

TEST(SandboxMachine, LockedAndEndlesslyNestedFoldersAreClearedWithoutPrivileges)
{
    EXPECT_TRUE(passesUnprivileged([] {
        const TestFolder folder;
        const QByteArray chain = folder / "chain";
        buildNastyTree(folder / "nasty");
        buildDeepChain(chain, 2'500); // far beyond PATH_MAX
        for (const int level : {1'500, 40, 0})
            ASSERT_EQ(::chmod(chain + QByteArray("/d").repeated(level), 0), 0);
        EXPECT_TRUE(clearFolder(folder.path()));
        EXPECT_FALSE(stands(folder.path()));
    }));
}

TEST(DemoContent, LooksLikeAMachineOfSomeYearsAndTakesNoRoom)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    fillWithDemoContent(machine, QDateTime::fromSecsSinceEpoch(1'800'000'000, Qt::UTC));
    qint64 logical = 0;
    qint64 allocated = 0;
    forEachByFts(PathText::toBytes(machine.folder()), 0, [&](const FTSENT& entry) {
        logical += entry.fts_info == FTS_F ? entry.fts_statp->st_size : 0;
        allocated += entry.fts_info == FTS_F ? entry.fts_statp->st_blocks * 512 : 0;
    });
    EXPECT_GT(logical, 200'000'000'000);
    EXPECT_LT(logical, 300'000'000'000);
    EXPECT_LT(allocated, 100'000'000);
}
