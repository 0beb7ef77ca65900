#include "CleanerGround.h"
#include "platform/LiesIn.h"
#include "support/FileTestSupport.h"

#include <QFile>

#include <random>

#include <sys/stat.h>

using namespace brivane;
using namespace brivane::testing;

namespace {

/// Places that the scanners know, and beside them what is none of their business.
constexpr QStringView places[] = {
    u"~/Library/Caches/Tool/a",
    u"~/Library/Caches/Tool/deep/b",
    u"~/Library/Caches/Tool 2",
    u"~/Library/Caches/.hidden",
    u"~/Library/Caches/Google/Chrome/c",
    u"~/Library/Caches/Google/Drive/d",
    u"~/Library/Caches/Homebrew/e",
    u"~/Library/Caches/com.apple.mail/f",
    u"~/Library/Logs/DiagnosticReports/g",
    u"~/Library/Logs/Tool/h",
    u"~/Library/Logs/Docker/i",
    u"~/Library/Preferences/com.gone.tool.plist",
    u"~/Library/Preferences/com.gone.tool/j",
    u"~/Library/Saved Application State/com.gone.tool.savedState/k",
    u"~/Library/Application Support/com.gone.tool/l",
    u"~/Library/Application Support/AddressBook/com.gone.tool/m",
    u"~/Library/Application Support/com.apple.TCC/n",
    u"~/Library/Application Support/Code/Cache/o",
    u"~/Library/Application Support/Code/User/settings",
    u"~/Library/Application Support/MobileSync/Backup/phone/p",
    u"~/Library/Containers/com.docker.docker/Data/q",
    u"~/Library/Containers/com.docker.docker/r",
    u"~/Library/Developer/Xcode/DerivedData/s",
    u"~/Library/Developer/Xcode/Projects/t",
    u"~/Library/Keychains/login.keychain-db",
    u"~/.Trash/u",
    u"~/.Trash/Thrown/v",
    u"~/.npm/_cacache/w",
    u"~/.npm/settings",
    u"~/.ssh/id",
    u"~/Downloads/Tool.dmg",
    u"~/Downloads/Box/Tool.pkg",
    u"~/Downloads/Box/x",
    u"~/Downloads/Paper.pdf",
    u"~/Desktop/Screenshot 1.png",
    u"~/Desktop/Letter.txt",
    u"~/Projects/pier/node_modules/y",
    u"~/Projects/pier/source",
    u"~/Documents/Thesis",
};

/// Enough for every bound but that of the large files.
qint64 sizeAt(QStringView place)
{
    const bool isBoundHigh = place.contains(u"node_modules") || place.contains(u"Backup");
    return isBoundHigh ? 1'200'000 : 20'000;
}

/// What lies in the home, but for the quarantine; of folders only that they are there.
Snapshot home(const CleanerGround& ground)
{
    Snapshot all = snapshot(PathText::toBytes(ground.path(u"~")));
    std::erase_if(all, [](const auto& entry) {
        return entry.first.isEmpty() || entry.first.startsWith("/.Brivane_Quarantine");
    });
    for (auto& [path, facts] : all) {
        if (S_ISDIR(facts.left(facts.indexOf(' ')).toUInt()))
            facts.clear();
    }
    return all;
}

class Life {
public:
    explicit Life(unsigned seed)
        : m_random(seed)
    {
    }

    void fill()
    {
        for (const QStringView place : places) {
            if (!chance(70))
                continue;
            const int days = chance(70) ? 90 : 1;
            ground.file(place.toString(), sizeAt(place) + static_cast<qint64>(m_random() % 1000),
                        days);
            // What a folder holds does not make it old.
            const QString folder = place.first(place.lastIndexOf(u'/')).toString();
            const QDateTime time = ground.clock->now().addDays(-days);
            ground.machine.setTimes(folder, time, time);
            if (chance(5))
                ground.machine.link(place.toString() + u" link"_s,
                                    PathText::toBytes(ground.path(u"~/Documents/Thesis")));
        }
        for (const QStringView place : places) {
            if (chance(4))
                ground.settings.addExcludedPath(ground.path(place));
            if (chance(4))
                ground.settings.addExcludedPath(ground.path(place.first(place.lastIndexOf(u'/'))));
        }
        EXPECT_TRUE(ground.host().defaults.waitUntilSaved());
    }

    /// Selects some, and notes what of it may go.
    void choose()
    {
        ground.select([&](const CleanerItem& item) {
            const bool isWanted = chance(50);
            if (isWanted && ground.safety.isCleanerSafe(item.path) &&
                !ground.settings.isExcluded(item.path))
                allowed += item.path;
            return isWanted;
        });
    }

    /// Somebody writes to some files, or puts links in their places.
    void meddle()
    {
        for (const QStringView place : places) {
            const QString path = ground.path(place);
            if (!chance(10) || !FileIdentity::of(path))
                continue;
            if (chance(50)) {
                ground.file(place.toString(), sizeAt(place));
            } else {
                QFile::remove(path);
                ground.machine.link(place, PathText::toBytes(ground.path(u"~/Documents/Thesis")));
            }
            allowed.removeAll(path);
        }
    }

    /// Whether a path of the snapshot belongs to what may go.
    [[nodiscard]] bool mayGo(const QByteArray& below) const
    {
        const QString path = ground.path(u"~") + PathText::fromBytes(below);
        return !ground.settings.isExcluded(path) &&
               std::ranges::any_of(allowed,
                                   [&](const QString& item) { return liesIn(path, item); });
    }

    bool chance(unsigned percent) { return m_random() % 100 < percent; }

    CleanerGround ground;
    QStringList allowed;

private:
    std::mt19937 m_random;
};

} // namespace

TEST(CleanerProperty, WhatIsGoneWasShownChosenAndAllowedAndAllElseIsAsBefore)
{
    qint64 cleaned = 0;
    for (unsigned seed = 0; seed < 40; ++seed) {
        const auto route =
            seed % 2 == 0 ? CleanerGround::Route::ForGood : CleanerGround::Route::Quarantine;
        Life life(seed);
        life.fill();
        const Snapshot untouched = home(life.ground);
        life.ground.scan();
        EXPECT_EQ(difference(home(life.ground), untouched), "") << "looking is no touching";
        life.choose();
        life.meddle();
        const Snapshot before = home(life.ground);
        const auto result = life.ground.clean(route);
        cleaned += result.cleaned;
        Snapshot expected = before;
        const Snapshot after = home(life.ground);
        std::erase_if(expected, [&](const auto& entry) {
            return !after.contains(entry.first) && life.mayGo(entry.first);
        });
        EXPECT_EQ(difference(after, expected), "") << "seed " << seed;
        for (const QString& path : std::as_const(life.allowed)) {
            const bool isGone = !FileIdentity::of(path);
            EXPECT_NE(isGone, result.failed.contains(path)) << seed << ' ' << qPrintable(path);
        }
        if (route == CleanerGround::Route::ForGood)
            continue;
        QuarantineService& store = life.ground.quarantine.openNow();
        const QCoro::Task<> restoring = store.restoreAll();
        ASSERT_TRUE(waitUntil([&] { return restoring.isReady(); }));
        EXPECT_EQ(difference(home(life.ground), before), "") << "seed " << seed << ", put back";
    }
    EXPECT_GT(cleaned, 150) << "too little is removed to show anything";
}
