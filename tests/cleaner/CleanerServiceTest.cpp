#include "CleanerGround.h"
#include "platform/FileReading.h"
#include "platform/PathText.h"

#include <QMetaEnum>
#include <QSemaphore>

#include <filesystem>

using namespace brivane;
using namespace brivane::testing;
using ::testing::IsSupersetOf;
using ::testing::UnorderedElementsAre;
using ::testing::UnorderedElementsAreArray;

namespace {

class CleanerServiceTest : public CleanerTest {
protected:
    [[nodiscard]] QStringList rows() const
    {
        QStringList rows;
        for (const auto& category : service.categories())
            rows += factsOf(category->type()).rawValue;
        return rows;
    }
    [[nodiscard]] std::filesystem::path disk(const QString& place) const
    {
        return PathText::toBytes(path(place)).toStdString();
    }
    [[nodiscard]] bool stands(const QString& place) const
    {
        return std::filesystem::exists(std::filesystem::symlink_status(disk(place)));
    }
    void expectIdle(bool isComplete)
    {
        EXPECT_FALSE(service.isScanning());
        EXPECT_EQ(service.scanComplete(), isComplete);
        EXPECT_FALSE(tracker.isActive(ActivityTracker::smartClean));
    }
};

} // namespace

TEST_F(CleanerServiceTest, RowsComeAtOnceResultsInTheirOrderAndEmptyRowsGoAtTheEnd)
{
    file(u"~/Library/Caches/Small/a"_s, 2000);
    file(u"~/Library/Caches/Large/a"_s, 9000);
    file(u"~/Library/Developer/Xcode/Archives/a"_s, 1'000'000);
    file(u"~/Library/Caches/Homebrew/a"_s, 4000);
    QStringList shown;
    QStringList finished;
    QObject receiver;
    QObject::connect(&service, &CleanerService::categoriesChanged, &receiver, [&] {
        if (!shown.isEmpty() || service.categories().empty())
            return;
        shown = rows();
        for (const auto& category : service.categories()) {
            EXPECT_TRUE(category->isScanning());
            QObject::connect(category.get(), &CleanerCategory::isScanningChanged, &receiver,
                             [&, raw = factsOf(category->type()).rawValue] { finished += raw; });
        }
    });
    const LogCapture log;
    service.scanAll();
    EXPECT_TRUE(tracker.isActive(ActivityTracker::smartClean));
    EXPECT_TRUE(waitUntil([&] { return service.scanComplete(); }));
    expectIdle(true);
    const QString order = u"applicationCaches browserCaches xcodeJunk unusedDiskImages "
                          u"applicationLogs systemLogs applicationLeftovers iTunesTemp mailCaches "
                          u"downloads trash largeFiles screenshots iOSBackups homebrewCache"_s;
    EXPECT_EQ(shown.join(u' '), order);
    EXPECT_EQ(finished.join(u' '), order);
    EXPECT_EQ(rows().join(u' '), u"applicationCaches xcodeJunk homebrewCache"_s);
    EXPECT_EQ(names(Type::applicationCaches), QStringList({u"Large"_s, u"Small"_s}));
    EXPECT_EQ(service.selectedCount(), 3) << "what is safe, and no more";
    EXPECT_EQ(service.selectedSize(), 15'000U);
    EXPECT_EQ(service.totalSize(), 1'015'000U);
    const QStringList lines = cleanerLines(log);
    EXPECT_EQ(lines.mid(0, 3), QStringList({u"Cleaner scan stopped"_s, u"Starting cleaner scan"_s,
                                            u"Detected developer tools: homebrewCache"_s}));
    EXPECT_TRUE(lines.contains(u"Category xcodeJunk: 1 items, 977 KB"_s))
        << lines.join(u'\n').toStdString();
    EXPECT_TRUE(lines.last().startsWith(u"Cleaner scan complete: 3 categories, "));
}

TEST_F(CleanerServiceTest, AStopKeepsWhatWasFoundAndOneBeforeThatLeavesNothing)
{
    file(u"~/Library/Caches/Tool/a"_s, 2000);
    file(u"~/Library/Caches/Firefox/a"_s, 2000);
    file(u"~/Library/Logs/a"_s, 2000);
    service.scanAll();
    service.stopScan();
    EXPECT_TRUE(service.categories().empty());
    expectIdle(false);
    auto receiver = std::make_unique<QObject>();
    QObject::connect(&service, &CleanerService::totalsChanged, receiver.get(), [&] {
        if (service.isScanning() && !names(Type::browserCaches).isEmpty())
            service.stopScan();
    });
    scan();
    expectIdle(true);
    EXPECT_EQ(rows().join(u' '), u"applicationCaches browserCaches"_s);
    EXPECT_EQ(service.selectedCount(), 2);
    receiver.reset();
    scan(); // what is under way of the one before changes nothing any more
    EXPECT_EQ(rows().join(u' '), u"applicationCaches browserCaches applicationLogs"_s);
}

TEST_F(CleanerServiceTest, WhatIsExcludedIsNeitherShownNorTakenAlong)
{
    for (const QString& name :
         {u"Tool"_s, u"Tool 2"_s, u"Kept/deep"_s, u"Holder/inner"_s, u"Late"_s})
        file(u"~/Library/Caches/%1/a"_s.arg(name), 2000);
    settings.addExcludedPath(path(u"~/Library/Caches/Tool/"));
    scan();
    EXPECT_THAT(names(Type::applicationCaches),
                UnorderedElementsAre(u"Tool 2"_s, u"Kept"_s, u"Holder"_s, u"Late"_s));
    settings.addExcludedPath(path(u"~/Library/Caches/Holder/inner"));
    service.exclude(path(u"~/Library/Caches/Kept"));
    EXPECT_THAT(names(Type::applicationCaches),
                UnorderedElementsAre(u"Tool 2"_s, u"Holder"_s, u"Late"_s));
    EXPECT_EQ(service.totalSize(), 6000U);
    EXPECT_TRUE(settings.isExcluded(path(u"~/Library/Caches/Kept")));
    QObject receiver; // the user is at it while the scan still goes on
    QObject::connect(&service, &CleanerService::totalsChanged, &receiver, [&] {
        if (service.isScanning() && !names(Type::applicationCaches).isEmpty())
            settings.addExcludedPath(path(u"~/Library/Logs"));
    });
    file(u"~/Library/Logs/tool.log"_s, 2000);
    scan();
    EXPECT_EQ(names(Type::applicationLogs), QStringList());
    QObject::connect(&service, &CleanerService::progressChanged, &service,
                     [&, changes = 0]() mutable {
                         if (++changes == 2) // the removal is settled
                             service.exclude(path(u"~/Library/Caches/Late"));
                     });
    const auto result = clean(Route::ForGood);
    EXPECT_EQ(result.failed, QStringList(path(u"~/Library/Caches/Holder")));
    EXPECT_EQ(result.cleaned, 1);
    EXPECT_TRUE(stands(u"~/Library/Caches/Late/a"_s));
    EXPECT_TRUE(stands(u"~/Library/Caches/Tool/a"_s) && stands(u"~/Library/Caches/Kept/deep/a"_s) &&
                stands(u"~/Library/Caches/Holder/inner/a"_s));
}

TEST_F(CleanerServiceTest, WhatIsExcludedWhileItIsBeingScannedIsNotShownEither)
{
    file(u"~/Library/Caches/Tool/a"_s, 2000);
    service.scanAll();
    ASSERT_TRUE(waitUntil([&] { return !service.categories().empty(); }));
    service.exclude(path(u"~/Library/Caches/Tool"));
    EXPECT_TRUE(waitUntil([&] { return service.scanComplete(); }));
    EXPECT_TRUE(service.categories().empty());
}

TEST_F(CleanerServiceTest, WhereALinkLeadsIsJudgedAndNotItsNameAlone)
{
    for (const QString& place : {u"~/Fast/Tool/a"_s, u"~/Fast/Kept/a"_s, u"~/Library/Mail/Box/a"_s})
        file(place, 5000);
    machine.link(u"~/Library/Caches", PathText::toBytes(path(u"~/Fast")));
    machine.link(u"~/Library/Logs", PathText::toBytes(path(u"~/Library/Mail")));
    machine.link(u"~/.Trash", "../..");
    machine.link(u"~/Downloads", PathText::toBytes(path(u"~")));
    settings.addExcludedPath(path(u"~/Fast/Kept"));
    scan();
    EXPECT_EQ(rows().join(u' '), u"applicationCaches applicationLogs"_s) << "the home is no junk";
    EXPECT_THAT(clean(Route::ForGood).failed,
                UnorderedElementsAre(path(u"~/Library/Caches/Kept"), path(u"~/Library/Logs/Box")));
    EXPECT_FALSE(stands(u"~/Fast/Tool"_s));
    EXPECT_TRUE(stands(u"~/Fast/Kept/a"_s) && stands(u"~/Library/Mail/Box/a"_s));

    // The link stood there when it was found, stands elsewhere now, and may be back by and by.
    const QString box = path(u"~/Library/Caches/Box");
    const FileIdentity found = *FileIdentity::of(path(u"~/Library/Mail/Box"));
    const CleaningPlan swapped{
        {{.type = Type::applicationCaches, .entries = {{{}, u"Box"_s, box, 1, found}}}}};
    EXPECT_EQ(makeCleaningPlan(swapped, safety, {}, machine.locations().home()).count(), 0);
}

TEST_F(CleanerServiceTest, OnBothRoutesOnlyWhatWasShownAndMayGoIsGone)
{
    for (const Route route : {Route::Quarantine, Route::ForGood}) {
        for (const QString& place :
             {u"Caches/Grown/a"_s, u"Caches/Linked/a"_s, u"Caches/Swapped"_s, u"Caches/Written"_s,
              u"Caches/Vanished"_s, u"Caches/Remade/a"_s, u"Logs/DiagnosticReports/a"_s})
            file(u"~/Library/"_s + place, 5000);
        file(u"~/Library/Preferences/com.gone.tool.plist"_s, 20'000);
        file(u"~/Downloads/Box/Tool.dmg"_s, 5000); // listed by itself and in what holds it
        file(u"~/Precious/a"_s, 5000);
        const QDateTime old = clock->now().addDays(-90);
        machine.setTimes(u"~/Downloads/Box", old, old);
        scan();
        select([](const CleanerItem&) { return true; });
        const qint64 selected = service.selectedCount();

        const QString caches = u"~/Library/Caches/"_s;
        file(caches + u"Grown/b"_s, 700);
        std::filesystem::rename(disk(caches + u"Linked"_s), disk(u"~/Linked"_s));
        machine.link(QString(caches + u"Linked"_s), PathText::toBytes(path(u"~/Precious")));
        file(u"~/other"_s, 5000);
        std::filesystem::rename(disk(u"~/other"_s), disk(caches + u"Swapped"_s));
        machine.file(QString(caches + u"Written"_s), QByteArray(5000, 'x'));
        std::filesystem::remove(disk(caches + u"Vanished"_s));
        std::filesystem::rename(disk(caches + u"Remade"_s), disk(u"~/Remade"_s));
        file(caches + u"Remade/a"_s, 5000);

        posts = 0;
        const LogCapture log;
        const bool isForGood = route == Route::ForGood;
        const auto result = clean(route);
        const QStringList staying = {u"Linked"_s, u"Swapped"_s, u"Written"_s, u"Vanished"_s,
                                     u"Remade"_s};
        QStringList failed{path(u"~/Library/Preferences/com.gone.tool.plist")};
        for (const QString& name : staying)
            failed += path(QString(caches + name));
        EXPECT_THAT(result.failed, UnorderedElementsAreArray(failed));
        for (const QString& stays : failed)
            EXPECT_FALSE(result.reasons.value(stays).isEmpty()) << qPrintable(stays);
        EXPECT_EQ(result.cleaned, 3) << "Grown, the reports and the box, each once";
        EXPECT_EQ(result.cleaned + result.failed.size() + result.alongside, selected);
        EXPECT_EQ(result.freedBytes, isForGood ? 15'000U : 15'700U);
        for (const QString& place :
             {caches + u"Grown"_s, u"~/Downloads/Box"_s, u"~/Library/Logs/DiagnosticReports"_s})
            EXPECT_FALSE(stands(place)) << qPrintable(place);
        for (const QString& place :
             {caches + u"Swapped"_s, caches + u"Written"_s, caches + u"Linked"_s,
              caches + u"Remade/a"_s, u"~/Precious/a"_s,
              u"~/Library/Preferences/com.gone.tool.plist"_s})
            EXPECT_TRUE(stands(place)) << qPrintable(place);
        EXPECT_THAT(names(Type::applicationCaches), UnorderedElementsAreArray(staying));
        EXPECT_EQ(rows().join(u' '), u"applicationCaches applicationLeftovers"_s);
        EXPECT_EQ(service.selectedCount(), 6) << "what stays, stays selected";
        EXPECT_EQ(posts, isForGood ? 1 : 0) << "a quarantine frees nothing yet";
        EXPECT_THAT(
            cleanerLines(log),
            IsSupersetOf({QString(u"Safety gate rejected: "_s + failed.first()),
                          isForGood
                              ? u"Permanent cleanup done: 3 items, 14.6 KB freed, 6 failed"_s
                              : u"Cleanup done: 3 items quarantined, 15.3 KB freed, 6 failed"_s}));
        EXPECT_TRUE(cleanerLines(log).first().contains(u" %1 items ("_s.arg(selected)));
        std::filesystem::remove_all(disk(u"~/Library"_s));
        std::filesystem::remove_all(disk(u"~/Linked"_s));
        std::filesystem::remove_all(disk(u"~/Remade"_s));
    }
}

TEST_F(CleanerServiceTest, ARemovalStopsAfterTheItemThatItIsAtAndLetsNoOtherIn)
{
    for (const QString& name : {u"1"_s, u"2"_s, u"3"_s})
        file(u"~/Library/Caches/"_s + name, 9000 - name.toInt());
    file(u"~/Library/Logs/4"_s, 3000);
    scan();
    QSemaphore reached;
    QSemaphore goesOn;
    fileSystem.before = [&](FileOperation, const QString& at) {
        if (!at.endsWith(u"/2"))
            return;
        reached.release();
        EXPECT_TRUE(goesOn.tryAcquire(1, 10'000));
    };
    std::vector<CleanProgress> told;
    QObject receiver;
    QObject::connect(&service, &CleanerService::progressChanged, &receiver, [&] {
        if (service.progress())
            told.push_back(*service.progress());
    });
    auto removing = service.cleanSelectedPermanently();
    ASSERT_TRUE(waitUntil([&] { return reached.tryAcquire(1); }));
    EXPECT_TRUE(waitUntil([&] { return told.back().name == u"2"_s; }));
    EXPECT_EQ(told.back(), (CleanProgress{1, 4, 8999, u"2"_s}));
    EXPECT_EQ(clean(Route::Quarantine).cleaned, 0);
    service.scanAll();
    EXPECT_FALSE(service.isScanning());
    service.stopCleaning();
    goesOn.release();
    const auto result = awaitTask(std::move(removing));
    EXPECT_EQ(result.cleaned, 2);
    EXPECT_EQ(result.freedBytes, 8999U + 8998U);
    EXPECT_TRUE(result.failed.isEmpty());
    EXPECT_EQ(result.notReached, 2);
    EXPECT_TRUE(std::ranges::is_sorted(told, {}, &CleanProgress::completed));
    EXPECT_FALSE(service.progress());
    EXPECT_EQ(names(Type::applicationCaches), QStringList(u"3"_s));
    EXPECT_TRUE(stands(u"~/Library/Caches/3"_s) && stands(u"~/Library/Logs/4"_s));
    EXPECT_EQ(clean(Route::ForGood).cleaned, 2) << "it does not begin again";
}

TEST_F(CleanerServiceTest, WhatIsGoneInPartAloneHasChangedTheDiskToo)
{
    file(u"~/Library/Caches/Tool/a"_s, 5000);
    scan();
    fileSystem.cannotRemove = path(u"~/Library/Caches/Tool");
    for (const int removed : {0, 1}) {
        fileSystem.removedAllTheSame = static_cast<std::uint64_t>(removed);
        const auto result = clean(Route::ForGood);
        EXPECT_EQ(result.cleaned, 0);
        EXPECT_EQ(result.failed.size(), 1);
        EXPECT_EQ(posts, removed);
    }
}

TEST_F(CleanerServiceTest, WhatIsTakenOutOfARemovalBeforeItIsReachedStays)
{
    for (const Route route : {Route::ForGood, Route::Quarantine}) {
        for (const QString& name : {u"1"_s, u"2"_s, u"3"_s, u"4"_s})
            file(u"~/Library/Caches/"_s + name, 9000 - name.toInt());
        for (const QString& name : {u"5"_s, u"6"_s, u"7/deep"_s, u"8"_s})
            file(u"~/Library/Logs/%1/a"_s.arg(name), 3000);
        scan();
        QSemaphore reached;
        QSemaphore goesOn;
        fileSystem.before = [&](FileOperation, const QString& at) {
            if (!at.endsWith(u"/Caches/2"))
                return;
            reached.release();
            EXPECT_TRUE(goesOn.tryAcquire(1, 10'000));
        };
        auto removing =
            route == Route::ForGood ? service.cleanSelectedPermanently() : service.cleanSelected();
        ASSERT_TRUE(waitUntil([&] { return reached.tryAcquire(1); }));
        if (route == Route::ForGood)
            service.exclude(path(u"~/Library/Caches/3"));
        service.exclude(path(u"~/Library/Logs/5"));
        settings.addExcludedPath(path(u"~/Library/Logs/7/deep"));
        select([](const CleanerItem& item) { return item.name != u"4" && item.name != u"6"; });
        goesOn.release(10);
        const auto result = awaitTask(std::move(removing));
        fileSystem.before = {};
        EXPECT_EQ(result.failed, QStringList(path(u"~/Library/Logs/7")));
        EXPECT_FALSE(result.reasons.value(path(u"~/Library/Logs/7")).isEmpty());
        EXPECT_FALSE(stands(u"~/Library/Caches/2"_s) || stands(u"~/Library/Logs/8"_s));
        for (const QString& name : {u"5"_s, u"6"_s, u"7/deep"_s})
            EXPECT_TRUE(stands(u"~/Library/Logs/%1/a"_s.arg(name))) << qPrintable(name);
        // The quarantine had been handed all of the caches by then.
        const bool isForGood = route == Route::ForGood;
        EXPECT_EQ(stands(u"~/Library/Caches/3"_s) && stands(u"~/Library/Caches/4"_s), isForGood);
        EXPECT_EQ(result.cleaned, isForGood ? 3 : 5);
        settings.setExcludedPaths({});
    }
}

TEST_F(CleanerServiceTest, NothingSelectedIsNothingDone)
{
    file(u"~/Downloads/Tool.dmg"_s, 5000);
    scan();
    for (const Route route : {Route::Quarantine, Route::ForGood}) {
        const LogCapture log;
        const auto result = clean(route);
        EXPECT_TRUE(result.cleaned == 0 && result.freedBytes == 0 && result.failed.isEmpty());
        EXPECT_EQ(cleanerLines(log).size(), 2);
        EXPECT_EQ(posts, 0);
        EXPECT_EQ(names(Type::unusedDiskImages).size(), 1);
    }
}
