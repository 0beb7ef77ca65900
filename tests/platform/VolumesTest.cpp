#include "platform/PathText.h"
#include "platform/linux/LinuxVolumes.h"
#include "sandbox/SandboxMachine.h"
#include "support/AwaitTask.h"

#include <QElapsedTimer>

#include <atomic>
#include <future>
#include <map>

#include <gtest/gtest.h>

using namespace brivane;
using brivane::testing::waitUntil;
using namespace Qt::StringLiterals;

namespace {

/// A make-believe machine: mount table, devices, and volumes that always have 1000 bytes.
class VolumesTest : public ::testing::Test {
protected:
    VolumesTest()
    {
        sources.mountInfo = bytesOf(u"/mountinfo");
        sources.devices = {bytesOf(u"/dev-block"), bytesOf(u"/by-uuid"), bytesOf(u"/by-label")};
        sources.ask = [](const QByteArray& path) { return PathFacts{true, path, 1000, 400}; };
    }

    [[nodiscard]] QByteArray bytesOf(QStringView path) const
    {
        return PathText::toBytes(machine.path(path));
    }

    SandboxMachine machine = SandboxMachine::temporary();
    LinuxVolumes::Sources sources;
};

const QByteArray desktop = R"(21 26 0:19 / /sys rw shared:7 - sysfs sysfs rw
22 26 0:20 / /proc rw shared:14 - proc proc rw
26 1 8:2 / / rw,relatime shared:1 - ext4 /dev/sda2 rw
30 26 0:25 / /run rw shared:12 - tmpfs tmpfs rw
31 26 0:26 / /tmp rw - tmpfs tmpfs rw
40 26 8:1 / /boot/efi rw - vfat /dev/sda1 rw
41 26 7:3 / /snap/core/1 ro - squashfs /dev/loop3 ro
42 26 8:2 /home/ann /srv/bind rw - ext4 /dev/sda2 rw
43 26 8:17 / /media/ann/USB\040stick\134 rw shared:9 master:1 - vfat /dev/sdb1 rw
44 26 8:17 / /mnt/again rw - vfat /dev/sdb1 rw
45 26 0:50 / /mnt/nas rw - nfs4 nas:/export/films rw
46 26 0:51 /@data /mnt/pool rw - btrfs /dev/sdc1 rw
47 26 0:51 /@home /mnt/pool2 rw - btrfs /dev/sdc1 rw
48 26 0:52 / /run/user/1000/doc rw - fuse.portal portal rw
49 26 0:53 / /home/ann/host rw - fuse.sshfs ann@host:/x rw
50 26 0:54 / /var/lib/docker/overlay2/x rw - overlay overlay rw
51 26 8:33 / /run/media/ann/Backup rw - fuseblk /dev/sdc1 rw
52 26 0:60 / /mnt/hidden rw - tmpfs tmpfs rw
53 26 8:49 / /mnt/hidden rw - xfs /dev/sdd1 rw
garbage
54 26 nonsense / /x rw - ext4 /dev/sdz rw
)";

} // namespace

TEST_F(VolumesTest, OnlyWhatAPersonCallsADiskIsListedAndOnlyOnce)
{
    machine.file(u"/mountinfo", desktop);
    LinuxVolumes volumes(sources);
    const std::vector<QString> expected = {
        u"/"_s,          u"/media/ann/USB stick\\"_s, u"/mnt/nas"_s,
        u"/mnt/pool"_s,  u"/home/ann/host"_s,         u"/run/media/ann/Backup"_s,
        u"/mnt/hidden"_s};
    EXPECT_EQ(volumes.mountedVolumes(), expected);

    std::map<QByteArray, bool> isNetwork;
    for (const MountPoint& point : volumes.mountPoints())
        isNetwork[point.path] = point.isNetwork;
    EXPECT_FALSE(isNetwork.at("/proc") || isNetwork.at("/run/media/ann/Backup"));
    EXPECT_TRUE(isNetwork.at("/mnt/nas") && isNetwork.at("/home/ann/host"));
    EXPECT_FALSE(isNetwork.contains("/x"));

    machine.file(u"/mountinfo",
                 QByteArray("9 1 0:30 / / rw - overlay overlay rw\n"
                            "10 9 8:1 /etc/hosts /etc/hosts rw - ext4 /dev/sda1 rw\n"));
    EXPECT_EQ(volumes.mountedVolumes(), std::vector<QString>{u"/"_s}); // in a container
    sources.mountInfo = "/no/such/file";
    // A changed root is not in the list, and is a disk all the same.
    EXPECT_EQ(LinuxVolumes(sources).mountedVolumes(), std::vector<QString>{u"/"_s});
}

