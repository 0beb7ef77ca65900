#include "platform/FileDescriptor.h"
#include "platform/PathText.h"
#include "support/AwaitTask.h"
#include "support/ChildProcesses.h"
#include "support/RecordedProcess.h"
#include "support/Variable.h"

#include <QTemporaryDir>

#include <map>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

using namespace brivane;
using namespace brivane::testing;
using namespace Qt::StringLiterals;

namespace {

QStringList shell(const QString& line)
{
    return {u"-c"_s, line};
}

const QString sh = u"/bin/sh"_s;

/// A FIFO "gate" that shows whether somebody lives who has it open for reading.
class Gate {
public:
    Gate() { EXPECT_EQ(::mkfifo(m_path.constData(), 0600), 0); }

    /// In the folder of the gate.
    [[nodiscard]] QStringList shell(const char* line) const
    {
        return ::shell(u"cd '"_s + m_folder.path() + u"'; "_s + QString::fromLatin1(line));
    }
    /// Waits for a reader and lets it in.
    bool opens()
    {
        return waitUntil([this] { return (m_held = openForWriting()).isValid(); });
    }
    bool isLeft()
    {
        m_held.close();
        return waitUntil([this] { return !openForWriting().isValid(); });
    }

private:
    [[nodiscard]] FileDescriptor openForWriting() const
    {
        return FileDescriptor(::open(m_path.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
    }

    const QTemporaryDir m_folder;
    const QByteArray m_path = m_folder.path().toUtf8() + "/gate";
    FileDescriptor m_held;
};

class IgnoredSignals {
public:
    explicit IgnoredSignals(std::initializer_list<int> signals)
    {
        for (const int number : signals)
            m_before[number] = ::signal(number, SIG_IGN);
    }
    ~IgnoredSignals()
    {
        for (const auto& [number, handler] : m_before)
            ::signal(number, handler);
    }

private:
    std::map<int, void (*)(int)> m_before;
};

bool hasDeadChild()
{
    siginfo_t info = {};
    return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0 && info.si_pid != 0;
}

} // namespace

TEST(Process, MuchOutputOnBothPipesNeitherBlocksNorGetsLost)
{
    RecordedProcess run(
        sh, shell(u"head -c 3000000 /dev/zero & head -c 3000000 /dev/zero >&2; wait"_s));
    ASSERT_TRUE(run.runs());
    EXPECT_EQ(run.output, QByteArray(3'000'000, '\0'));
    EXPECT_EQ(run.error, QByteArray(3'000'000, '\0'));
    EXPECT_TRUE(run.end->isSuccess());
    EXPECT_FALSE(run.process->isRunning());
}

TEST(Process, OutputAtTheVeryEndIsNotLost)
{
    for (int round = 0; round < 50; ++round) {
        RecordedProcess run(sh, shell(u"printf last; printf words >&2; exit 3"_s));
        ASSERT_TRUE(run.runs());
        ASSERT_EQ(run.output, "last");
        ASSERT_EQ(run.error, "words");
        ASSERT_EQ(run.end->status, 3);
    }
    // Here it comes from a grandchild, after the child itself has gone.
    QTemporaryDir folder;
    const QString gate = folder.path() + u"/gate"_s;
    ASSERT_EQ(::mkfifo(gate.toUtf8().constData(), 0600), 0);
    RecordedProcess run(sh, shell(u"(read x < "_s + gate + u"; printf late) & printf early"_s));
    run.process->start();
    ASSERT_TRUE(run.waits([&] { return run.output == "early"; }));
    EXPECT_FALSE(run.end.has_value());
    const int writer = ::open(gate.toUtf8().constData(), O_WRONLY | O_CLOEXEC);
    ASSERT_GE(writer, 0);
    ::close(writer);
    ASSERT_TRUE(run.ends());
    EXPECT_EQ(run.output, "earlylate");
}

TEST(Process, ArgumentsArriveByteForByte)
{
    const QByteArray arguments[] = {
        "", " a  b ", "\"'\\$x`", "line\nbreak", "\xFF\xFE\xE2\x82", "caf\xC3\xA9"};
    QStringList list = shell(u"for a; do printf '%s|' \"$a\"; done"_s) + QStringList{u"sh"_s};
    QByteArray expected;
    for (const QByteArray& argument : arguments) {
        list += PathText::fromBytes(argument);
        expected += argument + '|';
    }
    RecordedProcess run(sh, list);
    ASSERT_TRUE(run.runs());
    EXPECT_EQ(run.output, expected);
}

TEST(Process, WhatCannotStartThrowsAndCallsNoHandler)
{
    QTemporaryDir folder;
    const std::tuple<QString, QStringList, int> rows[] = {
        {folder.path() + u"/missing"_s, {}, ENOENT},
        {folder.path(), {}, EACCES},
        {sh, {QString(u"a\0b"_s)}, EINVAL},
    };
    for (const auto& [executable, arguments, errorNumber] : rows) {
        RecordedProcess run(executable, arguments);
        try {
            run.process->start();
            ADD_FAILURE() << "started " << qPrintable(executable);
        } catch (const LaunchError& error) {
            EXPECT_EQ(error.errorNumber(), errorNumber);
            EXPECT_EQ(error.executable(), executable);
        }
        EXPECT_FALSE(run.process->isRunning());
    }
    EXPECT_TRUE(waitForNoChildren());
}

TEST(Process, NoPartOfACommandOutlivesItsEnd)
{
    enum How { Terminated, Destroyed };
    const std::pair<const char*, How> rows[] = {
        {"sleep 1000 < gate & wait", Terminated},
        {"sleep 1000 < gate & wait", Destroyed},
        {"sleep 1000 < gate &", Terminated}, // all that is left is what it has started
        {"sleep 1000 < gate &", Destroyed},
        {"(trap '' TERM; exec sleep 1000 < gate) & wait", Terminated},
        {"trap '' TERM; while :; do sleep 0.05 < gate; done", Destroyed},
    };
    for (const auto& [line, how] : rows) {
        Gate gate;
        RecordedProcess run(sh, gate.shell(line));
        run.process->start();
        ASSERT_TRUE(gate.opens());
        if (!QByteArrayView(line).endsWith("&")) {
            EXPECT_FALSE(hasDeadChild()) << line;
        } else {
            ASSERT_TRUE(waitUntil(hasDeadChild)) << "its number may be another's already";
        }
        if (how == Destroyed) {
            run.process.reset();
        } else {
            run.process->terminate();
            EXPECT_TRUE(run.ends());
            run.process->terminate(); // no harm to whoever has the number now
        }
        EXPECT_TRUE(waitForNoChildren()) << line;
        EXPECT_TRUE(gate.isLeft()) << line;
        EXPECT_EQ(run.end.has_value(), how == Terminated);
    }
}

TEST(Process, WhatHasLeftTheGroupIsNeitherEndedNorWaitedFor)
{
    Gate gate;
    RecordedProcess run(sh, gate.shell("setsid sh -c 'exec sleep 1000 < gate' & echo $!; wait"));
    run.process->start();
    ASSERT_TRUE(gate.opens());
    run.process->terminate();
    ASSERT_TRUE(run.ends());
    EXPECT_EQ(run.end->reason, ProcessEnd::Reason::Signal);
    EXPECT_EQ(run.end->status, SIGTERM);
    EXPECT_EQ(::kill(run.output.trimmed().toInt(), SIGKILL), 0);
}

TEST(Process, WhatALauncherLeftIgnoredNeitherHidesTheEndNorReachesTheChild)
{
    const auto handler = [](int) {};
    const std::pair<void (*)(int), int> rows[] = {
        {SIG_IGN, 0}, {SIG_DFL, SA_NOCLDWAIT}, {handler, SA_NOCLDWAIT}, {handler, SA_NOCLDSTOP}};
    for (const auto& [disposition, flags] : rows) {
        const IgnoredSignals ignored({SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM});
        struct sigaction action = {};
        action.sa_handler = disposition;
        action.sa_flags = flags;
        struct sigaction before = {};
        ASSERT_EQ(::sigaction(SIGCHLD, &action, &before), 0);
        RecordedProcess run(sh, shell(u"sed -n 's/SigIgn:\\t//p' /proc/self/status; exit 3"_s));
        EXPECT_TRUE(run.runs());
        ASSERT_EQ(::sigaction(SIGCHLD, &before, &action), 0);
        EXPECT_EQ(run.status(), 3);
        EXPECT_EQ(action.sa_handler, disposition == SIG_IGN ? SIG_DFL : disposition);
        // Only SIGHUP, which nohup ignores for whatever follows; above 31 are the C library's own.
        EXPECT_EQ(run.output.trimmed().toULongLong(nullptr, 16) & 0x7FFF'FFFF, 1U << (SIGHUP - 1));
    }
}

TEST(Process, NoTerminalStopsAChildAndNoChangeOfTheEnvironmentReachesIt)
{
    const Variable late("BRIVANE_TEST_LATE", "set while others start children");
    RecordedProcess run(
        sh, shell(u"read pid name state parent group session rest < /proc/self/stat;"
                  " echo $((pid - group)) $((pid - session)) \"$BRIVANE_TEST_LATE\""_s));
    ASSERT_TRUE(run.runs());
    EXPECT_EQ(run.output, "0 0 \n");
}

TEST(Process, AHandlerMayDestroyItsOwnProcess)
{
    auto process = std::make_shared<Process>(sh, shell(u"yes"_s));
    Process* raw = process.get();
    const std::weak_ptr<Process> watched = process;
    raw->setOutputHandler([held = std::move(process)](QByteArrayView) mutable { held.reset(); });
    raw->start();
    EXPECT_TRUE(waitForNoChildren());
    EXPECT_TRUE(watched.expired());
}

TEST(Process, NothingLeaksIntoTheChildOrStaysOpenHere)
{
    const int inherited = ::open("/dev/null", O_RDONLY); // as a careless library opens it
    ASSERT_GT(inherited, 2);
    const int before = openDescriptors();
    for (int round = 0; round < 20; ++round) {
        RecordedProcess run(sh, shell(u"ls /proc/self/fd"_s));
        ASSERT_TRUE(run.runs());
        // The three standard ones, and the one that lists the directory.
        EXPECT_EQ(run.output.split('\n').size() - 1, 4) << run.output.constData();
    }
    ::close(inherited);
    EXPECT_TRUE(waitForNoChildren());
    EXPECT_LE(openDescriptors(), before + 1); // the monitor's own, should this test be the first
}
