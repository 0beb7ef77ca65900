#include "sandbox/SandboxCommand.h"

#include "platform/PathText.h"
#include "sandbox/SandboxMachine.h"

#include <chrono>
#include <optional>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace brivane;
using namespace Qt::StringLiterals;

namespace {

/// A call of a command as a child process, by nothing but POSIX.
class Call {
public:
    Call(const SandboxCommand& command, const std::vector<QByteArray>& arguments)
    {
        const QByteArray path = PathText::toBytes(command.path());
        std::vector<char*> vector{const_cast<char*>(path.constData())};
        for (const QByteArray& argument : arguments)
            vector.push_back(const_cast<char*>(argument.constData()));
        vector.push_back(nullptr);
        int output[2];
        int error[2];
        EXPECT_EQ(::pipe2(output, O_CLOEXEC), 0);
        EXPECT_EQ(::pipe2(error, O_CLOEXEC), 0);
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions, error[1], STDERR_FILENO);
        EXPECT_EQ(
            ::posix_spawn(&m_child, path.constData(), &actions, nullptr, vector.data(), environ),
            0);
        ::posix_spawn_file_actions_destroy(&actions);
        ::close(output[1]);
        ::close(error[1]);
        m_output = output[0];
        m_error = error[0];
    }

    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    ~Call()
    {
        ::close(m_output);
        ::close(m_error);
        if (m_child > 0) {
            ::kill(m_child, SIGKILL);
            ::waitpid(m_child, nullptr, 0);
        }
    }

    void terminate() const { ::kill(m_child, SIGTERM); }

    /// The first `size` bytes of the output, or fewer when nothing comes for ten seconds.
    QByteArray output(qsizetype size) const { return read(m_output, size); }
    QByteArray error(qsizetype size) const { return read(m_error, size); }

    [[nodiscard]] bool isRunning() const
    {
        siginfo_t info{};
        return ::waitid(P_PID, static_cast<id_t>(m_child), &info, WEXITED | WNOHANG | WNOWAIT) ==
                   0 &&
               info.si_pid == 0;
    }

    /// As waitpid gives it. Bounded by the time that the whole test has.
    int status()
    {
        int status = -1;
        ::waitpid(std::exchange(m_child, 0), &status, 0);
        return status;
    }

private:
    static QByteArray read(int descriptor, qsizetype size)
    {
        QByteArray bytes;
        pollfd ready{descriptor, POLLIN, 0};
        while (bytes.size() < size && ::poll(&ready, 1, 10'000) == 1) {
            char buffer[4096];
            const auto wanted = std::min<qsizetype>(size - bytes.size(), sizeof buffer);
            const ssize_t count = ::read(descriptor, buffer, static_cast<std::size_t>(wanted));
            if (count <= 0)
                break;
            bytes.append(buffer, count);
        }
        return bytes;
    }

    pid_t m_child = 0;
    int m_output = -1;
    int m_error = -1;
};

int exitStatus(const SandboxCommand& command, const std::vector<QByteArray>& arguments = {})
{
    const int status = Call(command, arguments).status();
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

TEST(SandboxCommand, ArgumentsAreKeptByteForByte)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    const SandboxCommand command = machine.command(u"/usr/bin/tmutil");
    const std::vector<QByteArray> arguments = {
        "", "-e", "two\nlines", "'\"\\$(x)`", "\xFF\xC3", "caf\xC3\xA9", QByteArray(100'000, 'x'),
        ""};
    EXPECT_EQ(exitStatus(command, arguments), 0);
    EXPECT_EQ(exitStatus(command), 0);
    QStringList expected;
    for (const QByteArray& argument : arguments)
        expected += PathText::fromBytes(argument);
    EXPECT_EQ(command.calls(), (QList<QStringList>{expected, {}}));
    EXPECT_TRUE(machine.command(u"/bin/ps").calls().isEmpty());
}

TEST(SandboxCommand, CallsAtTheSameTimeAreAllRecordedAndShareNoUse)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    SandboxCommand command = machine.command(u"/bin/launchctl");
    command.answer({.status = 3, .uses = 7});
    std::vector<std::unique_ptr<Call>> calls;
    for (int i = 0; i < 40; ++i)
        calls.push_back(std::make_unique<Call>(
            command, std::vector<QByteArray>{QByteArray::number(i), QByteArray(20'000, 'y')}));
    int answered = 0;
    for (const auto& call : calls)
        answered += WEXITSTATUS(call->status()) == 3 ? 1 : 0;
    EXPECT_EQ(answered, 7);

    QStringList numbers;
    for (const QStringList& arguments : command.calls()) {
        ASSERT_EQ(arguments.size(), 2);
        EXPECT_EQ(arguments[1].size(), 20'000);
        numbers += arguments[0];
    }
    EXPECT_EQ(numbers.size(), 40);
    EXPECT_EQ(numbers.removeDuplicates(), 0);
}

TEST(SandboxCommand, AnswersFollowTheirOrderTheirUsesAndTheArguments)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    SandboxCommand command = machine.command(u"/usr/bin/tmutil");
    EXPECT_EQ(exitStatus(command), 0);
    command.answer({.status = 1, .uses = 1})
        .answer({.status = 2, .when = {u"list"_s, u"/"_s}})
        .answer({.status = 3, .uses = 1})
        .answer({.status = 4});
    EXPECT_EQ(exitStatus(command, {"list", "/"}), 1);
    EXPECT_EQ(exitStatus(command, {"list", "/", "more"}), 2);
    EXPECT_EQ(exitStatus(command, {"list"}), 3);
    EXPECT_EQ(exitStatus(command, {"list", "/other"}), 4);
    EXPECT_EQ(exitStatus(command, {"list/"}), 4);
    command.forgetAnswers();
    EXPECT_EQ(exitStatus(command.answer({.status = 255})), 255);
}

TEST(SandboxCommand, OutputErrorAndStatusArriveUnchanged)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    SandboxCommand command = machine.command(u"~/bin/tool with blanks");
    const QByteArray output("a\0b\xFF\n", 5);
    command.answer({.output = output, .error = "no\n", .status = 9});
    Call call(command, {});
    EXPECT_EQ(call.output(100), output);
    EXPECT_EQ(call.error(100), "no\n");
    EXPECT_EQ(WEXITSTATUS(call.status()), 9);
}

TEST(SandboxCommand, DelaysPassBeforeAndAfterTheOutput)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    SandboxCommand command = machine.command(u"/usr/bin/osascript");
    const std::chrono::milliseconds delay{60};
    command.answer({.output = "progress\n", .delay = delay, .linger = std::chrono::hours{1}});
    const auto begin = std::chrono::steady_clock::now();
    Call call(command, {"-e"});
    EXPECT_EQ(call.output(9), "progress\n");
    EXPECT_GE(std::chrono::steady_clock::now() - begin, delay);
    // It lingers, and can be terminated like any other process.
    EXPECT_TRUE(call.isRunning());
    EXPECT_EQ(command.calls(), (QList<QStringList>{{u"-e"_s}}));
    call.terminate();
    const int status = call.status();
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM);
}
