#include "core/Command.h"

#include <QTemporaryDir>

#include <cerrno>
#include <csignal>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

using namespace brivane;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

CommandEnd ended(QFuture<CommandEnd> ending)
{
    ending.waitForFinished();
    return ending.result();
}

} // namespace

TEST(Command, AStopEndsTheWholeGroupWheneverItComes)
{
    const auto stop = std::make_unique<std::stop_source>();
    Command command(u"/bin/sh"_s, {u"-c"_s, u"sleep 60 & echo $!; wait"_s});
    const auto lines = std::make_shared<LineQueue>();
    command.sendLinesTo(lines);
    const QFuture<CommandEnd> ending = command.start(stop->get_token());
    pid_t inner = 0;
    std::thread reader([&] { // the end of the command ends this, too
        lines->forEachLine([&](std::string_view line) {
            inner = std::stoi(std::string(line));
            stop->request_stop();
        });
    });
    EXPECT_EQ(ended(ending).process.reason, ProcessEnd::Reason::Signal);
    reader.join();
    ASSERT_GT(inner, 0);
    // It may be a zombie for a moment, until whoever adopts it has looked.
    for (int i = 0; i < 500 && ::kill(inner, 0) == 0; ++i)
        std::this_thread::sleep_for(10ms);
    EXPECT_TRUE(::kill(inner, 0) != 0 && errno == ESRCH);

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
