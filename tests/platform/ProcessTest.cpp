#include "support/AwaitTask.h"
#include "support/ChildProcesses.h"
#include "support/RecordedProcess.h"
#include "support/Variable.h"

#include <QFile>
#include <QTemporaryDir>

#include <list>

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

TEST(Process, WhatCannotStartThrowsAndCallsNoHandler)
{
    QTemporaryDir folder;
    const std::tuple<QString, QStringList, int> rows[] = {
        {folder.path() + u"/missing"_s, {}, ENOENT},
        {folder.path(), {}, EACCES},
        {sh, {QString(u"a\0b"_s)}, EINVAL}};
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
    const std::pair<QString, How> rows[] = {
        {u"sleep 1000 & echo $!; wait"_s, Terminated},
        {u"sleep 1000 & echo $!; wait"_s, Destroyed},
        {u"sleep 1000 & echo $!"_s, Terminated}, // all that is left is what it has started
        {u"sh -c 'trap \"\" TERM; echo $$; exec sleep 1000' & wait"_s, Terminated},
        {u"trap '' TERM; echo $$; while :; do sleep 0.05; done"_s, Destroyed}};
    for (const auto& [line, how] : rows) {
        RecordedProcess run(sh, shell(line));
        run.process->start();
        ASSERT_TRUE(run.waits([&] { return run.output.endsWith('\n'); }));
        const auto isKeptWhenDead = [] {
            siginfo_t info = {};
            return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0 && info.si_pid > 0;
        };
        ASSERT_TRUE(!line.endsWith(u"$!") || waitUntil(isKeptWhenDead)) << "for its number";
        how == Terminated ? run.process->terminate() : run.process.reset();
        EXPECT_TRUE(how == Destroyed || run.ends());
        EXPECT_TRUE(waitForNoChildren()) << qPrintable(line);
        QFile state(u"/proc/"_s + QString::fromLatin1(run.output.trimmed()) + u"/stat"_s);
        EXPECT_TRUE(waitUntil([&] { // dead, though perhaps not reaped by whoever got it
            state.close();
            return !state.open(QFile::ReadOnly) || state.readAll().contains(") Z ");
        })) << qPrintable(line);
        EXPECT_EQ(run.end.has_value(), how == Terminated);
    }
}

TEST(Process, WhatALauncherLeftIgnoredNeitherHidesTheEndNorReachesTheChild)
{
    const auto handler = [](int) {};
    const std::pair<void (*)(int), int> rows[] = {{SIG_IGN, 0}, {handler, SA_NOCLDWAIT}};
    for (const auto& [disposition, flags] : rows) {
        struct sigaction left = {};
        left.sa_handler = disposition;
        left.sa_flags = flags;
        ASSERT_EQ(::sigaction(SIGCHLD, &left, nullptr), 0);
        const auto before = ::signal(SIGTERM, SIG_IGN);
        RecordedProcess run(sh, shell(u"sed -n 's/SigIgn://p' /proc/self/status; exit 3"_s));
        EXPECT_TRUE(run.runs());
        ::signal(SIGTERM, before);
        EXPECT_EQ(run.status(), 3);
        // Above 31 are the C library's own, the first is SIGHUP.
        EXPECT_EQ(run.output.trimmed().toULongLong(nullptr, 16) & 0x7FFF'FFFE, 0U);
        EXPECT_EQ(::signal(SIGCHLD, SIG_DFL), disposition == SIG_IGN ? SIG_DFL : disposition);
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
    std::list<RecordedProcess> runs; // kept, as an owner keeps what has ended
    for (int round = 0; round < 20; ++round) {
        RecordedProcess& run = runs.emplace_back(sh, shell(u"ls /proc/self/fd"_s));
        ASSERT_TRUE(run.runs());
        // The three standard ones, and the one that lists the directory.
        EXPECT_EQ(run.output.split('\n').size() - 1, 4) << run.output.constData();
    }
    ::close(inherited);
    EXPECT_TRUE(waitForNoChildren());
    // One more is the monitor's own, should this test be the first.
    EXPECT_TRUE(waitUntil([&] { return openDescriptors() <= before + 1; }));
}
