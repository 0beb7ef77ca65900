// The stand-ins for system commands, as the processes that they are.

#include "platform/FileDescriptor.h"
#include "platform/LocationAliases.h"
#include "platform/PathText.h"
#include "platform/linux/libexec/AdminScript.h"
#include "sandbox/SandboxMachine.h"
#include "support/AwaitTask.h"
#include "support/FileTestSupport.h"
#include "support/RecordedProcess.h"

#include <csignal>
#include <filesystem>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

using namespace brivane;
using namespace brivane::testing;
using namespace Qt::StringLiterals;

namespace {

/// The writing end of a FIFO; not valid when nobody reads from it.
FileDescriptor openForReader(const QString& fifo)
{
    constexpr int flags = O_WRONLY | O_NONBLOCK | O_CLOEXEC;
    return FileDescriptor(::open(PathText::toBytes(fifo).constData(), flags));
}

QString copyOf(const QByteArray& program, const QString& place)
{
    std::filesystem::copy_file(program.toStdString(), PathText::toBytes(place).toStdString());
    return place;
}

const QString swiftc = libexecDirectory() + u"/swiftc"_s;

} // namespace

TEST(CompilerStandIn, OnlyACompiledBinaryIsSuccess)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    const QString good = machine.file(u"/good.swift", "int main() { return 42; }\n");
    const QString bad = machine.file(u"/bad.swift", "int main( { return 42; }\n");
    const QString binary = machine.path(u"/it's a \"binary\"");
    EXPECT_EQ(statusOf(swiftc, {u"-O"_s, u"-o"_s, binary}), 2);
    EXPECT_GT(statusOf(swiftc, {u"-O"_s, u"-o"_s, binary, bad}), 0);
    EXPECT_EQ(namesIn(machine.path(u"/")).filter(u"binary"_s).size(), 0);
    ASSERT_EQ(statusOf(swiftc, {u"-O"_s, u"-o"_s, binary, good}), 0);
    EXPECT_EQ(statusOf(binary, {}), 42);
}

TEST(CompilerStandIn, NoPartOfACompilerOutlivesACancelledCompilation)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    const QString folder = machine.directory(u"/compile");
    const QString fifo = folder + u"/never.h"_s;
    ASSERT_EQ(::mkfifo(PathText::toBytes(fifo).constData(), 0600), 0);
    const QString source = machine.file(u"/compile/source.swift", "#include \"never.h\"\n");
    RecordedProcess compiler(swiftc, {u"-O"_s, u"-o"_s, folder + u"/binary"_s, source});
    compiler.process->start();
    // The part that reads sources waits for what the FIFO may give as long as it is held open.
    FileDescriptor writing;
    ASSERT_TRUE(waitUntil([&] { return (writing = openForReader(fifo)).isValid(); }));
    compiler.process->terminate();
    EXPECT_GT(compiler.status(), 0);
    EXPECT_FALSE(openForReader(fifo).isValid());
    EXPECT_EQ(namesIn(folder), QStringList({u"never.h"_s, u"source.swift"_s}));
}

TEST(StandIns, EndsOfTheirCommandsAreHeardOfWhateverTheirLauncherIgnores)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    const QStringList rows[] = {
        {swiftc, u"-O"_s, u"-o"_s, machine.path(u"/binary"), machine.file(u"/bad.swift", "#error")},
        {libexecDirectory() + u"/osascript"_s, u"-e"_s,
         u"do shell script \"echo error; exit 1\""_s}};
    for (const QStringList& command : rows) {
        RecordedProcess run(u"/usr/bin/env"_s, QStringList{u"--ignore-signal=CHLD"_s} + command);
        ASSERT_TRUE(run.runs()) << qPrintable(command.first());
        EXPECT_EQ(run.status(), 1);
        EXPECT_FALSE(run.error.contains("lost")) << run.error.constData();
    }
}

