#include "platform/UserDefaults.h"

#include "platform/FileReading.h"
#include "platform/PathText.h"
#include "platform/PropertyList.h"
#include "platform/SystemLog.h"
#include "support/FileTestSupport.h"
#include "support/RecordingFileSystem.h"

#include <QSemaphore>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace brivane;
using brivane::testing::RecordingFileSystem;
using namespace Qt::StringLiterals;

namespace {

class UserDefaultsTest : public ::testing::Test {
protected:
    TestFolder m_folder;
    QString m_file = text(m_folder / "defaults.plist");
    RecordingFileSystem m_disk;
};

} // namespace

TEST_F(UserDefaultsTest, AWrongTypeReadsAsAbsent)
{
    const QStringList texts{u"a"_s, u"b"_s};
    const struct {
        QVariant value;
        std::optional<double> number = {};
        std::optional<bool> boolean = {};
    } rows[] = {{qint64(7), 7},
                {qint64(1), 1, true},
                {true, 1, true},
                {7.0, 7},
                {7.5, 7.5},
                {1e300, 1e300},
                {u"7"_s},
                {QVariantList{u"a"_s, u"b"_s}},
                {QVariantList{u"a"_s, qint64(1)}}};
    QVariantMap values;
    for (const auto& row : rows)
        values.insert(QString::number(values.size()), row.value);
    writeFile(m_folder / "defaults.plist",
              PropertyList::write(values, PropertyList::Encoding::Xml).value_or(QByteArray()));
    const UserDefaults defaults(m_file, m_disk);
    for (int at = 0; at < values.size(); ++at) {
        const std::optional<double> number = rows[at].number;
        const QString key = QString::number(at);
        EXPECT_EQ(defaults.real(key), number) << at;
        EXPECT_EQ(defaults.integer(key), number == 7 || number == 1 ? number : std::nullopt) << at;
        EXPECT_EQ(defaults.boolean(key), rows[at].boolean) << at;
        EXPECT_EQ(defaults.string(key).has_value(), at == 6) << at;
        EXPECT_EQ(defaults.stringArray(key), at == 7 ? std::optional(texts) : std::nullopt) << at;
        EXPECT_FALSE(defaults.data(key)) << at;
    }
}

