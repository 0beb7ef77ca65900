#include "core/ShellRunner.h"

#include "platform/PathText.h"
#include "sandbox/SandboxMachine.h"
#include "support/AwaitTask.h"
#include "support/ChildProcesses.h"
#include "support/FileTestSupport.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace brivane;
using namespace brivane::testing;
using namespace Qt::StringLiterals;

namespace {

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
