#include "core/ShellRunner.h"

#include "platform/PathText.h"
#include "support/AwaitTask.h"
#include "support/ChildProcesses.h"
#include "support/FileTestSupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace brivane;
using namespace brivane::testing;
using namespace Qt::StringLiterals;

namespace {

/// A make-believe root with commands of the test's own.
class ShellRunnerTest : public ::testing::Test {
protected:
    void addCommand(const QString& path, const QByteArray& script)
    {
        const QString place = locations.path(path);
        ASSERT_TRUE(QDir().mkpath(place.left(place.lastIndexOf(u'/'))));
        QFile file(place);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + script);
        ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    }

    QTemporaryDir folder;
    Locations locations = Locations::insideFolder(folder.path());
};

const QString tool = u"/usr/bin/tool"_s;

} // namespace

TEST_F(ShellRunnerTest, SuccessIsStandardOutputUntrimmed)
{
    const std::pair<QByteArray, QString> rows[] = {
        {"printf ' a\\n\\n'; echo noise >&2", u" a\n\n"_s},
        {"printf 'caf\\303\\251'", u"caf\u00E9"_s},
        {"printf 'good \\377 bad'", QString()},
        {":", QString()},
    };
    for (const auto& [script, output] : rows) {
        addCommand(tool, script);
        EXPECT_EQ(awaitTask(ShellRunner::run(locations, tool, {})), output) << script.constData();
        ASSERT_TRUE(QFile::remove(locations.path(tool)));
    }
}

TEST_F(ShellRunnerTest, FailureNamesTheCallersPathAndTheDiagnostic)
{
    const std::pair<QByteArray, QString> rows[] = {
        {"echo out; printf ' why \\n' >&2; exit 1", u"why"_s},
        {"printf '\\n only out\\n'; exit 2", u"only out"_s},
        {"printf ' ' >&2; echo out; exit 1", QString()}, // standard error is not empty
        {"exit 9", QString()},
        {"kill -TERM $$", QString()},
    };
    for (const auto& [script, output] : rows) {
        addCommand(tool, script);
        try {
            awaitTask(ShellRunner::run(locations, tool, {}));
            ADD_FAILURE() << script.constData();
        } catch (const ShellRunner::CommandError& error) {
            EXPECT_EQ(error.command(), tool);
            EXPECT_EQ(error.output(), output) << script.constData();
            EXPECT_EQ(error.errorDescription(), u"'/usr/bin/tool' failed: "_s + output);
        }
        ASSERT_TRUE(QFile::remove(locations.path(tool)));
    }
    try {
        awaitTask(ShellRunner::run(locations, tool, {}));
        ADD_FAILURE();
    } catch (const LaunchError& error) {
        EXPECT_EQ(error.executable(), tool);
        EXPECT_EQ(error.errorNumber(), ENOENT);
    }
}

TEST_F(ShellRunnerTest, TheCallerIsNotBlockedAndComesBackOnItsThread)
{
    addCommand(tool, "head -c 3000000 /dev/zero | tr '\\0' x; head -c 3000000 /dev/zero >&2");
    QCoro::Task<QString> first = ShellRunner::run(locations, tool, {});
    QCoro::Task<QString> second = ShellRunner::run(locations, tool, {});
    EXPECT_FALSE(first.isReady());
    EXPECT_EQ(awaitTask(std::move(first)), QString(3'000'000, u'x'));
    EXPECT_EQ(awaitTask(std::move(second)).size(), 3'000'000);
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

TEST_F(ShellRunnerTest, AdminCommandsAreQuotedOnceAndInOrder)
{
    addCommand(u"/usr/bin/osascript"_s, "printf '%s' \"$#:$1:$2\"");
    const QString output = awaitTask(ShellRunner::runAsAdmin(locations, u"echo \"a\\b\" 'c'; d"_s));
    EXPECT_EQ(output,
              uR"(2:-e:do shell script "echo \"a\\b\" 'c'; d" with administrator privileges)"_s);
}

TEST_F(ShellRunnerTest, TheStandInRunsWhatTheShellWouldSee)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "asks for a password unless root";
    const Locations here = Locations::onLinux();
    ASSERT_TRUE(here.path(u"/usr/bin/osascript").startsWith(QStringLiteral(BUILD_DIRECTORY)));
    const QString path = PathText::fromBytes(folder.path().toUtf8() + "/\xFF \\ \"x\"");
    const QString line = u"printf '%s' 'a\\b \"c\"'; : > '"_s + path + u"'; echo hidden >&2"_s;
    EXPECT_EQ(awaitTask(ShellRunner::runAsAdmin(here, line)), uR"(a\b "c")");
    EXPECT_EQ(::unlink(PathText::toBytes(path).constData()), 0); // it has been made
    try {
        awaitTask(ShellRunner::runAsAdmin(here, u"echo part; echo broken >&2; exit 4"_s));
        ADD_FAILURE();
    } catch (const ShellRunner::CommandError& error) {
        EXPECT_EQ(error.output(), u"execution error: broken (4)");
    }
}
