#include "QuarantineDeeds.h"

#include <gtest/gtest.h>

namespace brivane::testing {

namespace {

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

} // namespace

const std::vector<Deed> deeds = {
    {"quarantine", [](WatchedGround&) {},
     [](WatchedGround& ground) {
         ground.start();
         ground.quarantine(ground.paths());
     },
     [](const WatchedGround& ground) {
         qsizetype moved = 0;
         for (const QString& path : ground.paths())
             moved += ground.isAtItsPlace(path) ? 0 : 1;
         return u"Quarantined %1 items ("_s.arg(moved);
     },
     false},
    {"restore", &fill,
     [](WatchedGround& ground) {
         ground.start();
         WatchedGround::await(ground.service->restoreAll());
     },
     [](const WatchedGround& ground) { return u"Restored %1 items"_s.arg(goneFrom(ground)); },
     false},
    {"purge", &fill,
     [](WatchedGround& ground) {
         ground.start();
         awaitTask(ground.service->purgeAll());
     },
     [](const WatchedGround& ground) { return u"Purged %1 items ("_s.arg(goneFrom(ground)); },
     true},
    {"automatic purge", &fill,
     [](WatchedGround& ground) {
         ground.clock->advance(std::chrono::days(8));
         ground.start();
         EXPECT_TRUE(waitUntil([&] { return ground.posts > 0; }));
         ground.quarantine({}); // ends when the list has been written
     },
     [](const WatchedGround&) { return u"Quarantined 0 items ("_s; }, true},
};

WatchedGround::WatchedGround()
{
    file(u"~/file"_s, "content");
    file(u"~/folder/a"_s);
    file(u"~/folder/b"_s);
    file(u"~/folder/inside/c"_s);
    machine.link(u"~/link", "folder");
    for (const char16_t* place : {u"~/file", u"~/folder", u"~/link"}) {
        const QString path = machine.path(QStringView(place));
        m_before[path] = snapshot(PathText::toBytes(path));
    }
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

QStringList WatchedGround::mismatches() const
{
    QStringList there = stands(store()) ? namesIn(store()) : QStringList();
    there.removeOne(u".manifest.json"_s);
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
