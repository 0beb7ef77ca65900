#include "sandbox/ClearFolder.h"

#include "platform/PathText.h"
#include "sandbox/SandboxMachine.h"

#include <filesystem>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace brivane;
namespace fs = std::filesystem;

namespace {

constexpr int failed = 7;

/// Runs `act` in a child for whom permissions bind. Its result is the child's status.
template<typename Act>
int withoutPrivileges(Act act)
{
    const pid_t child = ::fork();
    if (child == 0) {
        if (::geteuid() == 0 && ::setresuid(65534, 65534, 65534) != 0)
            ::_exit(failed);
        ::_exit(act());
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

TEST(SandboxMachine, LeavesNothingBehindAndNothingElseTouched)
{
    const SandboxMachine outside = SandboxMachine::temporary();
    const QString kept = outside.file(u"~/kept/file", QByteArray("content"));
    fs::path gone;
    fs::path goneFromDevice;
    {
        SandboxMachine machine = SandboxMachine::temporary();
        gone = PathText::toBytes(machine.folder()).toStdString();
        machine.link(u"~/to folder", PathText::toBytes(outside.path(u"~/kept")));
        machine.link(u"~/a/b/to file", PathText::toBytes(kept));
        machine.link(u"~/a/loop", "../a");
        machine.file(u"~/cleared-0/cleared-1/cleared-0/cleared-0/x", SandboxMachine::Size{1});
        machine.command(u"/usr/bin/tmutil").answer({.uses = 3});
        if (const auto device = machine.secondDevice()) {
            goneFromDevice = PathText::toBytes(*device).toStdString();
            EXPECT_TRUE(fs::exists(goneFromDevice));
        }
        const SandboxMachine moved = std::move(machine);
        EXPECT_TRUE(fs::exists(gone));
    }
    EXPECT_FALSE(fs::exists(fs::symlink_status(gone)));
    EXPECT_TRUE(goneFromDevice.empty() || !fs::exists(goneFromDevice));
    EXPECT_EQ(fs::file_size(PathText::toBytes(kept).toStdString()), 7U);
}

TEST(SandboxMachine, LockedAndEndlesslyNestedFoldersAreClearedWithoutPrivileges)
{
    const int status = withoutPrivileges([] {
        const SandboxMachine machine = SandboxMachine::temporary();
        const QByteArray folder = PathText::toBytes(machine.folder()) + "/work";
        const std::string top = folder.toStdString();
        int below = ::mkdir(folder.constData(), 0700) == 0 ? ::open(top.c_str(), O_RDONLY) : -1;
        const std::string name(100, 'd');
        for (int level = 0; level < 400 && below >= 0; ++level) { // far beyond PATH_MAX
            const int parent = below;
            below = ::mkdirat(parent, name.c_str(), 0700) == 0
                        ? ::openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY)
                        : -1;
            ::fchmod(parent, level % 50 == 1 ? 0 : 0700);
            ::close(parent);
        }
        ::close(below);
        return below >= 0 && clearFolder(folder) && !fs::exists(top) ? 0 : failed;
    });
    EXPECT_EQ(status, 0);
}