TEST_F(VolumesTest, FactsComeFromTheDeviceOfThePath)
{
    machine.file(u"/mountinfo", desktop);
    for (const QString& disk : {u"/disks/pci/sda"_s, u"/disks/pci/sdd"_s,
                                u"/disks/usb1/sdb"_s, // a hard disk in a USB case
                                u"/disks/pci/sdc"_s}) {
        machine.file(disk + u"/removable"_s, disk.endsWith(u'c') ? "1\n" : "0\n");
        for (const QString& number : {u"1"_s, u"2"_s})
            machine.file(disk + disk.right(4) + number + u"/partition"_s, number.toUtf8() + '\n');
    }
    machine.link(u"/disks/virtual/dm-0/slaves/sdc1", "../../../pci/sdc/sdc1"); // encrypted
    machine.link(u"/dev-block/8:2", "../disks/pci/sda/sda2");
    machine.link(u"/dev-block/8:17", "../disks/usb1/sdb/sdb1");
    machine.link(u"/dev-block/8:33", "../disks/virtual/dm-0");
    machine.link(u"/dev-block/8:49", "../disks/pci/sdd/sdd1");
    machine.link(u"/by-uuid/1234-ABCD", "../../sdb1");
    machine.link(u"/by-uuid/wrong", "../../sdb11");
    machine.link(u"/by-label/My\\x20\\xc3\\xa9\\x2fstick", "../../sdb1");
    LinuxVolumes volumes(sources);

    const struct {
        QString path;
        QString name; ///< empty: whatever the system is called
        QString format;
        bool isRemovable = false;
        bool isInternal = false;
    } rows[] = {{u"/etc"_s, {}, u"ext4"_s, false, true},
                {u"/media/ann/USB stick\\/photos"_s, u"My \u00E9/stick"_s, u"MS-DOS (FAT)"_s, true},
                {u"/mnt/nas"_s, u"nas"_s, u"NFS"_s},
                {u"/mnt/nasty"_s, {}, u"ext4"_s, false, true}, // not below /mnt/nas
                {u"/run/media/ann/Backup"_s, u"Backup"_s, u"NTFS"_s, true},
                {u"/mnt/hidden"_s, u"hidden"_s, u"XFS"_s, false, true}};
    for (const auto& row : rows) {
        const std::optional<VolumeInfo> info = volumes.volumeInfo(row.path);
        ASSERT_TRUE(info) << qPrintable(row.path);
        EXPECT_TRUE(row.name.isEmpty() ? !info->name.isEmpty() : info->name == row.name)
            << qPrintable(info->name);
        EXPECT_EQ(info->formatDescription, row.format);
        EXPECT_EQ(info->uuid, row.path.startsWith(u"/media") ? u"1234-ABCD"_s : QString());
        EXPECT_EQ(info->isRemovable, row.isRemovable) << qPrintable(row.path);
        EXPECT_EQ(info->isInternal, row.isInternal) << qPrintable(row.path);
        EXPECT_EQ(info->totalCapacity - info->availableCapacity, 600u);
    }
}

TEST_F(VolumesTest, AShareThatNeverAnswersNeitherHangsNorPilesUpThreads)
{
    machine.file(u"/mountinfo", desktop);
    std::promise<void> isBack;
    std::atomic<int> asked = 0;
    const std::shared_future<void> back = isBack.get_future().share();
    sources.ask = [&asked, back](const QByteArray& path) {
        ++asked;
        back.wait();
        return PathFacts{true, path, 1000, 400};
    };
    sources.patience = std::chrono::milliseconds(20);
    LinuxVolumes volumes(sources);
    QElapsedTimer time;
    time.start();
    for (int round = 0; round < 5; ++round) {
        const std::optional<VolumeInfo> info = volumes.volumeInfo(u"/mnt/nas"_s);
        ASSERT_TRUE(info);
        EXPECT_EQ(info->name, u"nas");
        EXPECT_EQ(info->totalCapacity, 0u);
    }
    EXPECT_LT(time.elapsed(), 5000);
    EXPECT_EQ(asked, 1);
    isBack.set_value();
    EXPECT_TRUE(
        waitUntil([&] { return volumes.volumeInfo(u"/mnt/nas"_s)->totalCapacity == 1000; }));
}

TEST_F(VolumesTest, ThisMachineHasARootWithRoom)
{
    const std::unique_ptr<Volumes> volumes = Volumes::ofThisMachine();
    const std::vector<QString> mounted = volumes->mountedVolumes();
    ASSERT_FALSE(mounted.empty());
    EXPECT_EQ(mounted.front(), u"/");
    const std::optional<VolumeInfo> info = volumes->volumeInfo(u"/"_s);
    ASSERT_TRUE(info);
    EXPECT_GT(info->totalCapacity, info->availableCapacity);
    EXPECT_FALSE(volumes->volumeInfo(machine.path(u"/missing")));
    EXPECT_TRUE(volumes->volumeInfo(machine.link(PathText::fromBytes("/\xFF"), "/")));
}
