// The stand-ins for system commands, as the processes that they are.

#include "platform/FileDescriptor.h"
#include "platform/LocationAliases.h"
#include "platform/PathText.h"
#include "platform/Process.h"
#include "sandbox/SandboxMachine.h"

#include <QDeadlineTimer>
#include <QSemaphore>

#include <csignal>
#include <filesystem>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

using namespace brivane;
using namespace Qt::StringLiterals;

namespace {

/// A stand-in while it runs. Every wait ends after ten seconds.
class StandIn {
public:
    StandIn(const QString& executable, const QStringList& arguments)
        : m_process(executable, arguments)
    {
        m_process.setOutputHandler([this](QByteArrayView bytes) {
            m_output.append(bytes);
            m_hasOutput.release();
        });
        m_process.setTerminationHandler([this](ProcessEnd end) {
            m_end = end;
            m_hasEnded.release();
        });
        m_process.start();
    }

    void terminate() { m_process.terminate(); }
    QByteArray waitForOutput()
    {
        return m_hasOutput.tryAcquire(1, 10'000) ? m_output : QByteArray();
    }
    /// The exit status; -1 when it does not end, or by a signal.
    int waitForEnd()
    {
        const bool isOver = m_hasEnded.tryAcquire(1, 10'000);
        return isOver && m_end.reason == ProcessEnd::Reason::Exit ? m_end.status : -1;
    }

private:
    QByteArray m_output;
    ProcessEnd m_end;
    QSemaphore m_hasOutput;
    QSemaphore m_hasEnded;
    Process m_process;
};

QStringList namesIn(const QString& folder)
{
    QStringList names;
    const std::filesystem::path path = PathText::toBytes(folder).toStdString();
    for (const auto& entry : std::filesystem::directory_iterator(path))
        names += PathText::fromBytes(QByteArray::fromStdString(entry.path().filename().native()));
    names.sort();
    return names;
}

/// The writing end of a FIFO; not valid when nobody reads from it.
FileDescriptor openForReader(const QString& fifo)
{
    constexpr int flags = O_WRONLY | O_NONBLOCK | O_CLOEXEC;
    return FileDescriptor(::open(PathText::toBytes(fifo).constData(), flags));
}

/// Asks for ten seconds at most. Whether it became true.
bool comesTrue(const std::function<bool()>& isSo)
{
    const QDeadlineTimer deadline(10'000);
    while (!isSo() && !deadline.hasExpired())
        std::this_thread::yield();
    return isSo();
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
    EXPECT_EQ(StandIn(swiftc, {u"-O"_s, u"-o"_s, binary}).waitForEnd(), 2);
    EXPECT_GT(StandIn(swiftc, {u"-O"_s, u"-o"_s, binary, bad}).waitForEnd(), 0);
    EXPECT_EQ(namesIn(machine.path(u"/")).filter(u"binary"_s).size(), 0);
    ASSERT_EQ(StandIn(swiftc, {u"-O"_s, u"-o"_s, binary, good}).waitForEnd(), 0);
    Process made(binary, {});
    QSemaphore hasEnded;
    made.setTerminationHandler([&](ProcessEnd end) {
        EXPECT_EQ(end.status, 42);
        hasEnded.release();
    });
    made.start();
    EXPECT_TRUE(hasEnded.tryAcquire(1, 10'000));
}

TEST(CompilerStandIn, NoPartOfACompilerOutlivesACancelledCompilation)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    const QString folder = machine.directory(u"/compile");
    const QString fifo = folder + u"/never.h"_s;
    ASSERT_EQ(::mkfifo(PathText::toBytes(fifo).constData(), 0600), 0);
    const QString source = machine.file(u"/compile/source.swift", "#include \"never.h\"\n");
    StandIn compiler(swiftc, {u"-O"_s, u"-o"_s, folder + u"/binary"_s, source});
    // The part that reads sources waits for what the FIFO may give as long as it is held open.
    FileDescriptor writing;
    ASSERT_TRUE(comesTrue([&] { return (writing = openForReader(fifo)).isValid(); }));
    compiler.terminate();
    EXPECT_GT(compiler.waitForEnd(), 0);
    EXPECT_FALSE(openForReader(fifo).isValid());
    EXPECT_EQ(namesIn(folder), QStringList({u"never.h"_s, u"source.swift"_s}));
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
    const QString script = u"do shell script \"exec '"_s + elevate +
                           u"' --reuid 0 --clear-groups /bin/sh -c "
                           u"'echo $$; while sleep 0.01; do echo on; done'\""_s;
    StandIn running(u"/usr/bin/setpriv"_s,
                    {u"--reuid"_s, u"65534"_s, u"--clear-groups"_s, osascript, u"-e"_s, script});
    const int elevated = running.waitForOutput().trimmed().toInt();
    ASSERT_GT(elevated, 0);
    running.terminate();
    EXPECT_EQ(running.waitForEnd(), 128 + SIGTERM);
    // What it prints to is closed with that, and so it ends.
    EXPECT_TRUE(comesTrue([&] { return ::kill(elevated, 0) != 0; }));
}
