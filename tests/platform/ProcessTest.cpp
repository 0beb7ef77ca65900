#include "platform/PathText.h"
#include "support/ChildProcesses.h"
#include "support/RecordedProcess.h"

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

TEST(Process, TerminateEndsItAndDoesNotWaitForWhatItLeftBehind)
{
    RecordedProcess run(sh, shell(u"sleep 1000 & echo $!; wait"_s));
    run.process->start();
    ASSERT_TRUE(run.waits([&] { return run.output.endsWith('\n'); }));
    run.process->terminate();
    ASSERT_TRUE(run.ends());
    EXPECT_EQ(run.end->reason, ProcessEnd::Reason::Signal);
    EXPECT_EQ(run.end->status, SIGTERM);
    run.process->terminate(); // no harm to whoever has the number now
    EXPECT_EQ(::kill(run.output.trimmed().toInt(), SIGKILL), 0);
}

TEST(Process, DestructionReapsEvenAChildThatIgnoresTheRequest)
{
    for (const QString& line : {u"echo up; exec sleep 1000"_s,
                                u"trap '' TERM; echo up; while :; do sleep 0.05; done"_s}) {
        RecordedProcess run(sh, shell(line));
        run.process->start();
        ASSERT_TRUE(run.waits([&] { return run.output.endsWith('\n'); }));
        run.process.reset();
        EXPECT_TRUE(waitForNoChildren()) << qPrintable(line);
        EXPECT_FALSE(run.end.has_value());
    }
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