TEST(ScriptStandIn, ACommandThatHearsNoSignalsDoesNotHoldUpTheEnd)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "needs a program that becomes another user";
    const SandboxMachine machine = SandboxMachine::temporary();
    const QByteArray root = PathText::toBytes(machine.path(u"/"));
    struct statvfs fileSystem = {};
    ASSERT_EQ(::statvfs(root.constData(), &fileSystem), 0);
    if ((fileSystem.f_flag & ST_NOSUID) != 0)
        GTEST_SKIP() << "the temporary files' file system lets no program become another user";
    ASSERT_EQ(::chmod(PathText::toBytes(machine.folder()).constData(), 0755), 0);
    const QString libexec = libexecDirectory();
    const QString osascript =
        copyOf(PathText::toBytes(libexec) + "/osascript", machine.path(u"/osascript"));
    // As under pkexec: the user's process starts one that becomes root.
    const QString elevate = copyOf("/usr/bin/setpriv", machine.path(u"/elevate"));
    ASSERT_EQ(::chmod(PathText::toBytes(elevate).constData(), 04755), 0);
    // In a group of its own, since we are root here, whose signals it would hear.
    const QString script = u"do shell script \"exec setsid '"_s + elevate +
                           u"' --reuid 0 --clear-groups /bin/sh -c "
                           u"'echo $$; while sleep 0.01; do echo on; done'\""_s;
    RecordedProcess running(u"/usr/bin/setpriv"_s, {u"--reuid"_s, u"65534"_s, u"--clear-groups"_s,
                                                    osascript, u"-e"_s, script});
    running.process->start();
    int elevated = 0;
    ASSERT_TRUE(running.waits([&] {
        elevated = running.output.left(running.output.indexOf('\n')).toInt();
        return elevated > 0;
    }));
    running.process->terminate();
    EXPECT_EQ(running.status(), 128 + SIGTERM);
    // What it prints to is closed with that, and so it ends.
    EXPECT_TRUE(waitUntil([&] { return ::kill(elevated, 0) != 0; }));
}

TEST(AdminScript, OnlyTheOneFormIsUnderstoodAndItsEscapesUndone)
{
    const struct {
        const char* script;
        const char* line; ///< null: not understood
        bool needsAdministrator = false;
    } rows[] = {{R"(do shell script "id")", "id"},
                {R"(do shell script "a\\b \"c\" $d\n" with administrator privileges)",
                 "a\\b \"c\" $d\n", true},
                {R"(do shell script "id" & "more")", nullptr},
                {R"(do shell script "id" with administrator privileges; rm)", nullptr},
                {R"(do shell script "id)", nullptr},
                {R"(do shell script "id\)", nullptr},
                {R"(do shell script "\x")", nullptr},
                {"", nullptr}};
    for (const auto& [script, line, needsAdministrator] : rows) {
        const auto command = AdminScript::parse(script);
        ASSERT_EQ(command.has_value(), line != nullptr) << script;
        EXPECT_TRUE(!command || command->line == line) << script;
        EXPECT_TRUE(!command || command->needsAdministrator == needsAdministrator) << script;
    }
}

TEST(AdminScript, OnlyADismissedPromptReadsAsCancelled)
{
    const std::string dismissed = "Error executing command as another user: Request dismissed\n";
    EXPECT_EQ(AdminScript::failureMessage(126, dismissed, AdminScript::Elevation::Pkexec),
              "execution error: User canceled. (-128)");
    EXPECT_EQ(AdminScript::failureMessage(126, "sh: 1: /x: Permission denied\n",
                                          AdminScript::Elevation::Pkexec),
              "execution error: sh: 1: /x: Permission denied (126)");
    EXPECT_EQ(AdminScript::failureMessage(126, "", AdminScript::Elevation::None),
              "execution error: The command exited with a non-zero status. (126)");
    EXPECT_EQ(AdminScript::failureMessage(127, "Not authorized", AdminScript::Elevation::Pkexec),
              "execution error: Not authorized (127)");
}
