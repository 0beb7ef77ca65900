#include "sandbox/ClearFolder.h"

#include "sandbox/SandboxMachine.h"
#include "support/FileTestSupport.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace brivane;

TEST(SandboxMachine, LeavesNothingBehindAndNothingElseTouched)
{
    const TestFolder outside;
    writeFile(outside / "file", "content");
    QByteArray gone;
    QByteArray goneFromDevice;
    {
        SandboxMachine machine = SandboxMachine::temporary();
        gone = PathText::toBytes(machine.folder());
        machine.link(u"~/to folder", outside.path());
        machine.link(u"~/a/b/to file", outside / "file");
        machine.link(u"~/a/loop", "../a");
        machine.file(u"~/cleared-0/cleared-1/cleared-0/cleared-0/x", SandboxMachine::Size{1});
        machine.command(u"/usr/bin/tmutil").answer({.uses = 3});
        if (const auto device = machine.secondDevice()) {
            goneFromDevice = PathText::toBytes(*device);
            EXPECT_TRUE(stands(goneFromDevice));
        }
        const SandboxMachine moved = std::move(machine);
        EXPECT_TRUE(stands(gone));
    }
    EXPECT_FALSE(stands(gone) || stands(goneFromDevice));
    EXPECT_EQ(readFile(outside / "file"), "content");
}

TEST(SandboxMachine, LockedAndEndlesslyNestedFoldersAreClearedWithoutPrivileges)
{
    EXPECT_TRUE(passesUnprivileged([] {
        const TestFolder folder;
        const QByteArray chain = folder / "chain";
        buildNastyTree(folder / "nasty");
        buildDeepChain(chain, 2'500); // far beyond PATH_MAX
        for (const int level : {1'500, 40, 0})
            ASSERT_EQ(::chmod(chain + QByteArray("/d").repeated(level), 0), 0);
        EXPECT_TRUE(clearFolder(folder.path()));
        EXPECT_FALSE(stands(folder.path()));
    }));
}
