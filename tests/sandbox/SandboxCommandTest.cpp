#include "platform/PathText.h"
#include "sandbox/SandboxMachine.h"
#include "support/RecordedProcess.h"

#include <list>

#include <gtest/gtest.h>

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
