#include "demo/DemoContent.h"

#include "platform/PathText.h"
#include "sandbox/SandboxMachine.h"
#include "sandbox/SandboxVolumes.h"

#include <filesystem>
#include <map>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace brivane;
using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

TEST(DemoContent, LooksLikeAMachineOfSomeYearsAndTakesNoRoom)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    const QDateTime now = QDateTime::fromSecsSinceEpoch(1'800'000'000, Qt::UTC);
    fillWithDemoContent(machine, now);
    machine.setMode(u"~/Library/Application Support/Sealed Vault", 0755);

    int files = 0;
    std::uint64_t logical = 0;
    std::uint64_t allocated = 0;
    std::map<off_t, int> largeOfSize;
    for (const fs::directory_entry& entry :
         fs::recursive_directory_iterator(PathText::toBytes(machine.folder()).toStdString())) {
        struct stat status {};
        ASSERT_EQ(::lstat(entry.path().c_str(), &status), 0);
        if (!S_ISREG(status.st_mode))
            continue;
        ++files;
        logical += static_cast<std::uint64_t>(status.st_size);
        allocated += static_cast<std::uint64_t>(status.st_blocks) * 512;
        if (status.st_size > 10'000'000) {
            EXPECT_EQ(++largeOfSize[status.st_size], 1) << entry.path();
        }
    }
    EXPECT_GT(files, 5000);
    EXPECT_GT(logical, 200'000'000'000U);
    EXPECT_LT(logical, 300'000'000'000U);
    EXPECT_LT(allocated, 100'000'000U);
}

TEST(SandboxVolumes, PathsBelongToTheInnermostMountAndComeBackToTheDiskAfterIt)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    SandboxVolumes volumes(machine);
    const QString drive = machine.directory(u"/Volumes/Archive");
    const QString neighbour = machine.directory(u"/Volumes/Archive 2");
    const QString file = machine.file(u"/Volumes/Archive/a", QByteArray("a"));
    volumes.mount(drive, SandboxVolumes::externalDrive(u"Archive"_s));

    EXPECT_EQ(volumes.mountedVolumes(), (std::vector<QString>{machine.path(u"/"), drive}));
    const auto nameAt = [&](const QString& path) {
        const auto info = volumes.volumeInfo(path);
        return info ? info->name : u"none"_s;
    };
    EXPECT_EQ(nameAt(file), u"Archive");
    EXPECT_EQ(nameAt(neighbour), u"Macintosh HD");
    EXPECT_EQ(nameAt(machine.path(u"~")), u"Macintosh HD");
    EXPECT_EQ(nameAt(machine.path(u"~/missing")), u"none");
    volumes.unmount(drive);
    EXPECT_EQ(nameAt(file), u"Macintosh HD");
    EXPECT_EQ(volumes.mountedVolumes(), std::vector<QString>{volumes.startupDisk()});
}
