#include "core/AppSettings.h"

#include "platform/DefaultFileSystem.h"
#include "platform/UserDefaults.h"
#include "support/ManualClock.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace brivane;
using namespace brivane::testing;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

class AppSettingsTest : public ::testing::Test {
protected:
    /// What is in the file once all is saved.
    UserDefaults& stored()
    {
        for (const auto& earlier : m_defaults)
            EXPECT_TRUE(earlier->waitUntilSaved());
        m_defaults.push_back(std::make_unique<UserDefaults>(file, m_fileSystem));
        return *m_defaults.back();
    }
    /// As a new start of the program loads them.
    [[nodiscard]] std::unique_ptr<AppSettings> settings()
    {
        return std::make_unique<AppSettings>(stored(), clock, u"/Users/ann"_s);
    }

    QTemporaryDir folder;
    QString file = folder.path() + u"/defaults.plist"_s;
    ManualClock clock;

private:
    DefaultFileSystem m_fileSystem;
    std::vector<std::unique_ptr<UserDefaults>> m_defaults;
};

struct Field {
    const char* name;
    QVariant other; ///< than the default
    QVariant stored = other;
};

const QDateTime cleaned = QDateTime::fromMSecsSinceEpoch(1'700'000'000'500, Qt::UTC);

const Field fields[] = {{"quarantinePurgeDays", -1ll},
                        {"cleanModeKeyCode", quint16(65535), 65535ll},
                        {"cleanModeKeyName", u"Esc"_s},
                        {"cleanModeHoldDuration", 2.5},
                        {"cleaningReminderDays", 14ll},
                        {"lastPhysicalCleanDate", cleaned, 1'700'000'000.5},
                        {"useBinaryUnits", false},
                        {"showHiddenFiles", true},
                        {"launchAtLogin", true},
                        {"oldFileAgeDays", 1ll},
                        {"showMenuBarWidget", false},
                        {"lowDiskThresholdPercent", 100ll},
                        {"excludedPaths", QStringList{u"/b"_s}, QVariantList{u"/b"_s}}};

} // namespace

TEST_F(AppSettingsTest, EveryFieldSurvivesARestartAndIsPublishedOnce)
{
    auto first = settings();
    EXPECT_FALSE(QFile::exists(file)); // defaults stay implicit
    for (const Field& field : fields) {
        ASSERT_NE(first->property(field.name), field.other) << field.name;
        QSignalSpy published(first.get(), ("2"_ba + field.name + "Changed()").constData());
        EXPECT_TRUE(first->setProperty(field.name, field.other)) << field.name;
        EXPECT_TRUE(first->setProperty(field.name, field.other)); // no change: not published
        EXPECT_EQ(published.count(), 1) << field.name;
        EXPECT_EQ(stored().object(QString::fromUtf8(field.name)), field.stored) << field.name;
    }
    for (const Field& field : fields)
        EXPECT_EQ(settings()->property(field.name), field.other) << field.name;
    settings()->setLastPhysicalCleanDate(QDateTime());
    EXPECT_FALSE(stored().object(u"lastPhysicalCleanDate"_s).isValid());
    for (const qint64 outOfRange : {-1ll, 65536ll}) {
        stored().setInteger(u"cleanModeKeyCode"_s, outOfRange);
        EXPECT_EQ(settings()->cleanModeKeyCode(), 49);
    }
}

TEST_F(AppSettingsTest, OverdueExactlyWhenTheDaysHavePassed)
{
    auto under = settings();
    QStringList told;
    QObject::connect(under.get(), &AppSettings::daysSinceLastCleaningChanged, under.get(),
                     [&] { told += u"days"_s; });
    QObject::connect(under.get(), &AppSettings::isCleaningOverdueChanged, under.get(),
                     [&] { told += u"overdue"_s; });
    EXPECT_FALSE(under->isCleaningOverdue());
    under->setCleaningReminderDays(1);
    EXPECT_TRUE(under->isCleaningOverdue()); // never cleaned
    under->setCleaningReminderDays(2);
    under->setLastPhysicalCleanDate(clock.now());
    clock.advance(48h - 1ms);
    EXPECT_EQ(under->daysSinceLastCleaning(), 1);
    EXPECT_FALSE(under->isCleaningOverdue());
    told.clear();
    under->noteTime();
    clock.advance(1ms);
    under->noteTime();
    under->noteTime();
    EXPECT_EQ(told, QStringList({u"days"_s, u"days"_s, u"overdue"_s}));
    EXPECT_TRUE(under->isCleaningOverdue());
    under->setLastPhysicalCleanDate(clock.now().addSecs(86'399)); // in the future
    EXPECT_EQ(under->daysSinceLastCleaning(), 0);
    under->setCleaningReminderDays(-3);
    under->setLastPhysicalCleanDate(QDateTime());
    EXPECT_FALSE(under->isCleaningOverdue());
}

TEST_F(AppSettingsTest, ExcludedPathsAreStandardisedSortedAndUnique)
{
    auto under = settings();
    for (const QString& path :
         {u"~/Movies/"_s, u"/b//c/."_s, u"/Users/ann/Movies"_s, u""_s, u"."_s})
        under->addExcludedPath(path);
    const QStringList expected = {u"/Users/ann/Movies"_s, u"/b/c"_s};
    EXPECT_EQ(under->excludedPaths(), expected);
    EXPECT_EQ(settings()->excludedPaths(), expected);

    EXPECT_TRUE(under->isExcluded(u"/b/c/d"_s));
    EXPECT_FALSE(under->isExcluded(u"/b/cc"_s));
    under->removeExcludedPath(u"/b/c/"_s); // not the exact string
    EXPECT_EQ(under->excludedPaths(), expected);
    under->removeExcludedPath(u"/b/c"_s);
    EXPECT_EQ(settings()->excludedPaths(), QStringList{u"/Users/ann/Movies"_s});
    under->setExcludedPaths({u"~/Movies/"_s}); // as somebody may write it into the file
    EXPECT_TRUE(settings()->isExcluded(u"/Users/ann/Movies/a"_s));

    QFile::remove(file);
    settings()->removeExcludedPath(u"/none"_s);
    EXPECT_EQ(stored().stringArray(u"excludedPaths"_s), QStringList()); // still written
}