TEST_F(UserDefaultsTest, ChangesWaitForNoDiskAndShareAWrite)
{
    QSemaphore writing;
    QSemaphore mayWrite;
    m_disk.beforeWriting = [&] {
        writing.release();
        EXPECT_TRUE(m_disk.writes > 1 || mayWrite.tryAcquire(1, 10'000));
    };
    UserDefaults defaults(m_file, m_disk);
    defaults.setInteger(u"days"_s, 0);
    ASSERT_TRUE(writing.tryAcquire(1, 10'000));
    for (int i = 1; i <= 1000; ++i) {
        defaults.setInteger(u"days"_s, i);
        EXPECT_EQ(defaults.integer(u"days"_s), i);
    }
    EXPECT_FALSE(stands(PathText::toBytes(m_file)));
    mayWrite.release();
    EXPECT_TRUE(defaults.waitUntilSaved());
    EXPECT_EQ(m_disk.writes, 2);
    EXPECT_EQ(UserDefaults(m_file, m_disk).integer(u"days"_s), 1000);
}

TEST_F(UserDefaultsTest, WhatIsSetRightBeforeTheEndIsInTheFileBesideWhatOthersWrote)
{
    m_file = text(m_folder / "not/there/yet/defaults.plist");
    const QString path = PathText::fromBytes("/photos/\xFF");
    {
        UserDefaults defaults(m_file, m_disk);
        EXPECT_FALSE(defaults.object(u"days"_s).isValid());
        EXPECT_FALSE(stands(m_folder / "not"));
        defaults.setInteger(u"days"_s, -3);
        EXPECT_TRUE(defaults.waitUntilSaved());
        UserDefaults other(m_file, m_disk); // another process
        other.setStringArray(u"paths"_s, {path});
        EXPECT_TRUE(other.waitUntilSaved());
        defaults.setBool(u"shown"_s, true);
        defaults.setReal(u"date"_s, 1764000000.25);
        defaults.setData(u"records"_s, "\xFF");
        EXPECT_TRUE(defaults.waitUntilSaved());
        EXPECT_EQ(defaults.stringArray(u"paths"_s), QStringList{path});
        other.remove(u"shown"_s);
    }
    const UserDefaults again(m_file, m_disk);
    EXPECT_EQ(again.integer(u"days"_s), -3);
    EXPECT_EQ(again.stringArray(u"paths"_s), QStringList{path});
    EXPECT_FALSE(again.object(u"shown"_s).isValid());
    EXPECT_EQ(again.real(u"date"_s), 1764000000.25);
    EXPECT_EQ(again.data(u"records"_s), QByteArray("\xFF"));
    EXPECT_EQ(namesIn(text(m_folder / "not/there/yet")), QStringList(u"defaults.plist"_s));
}

TEST_F(UserDefaultsTest, ADamagedFileIsKeptUnderAnotherNameAndWhatIsInMemoryWrittenWhole)
{
    const QByteArray precious = "precious, but no property list";
    writeFile(m_folder / "defaults.plist", precious);
    UserDefaults defaults(m_file, m_disk);
    EXPECT_FALSE(defaults.object(u"days"_s).isValid());
    EXPECT_FALSE(stands(m_folder / "defaults.plist.damaged-1"));
    defaults.setInteger(u"days"_s, 9);
    EXPECT_TRUE(defaults.waitUntilSaved());
    EXPECT_EQ(readFile(m_folder / "defaults.plist.damaged-1"), precious);

    writeFile(m_folder / "defaults.plist", "damaged once more");
    m_disk.cannotWrite = true; // it is put aside, and nothing takes its place
    defaults.setBool(u"shown"_s, true);
    EXPECT_FALSE(defaults.waitUntilSaved());
    m_disk.cannotWrite = false;
    EXPECT_TRUE(defaults.waitUntilSaved());
    EXPECT_EQ(readFile(m_folder / "defaults.plist.damaged-2"), "damaged once more");
    const UserDefaults again(m_file, m_disk);
    EXPECT_EQ(again.integer(u"days"_s), 9);
    EXPECT_EQ(again.boolean(u"shown"_s), true);
}

TEST_F(UserDefaultsTest, AFileLargerThanMemoryIsPutAsideUnread)
{
    const QByteArray file = m_folder / "defaults.plist";
    writeFile(file, "");
    ASSERT_EQ(::truncate(file, 15'000'000'000'000), 0);
    EXPECT_EQ(readWholeFile(m_file).error().code, EFBIG);
    {
        UserDefaults defaults(m_file, m_disk);
        EXPECT_FALSE(defaults.object(u"days"_s).isValid());
        defaults.setInteger(u"days"_s, 9);
    }
    EXPECT_TRUE(stands(m_folder / "defaults.plist.damaged-1"));
    EXPECT_EQ(UserDefaults(m_file, m_disk).integer(u"days"_s), 9);
    // These say that they are empty.
    EXPECT_EQ(readWholeFile(u"/proc/self/maps"_s, 100).error().code, EFBIG);
    EXPECT_GT(readWholeFile(u"/proc/self/maps"_s)->size(), 100);
}

TEST_F(UserDefaultsTest, AnotherProgramsPreferencesAreReadAfreshAndOnlyBesideTheOwn)
{
    m_file = text(m_folder / "preferences/defaults.plist");
    makeFolders(m_folder, {"preferences"});
    const UserDefaults defaults(m_file, m_disk);
    const QByteArray file = m_folder / "preferences/com.other.plist";
    EXPECT_TRUE(defaults.persistentDomain(u"com.other"_s).isEmpty());
    for (const auto encoding : {PropertyList::Encoding::Xml, PropertyList::Encoding::Binary}) {
        const QVariantMap values{{u"location"_s, u"~/Shots %1"_s.arg(int(encoding))}};
        const auto bytes = PropertyList::write(values, encoding);
        writeFile(file, *bytes);
        writeFile(m_folder / "outside.plist", *bytes);
        EXPECT_EQ(defaults.persistentDomain(u"com.other"_s), values);
        EXPECT_TRUE(defaults.persistentDomain(u"../outside"_s).isEmpty());
        EXPECT_TRUE(defaults.persistentDomain(u"com.other.plist"_s + QChar(u'\0')).isEmpty());
    }
    writeFile(file, "no property list");
    EXPECT_TRUE(defaults.persistentDomain(u"com.other"_s).isEmpty());
    ASSERT_EQ(::unlink(file), 0);
    ASSERT_EQ(::mkfifo(file, 0600), 0);
    EXPECT_TRUE(defaults.persistentDomain(u"com.other"_s).isEmpty());
}

TEST_F(UserDefaultsTest, AFailedWriteHoldsIsLoggedOnceAndTriedAgainAtTheEnd)
{
    ::testing::internal::CaptureStderr();
    writeToSystemLog(u"com.brivane.app", u"scanner", LogLevel::Error, u"probe"); // or the journal
    m_disk.cannotWrite = true;
    {
        UserDefaults defaults(m_file, m_disk);
        defaults.setInteger(u"days"_s, 9);
        EXPECT_FALSE(defaults.waitUntilSaved());
        defaults.setBool(u"shown"_s, false);
        EXPECT_FALSE(defaults.waitUntilSaved());
        EXPECT_EQ(defaults.integer(u"days"_s), 9);
        m_disk.cannotWrite = false;
    }
    const QByteArray log = ::testing::internal::GetCapturedStderr().c_str();
    EXPECT_EQ(log.count("could not be saved"), log.count("probe")) << log.constData();
    EXPECT_EQ(UserDefaults(m_file, m_disk).integer(u"days"_s), 9);
    EXPECT_EQ(UserDefaults(m_file, m_disk).boolean(u"shown"_s), false);
}
