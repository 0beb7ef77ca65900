#include "QuarantineDeeds.h"

#include <gtest/gtest.h>

namespace brivane::testing {

namespace {

void nothing(WatchedGround& /*ground*/) {}

void fill(WatchedGround& ground)
{
    ground.start();
    EXPECT_EQ(ground.quarantine(ground.paths()).moved, 3);
}

/// How many of the user's things are neither at their places nor listed.
qsizetype goneFrom(const WatchedGround& ground)
{
    return ground.paths().size() - ground.service->items().size();
}

void handOver(WatchedGround& ground)
{
    ground.start();
    ground.quarantine(ground.paths());
}

QString quarantined(const WatchedGround& ground)
{
    qsizetype moved = 0;
    for (const QString& path : ground.paths())
        moved += ground.isAtItsPlace(path) ? 0 : 1;
    return u"Quarantined %1 items ("_s.arg(moved);
}

void restoreAll(WatchedGround& ground)
{
    ground.start();
    WatchedGround::await(ground.service->restoreAll());
}

QString restored(const WatchedGround& ground)
{
    return u"Restored %1 items"_s.arg(goneFrom(ground));
}

} // namespace

const std::vector<Deed> deeds = {
    {"quarantine", Things::AtHome, &nothing, &handOver, &quarantined, false},
    {"quarantine through a link", Things::BehindALink, &nothing, &handOver, &quarantined, false},
    {"quarantine of another volume", Things::OnAnotherVolume, &nothing, &handOver, &quarantined,
     false},
    {"quarantine on a full disk", Things::AtHome,
     [](WatchedGround& ground) {
         ground.start();
         EXPECT_TRUE(waitUntil([&] { return stands(ground.store() + u"/.reserve"_s); }));
     },
     [](WatchedGround& ground) {
         ground.fileSystem.isFull = true;
         handOver(ground);
         ground.fileSystem.isFull = false;
     },
     &quarantined, false},
    {"restore", Things::AtHome, &fill, &restoreAll, &restored, false},
    {"restore through a link", Things::BehindALink, &fill, &restoreAll, &restored, false},
    {"restore to another volume", Things::OnAnotherVolume, &fill, &restoreAll, &restored, false},
    {"purge", Things::AtHome, &fill,
     [](WatchedGround& ground) {
         ground.start();
         awaitTask(ground.service->purgeAll());
     },
     [](const WatchedGround& ground) { return u"Purged %1 items ("_s.arg(goneFrom(ground)); },
     true},
    {"automatic purge", Things::AtHome, &fill,
     [](WatchedGround& ground) {
         ground.clock->advance(std::chrono::days(8));
         ground.start();
         WatchedGround::await(ground.service->refresh()); // where the start was refused
         EXPECT_TRUE(waitUntil([&] { return ground.posts > 0; }));
         ground.quarantine({}); // ends when the list has been written
     },
     [](const WatchedGround&) { return u"Quarantined 0 items ("_s; }, true},
};

WatchedGround::WatchedGround(Things things)
    : m_folder(machine.path(u"~"))
{
    if (things == Things::BehindALink)
        m_folder =
            machine.link(u"~/linked", PathText::toBytes(machine.directory(u"/Volumes/Data")));
    if (things == Things::OnAnotherVolume) {
        const std::optional<QString> other = machine.secondDevice();
        EXPECT_TRUE(other) << "these tests need a second device, as /dev/shm mostly is";
        m_folder = other.value_or(machine.directory(u"~/no other volume"));
        fileSystem.hasNoTrash = true;
    }
    (void)makeDirectoryWithParents(m_folder + u"/folder/inside"_s, 0755);
    for (const QString& name : {u"/file"_s, u"/folder/a"_s, u"/folder/b"_s, u"/folder/inside/c"_s})
        put(m_folder + name, "content");
    EXPECT_EQ(::symlink("folder", PathText::toBytes(m_folder + u"/link"_s)), 0);
    for (const QString& name : {u"/file"_s, u"/folder"_s, u"/link"_s})
        m_before[m_folder + name] = snapshot(PathText::toBytes(m_folder + name));
}

QStringList WatchedGround::paths() const
{
    QStringList all;
    for (const auto& [path, before] : m_before)
        all += path;
    return all;
}

int WatchedGround::places(const QString& path) const
{
    const auto isWhole = [&](const QString& place) {
        return stands(place) && snapshot(PathText::toBytes(place)) == m_before.at(path);
    };
    int found = isWhole(path) + isWhole(fileSystem.trash + u'/' + PathText::lastComponent(path));
    for (const QuarantineItem& item : service->items())
        found += item.originalPath == path && isWhole(item.quarantinePath);
    return found;
}

bool WatchedGround::isAtItsPlace(const QString& path) const
{
    return stands(path);
}

bool WatchedGround::isWholeAtItsPlace(const QString& path, const QString& suffix) const
{
    const QString place = path + suffix;
    return stands(place) && snapshot(PathText::toBytes(place)) == m_before.at(path);
}

QStringList WatchedGround::rests() const
{
    QStringList names = namesIn(m_folder);
    names.removeIf([](const QString& name) { return !isTemporaryName(name); });
    return names;
}

QStringList WatchedGround::mismatches() const
{
    QStringList there = stands(store()) ? namesIn(store()) : QStringList();
    for (const QString& own :
         {u".manifest.json"_s, u".lock"_s, u".reserve"_s, u".restoring.json"_s})
        there.removeOne(own);
    QStringList wrong;
    for (const QuarantineItem& item : service->items()) {
        const QString name = PathText::lastComponent(item.quarantinePath);
        if (!there.removeOne(name))
            wrong += u"missing "_s + name;
    }
    for (const QString& name : there)
        wrong += u"unlisted "_s + name;
    return wrong;
}

} // namespace brivane::testing
