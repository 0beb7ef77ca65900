#include "platform/FileTrash.h"

#include "platform/FileRemoval.h"
#include "sandbox/NastyTree.h"
#include "support/FileTestSupport.h"
#include "support/faults/SystemCallFaults.h"

#include <QStringList>

#include <cerrno>
#include <cstdlib>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace brivane;

namespace {

/// One home folder for the whole program, set before GIO first asks for it.
class TrashHome : public testing::Environment {
public:
    void SetUp() override
    {
        m_home.emplace();
        ::setenv("HOME", m_home->path(), 1);
        ::setenv("XDG_DATA_HOME", *m_home / "data", 1);
        ::setenv("GIO_USE_VFS", "local", 1);
    }
    void TearDown() override { m_home.reset(); }
    static const TestFolder& folder() { return *m_home; }

private:
    static inline std::optional<TestFolder> m_home;
};

const auto* const environment = testing::AddGlobalTestEnvironment(new TrashHome);

} // namespace

TEST(FileTrash, TrashedItemsLieWhereTheResultSaysAlsoWhenNamesRepeat)
{
    const TestFolder& home = TrashHome::folder();
    QStringList places;
    for (const QByteArray name : {"same", "same", "invalid \xFF\nname", "folder"}) {
        const QByteArray path = home / name;
        if (name == "folder")
            ASSERT_EQ(::mkdir(path, 0755), 0);
        else
            ASSERT_EQ(::symlink(name + QByteArray::number(places.size()), path), 0);
        const Snapshot before = snapshot(path);
        const auto place = moveToTrash(text(path));
        ASSERT_TRUE(place) << place.error().text().toStdString();
        EXPECT_FALSE(stands(path));
        const QByteArray landed = PathText::toBytes(*place);
        EXPECT_TRUE(landed.startsWith(home / "data/Trash/files/")) << landed.constData();
        EXPECT_EQ(difference(snapshot(landed), before), "");
        EXPECT_FALSE(places.contains(*place));
        places << *place;
    }
}

TEST(FileTrash, RefusalLeavesTheItemWhereItIs)
{
    const QByteArray kept = TrashHome::folder() / "kept";
    writeFile(kept, "content");
    const auto identity = FileIdentity::of(text(kept));
    writeFile(kept, "other content");
    EXPECT_EQ(moveToTrash(text(kept), *identity).error().code, ESTALE);
    EXPECT_EQ(readFile(kept), "other content");
    EXPECT_EQ(moveToTrash(text(kept + " missing")).error().code, ENOENT);
}

TEST(FileTrash, ParentSwappedForALinkAtAnyMomentNeverTakesAnythingElseInSilence)
{
    const TestFolder& home = TrashHome::folder();
    int taken = 0;
    bool wasReached = true;
    for (int n = 0; wasReached && !testing::Test::HasFailure(); ++n) {
        for (const char* name : {"own", "outside"}) {
            ASSERT_EQ(::mkdir(home / name, 0755), 0);
            writeFile(home / name + "/file", name);
        }
        const QString path = text(home / "own/file");
        const FileIdentity meant = *FileIdentity::of(path);
        const auto swap = [&](const SystemCall&) {
            if (::rename(home / "own", home / "parked") == 0) {
                EXPECT_EQ(::symlink("outside", home / "own"), 0);
            }
            return 0;
        };
        const auto place =
            withFaultAt(n, wasReached, swap, [&] { return moveToTrash(path, meant); });
        if (place) {
            EXPECT_EQ(readFile(PathText::toBytes(*place)), "own") << n;
        } else {
            EXPECT_EQ(place.error().code, ESTALE) << n;
            EXPECT_EQ(readFile(home / "parked/file"), "own") << n;
        }
        if (!stands(home / "outside/file")) {
            ++taken;
            EXPECT_EQ(readFile(PathText::toBytes(place.error().path)), "outside") << n;
        }
        for (const char* name : {"own", "outside", "parked"})
            (void)removeTree(text(home / name));
    }
    EXPECT_GT(taken, 0) << "no moment was late enough for this test to show anything";
}

TEST(FileTrash, ReadOnlyFolderOfTheUsersOwnCanBeTrashed)
{
    const TestFolder& home = TrashHome::folder();
    (void)removeTree(text(home / "data"));
    ASSERT_EQ(::chmod(home.path(), 0777), 0);
    EXPECT_TRUE(passesUnprivileged([&] {
        ASSERT_EQ(::mkdir(home / "read-only", 0555), 0);
        const auto place = moveToTrash(text(home / "read-only"));
        ASSERT_TRUE(place) << place.error().text().toStdString();
        EXPECT_EQ(modeOf(PathText::toBytes(*place)), 0555U);
    }));
    (void)removeTree(text(home / "data"));
}

TEST(FileTrash, VolumeWithoutTrashIsAnErrorAndNoRemoval)
{
    const TestFolder other(makeFolderOnOtherDevice(TrashHome::folder().path()));
    if (other.path().isEmpty())
        GTEST_SKIP() << "there is no second device";
    writeFile(other / "file", "content"); // GIO trashes nothing on the system's own file systems
    const auto refused = moveToTrash(text(other / "file"));
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().code, ENOTSUP);
    EXPECT_FALSE(refused.error().detail.isEmpty());
    EXPECT_EQ(readFile(other / "file"), "content");
}
