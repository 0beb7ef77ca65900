#include "core/Command.h"

#include <QTemporaryDir>

#include <cerrno>
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

TEST(Command, AStopReachesWhatRunsAndWhatIsStartedLater)
{
    const auto stop = std::make_unique<std::stop_source>();
    Command command(u"/bin/sh"_s, {u"-c"_s, u"echo $$; exec sleep 60"_s});
    const auto lines = std::make_shared<LineQueue>();
    command.sendLinesTo(lines);
    const QFuture<CommandEnd> ending = command.start(stop->get_token());
    std::thread reader([&] { // the end of the command ends this, too
        lines->forEachLine([&](std::string_view) { stop->request_stop(); });
    });
    EXPECT_EQ(ended(ending).process.reason, ProcessEnd::Reason::Signal);
    reader.join();

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
