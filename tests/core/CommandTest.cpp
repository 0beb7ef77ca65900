#include "core/Command.h"

#include "core/ShellRunner.h"
#include "platform/PathText.h"
#include "sandbox/SandboxMachine.h"
#include "support/AwaitTask.h"
#include "support/ChildProcesses.h"
#include "support/FileTestSupport.h"

#include <QTemporaryDir>

#include <cerrno>
#include <thread>

#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace brivane;
using namespace brivane::testing;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

CommandEnd ended(QFuture<CommandEnd> ending)
{
    ending.waitForFinished();
    return ending.result();
}

class ShellRunnerTest : public ::testing::Test {
protected:
    QString run() { return awaitTask(ShellRunner::run(machine.locations(), tool, {})); }

    const QString tool = u"/usr/bin/tool"_s;
    SandboxMachine machine = SandboxMachine::temporary();
    SandboxCommand command = machine.command(tool);
};

} // namespace

TEST_F(ShellRunnerTest, SuccessIsStandardOutputUntrimmed)
{
    const std::pair<QByteArray, QString> rows[] = {
        {" a\n\n", u" a\n\n"_s}, {"caf\303\251", u"caf\u00E9"_s}, {"good \377 bad", QString()}};
    for (const auto& [output, expected] : rows) {
        command.answer({.output = output, .error = "noise", .uses = 1});
        EXPECT_EQ(run(), expected) << output.data();
    }
}

TEST_F(ShellRunnerTest, FailureNamesTheCallersPathAndTheDiagnostic)
{
    const std::tuple<QByteArray, QByteArray, QString> rows[] = {
        {"out", " why \n", u"why"_s},
        {"\n only out\n", "", u"only out"_s},
        {"out", " ", QString()}, // standard error is not empty
    };
    for (const auto& [output, error, diagnostic] : rows) {
        command.answer({.output = output, .error = error, .status = 1, .uses = 1});
        try {
            run();
            ADD_FAILURE() << output.data();
        } catch (const ShellRunner::CommandError& failure) {
            EXPECT_EQ(failure.errorDescription(), u"'/usr/bin/tool' failed: "_s + diagnostic);
        }
    }
    ASSERT_EQ(::unlink(PathText::toBytes(command.path())), 0);
    try {
        run();
        ADD_FAILURE();
    } catch (const LaunchError& error) {
        EXPECT_EQ(error.executable(), tool);
    }
}

TEST_F(ShellRunnerTest, TheCallerIsNotBlocked)
{
    command.answer({.output = QByteArray(3'000'000, 'x'), .error = QByteArray(3'000'000, 'y')});
    QCoro::Task<QString> first = ShellRunner::run(machine.locations(), tool, {});
    EXPECT_FALSE(first.isReady());
    EXPECT_EQ(run().size(), 3'000'000);
    EXPECT_EQ(awaitTask(std::move(first)), QString(3'000'000, u'x'));
    EXPECT_TRUE(waitForNoChildren());
}

TEST_F(ShellRunnerTest, WithoutAThreadToStartACommandItFailsAndIsNotWaitedForForEver)
{
    EXPECT_TRUE(passesUnprivileged([] {
        const struct rlimit none = {};
        ASSERT_EQ(::setrlimit(RLIMIT_NPROC, &none), 0);
        const Locations here = Locations::asWritten(u"/"_s);
        EXPECT_THROW(awaitTask(ShellRunner::run(here, u"/bin/true"_s, {})), LaunchError);
    }));
}

TEST(Command, AStopEndsOneThatDoesNotHearIt)
{
    const auto stop = std::make_unique<std::stop_source>();
    Command command(u"/bin/sh"_s,
                    {u"-c"_s, u"trap '' TERM; echo deaf; while :; do sleep 60; done"_s});
    command.setOutputHandler([&](QByteArrayView) { stop->request_stop(); });
    const CommandEnd end = ended(command.start(stop->get_token()));
    EXPECT_EQ(end.process.status, SIGKILL);
}

TEST(Command, AStopReachesWhatRunsAndWhatIsStartedLater)
{
    const auto stop = std::make_unique<std::stop_source>();
    Command command(u"/bin/sh"_s, {u"-c"_s, u"echo $$; exec sleep 60"_s});
    const auto lines = std::make_shared<LineQueue>();
    command.sendLinesTo(lines);
    const QFuture<CommandEnd> ending = command.start(stop->get_token());
    std::thread reader([&] { // the end of the command ends this, too
        lines->forEachLine([&](std::string_view) { stop->request_stop(); });
    });
    EXPECT_EQ(ended(ending).process.reason, ProcessEnd::Reason::Signal);
    reader.join();

    const QTemporaryDir folder;
    Command late(u"/bin/mkdir"_s, {folder.filePath(u"made"_s)});
    EXPECT_TRUE(ended(late.start(stop->get_token())).isSkipped);
    EXPECT_FALSE(QFile::exists(folder.filePath(u"made"_s)));
}

TEST(Command, WhatNeverEndsPrintingIsEnded)
{
    Command command(u"/usr/bin/yes"_s, {});
    const CommandEnd end = ended(command.start());
    EXPECT_TRUE(end.isTooLong);
    EXPECT_FALSE(end.isSuccess());
    EXPECT_EQ(end.output.size(), Command::outputLimit);
}

TEST(Command, WhoeverWaitsHearsOfTheEndAlsoWhenThereWasNone)
{
    Command missing(u"/nowhere/to/be/found"_s, {});
    const auto lines = std::make_shared<LineQueue>();
    missing.sendLinesTo(lines);
    const CommandEnd end = ended(missing.start());
    EXPECT_EQ(end.launchErrorNumber, ENOENT);
    EXPECT_THROW(end.throwIfNotStarted(u"named"_s), LaunchError);
    lines->forEachLine([](std::string_view) { FAIL(); });

    auto dropped = std::make_unique<Command>(u"/bin/sleep"_s, QStringList{u"60"_s});
    const QFuture<CommandEnd> ending = dropped->start();
    EXPECT_FALSE(dropped->waitForEnd(0ms));
    dropped.reset();
    EXPECT_TRUE(ended(ending).isSkipped);
}
