#include "platform/UserDefaults.h"

#include "platform/FileReading.h"
#include "platform/PathText.h"
#include "platform/PropertyList.h"
#include "support/FileTestSupport.h"

#include <gtest/gtest.h>
#include <unistd.h>

using namespace brivane;
using namespace Qt::StringLiterals;

namespace {

class UserDefaultsTest : public testing::Test {
protected:
    TestFolder m_folder;
    QString m_file = text(m_folder / "defaults.plist");
};

} // namespace

TEST_F(UserDefaultsTest, AWrongTypeReadsAsAbsent)
{
    const QVariantMap values{
        {u"seven"_s, qint64(7)},
        {u"one"_s, qint64(1)},
        {u"true"_s, true},
        {u"7.0"_s, 7.0},
        {u"7.5"_s, 7.5},
        {u"huge"_s, 1e300},
        {u"text"_s, u"7"_s},
        {u"texts"_s, QVariantList{u"a"_s, u"b"_s}},
        {u"mixed"_s, QVariantList{u"a"_s, qint64(1)}},
    };
    writeFile(m_folder / "defaults.plist",
              PropertyList::write(values, PropertyList::Encoding::Xml).value_or(QByteArray()));
    const UserDefaults defaults(m_file);

    struct Row {
        QString key;
        std::optional<qint64> integer = {};
        std::optional<bool> boolean = {};
        std::optional<double> real = {};
        std::optional<QString> string = {};
        std::optional<QStringList> strings = {};
    };
    for (const auto& [key, integer, boolean, real, string, strings] : {
             Row{.key = u"seven"_s, .integer = 7, .real = 7.0},
             Row{.key = u"one"_s, .integer = 1, .boolean = true, .real = 1.0},
             Row{.key = u"true"_s, .integer = 1, .boolean = true, .real = 1.0},
             Row{.key = u"7.0"_s, .integer = 7, .real = 7.0},
             Row{.key = u"7.5"_s, .real = 7.5},
             Row{.key = u"huge"_s, .real = 1e300},
             Row{.key = u"text"_s, .string = u"7"_s},
             Row{.key = u"texts"_s, .strings = QStringList{u"a"_s, u"b"_s}},
             Row{.key = u"mixed"_s},
             Row{.key = u"absent"_s},
         }) {
        EXPECT_EQ(defaults.integer(key), integer) << qPrintable(key);
        EXPECT_EQ(defaults.boolean(key), boolean) << qPrintable(key);
        EXPECT_EQ(defaults.real(key), real) << qPrintable(key);
        EXPECT_EQ(defaults.string(key), string) << qPrintable(key);
        EXPECT_EQ(defaults.stringArray(key), strings) << qPrintable(key);
        EXPECT_FALSE(defaults.data(key)) << qPrintable(key);
    }
}

TEST_F(UserDefaultsTest, WritesAreInTheFileAtOnceBesideWhatOthersWrote)
{
    m_file = text(m_folder / "not/there/yet/defaults.plist");
    const QString path = PathText::fromBytes("/photos/\xFF");
    UserDefaults defaults(m_file);
    EXPECT_FALSE(stands(m_folder / "not"));
    EXPECT_TRUE(defaults.setInteger(u"days"_s, -3));
    UserDefaults other(m_file); // another process
    EXPECT_TRUE(other.setStringArray(u"paths"_s, {path}));
    EXPECT_TRUE(defaults.setBool(u"shown"_s, true));
    EXPECT_TRUE(defaults.setReal(u"date"_s, 1764000000.25));
    EXPECT_TRUE(defaults.setData(u"records"_s, "\xFF"));
    EXPECT_TRUE(other.remove(u"shown"_s));

    const UserDefaults again(m_file);
    EXPECT_EQ(again.integer(u"days"_s), -3);
    EXPECT_EQ(again.stringArray(u"paths"_s), QStringList{path});
    EXPECT_FALSE(again.object(u"shown"_s).isValid());
    EXPECT_EQ(again.real(u"date"_s), 1764000000.25);
    EXPECT_EQ(again.data(u"records"_s), QByteArray("\xFF"));
    EXPECT_EQ(namesIn(text(m_folder / "not/there/yet")), QStringList(u"defaults.plist"_s));
}

TEST_F(UserDefaultsTest, ADamagedFileIsKeptUnderAnotherName)
{
    const QByteArray aside = m_folder / "defaults.plist.damaged-1";
    writeFile(m_folder / "defaults.plist", "precious, but no property list");
    UserDefaults defaults(m_file);
    EXPECT_FALSE(defaults.object(u"days"_s).isValid());
    EXPECT_FALSE(stands(aside));
    EXPECT_TRUE(defaults.setInteger(u"days"_s, 9));
    EXPECT_EQ(readFile(aside), "precious, but no property list");
    EXPECT_EQ(UserDefaults(m_file).integer(u"days"_s), 9);
}

TEST_F(UserDefaultsTest, AFileLargerThanMemoryIsNotRead)
{
    const QByteArray file = m_folder / "defaults.plist";
    writeFile(file, "");
    ASSERT_EQ(::truncate(file, 15'000'000'000'000), 0);
    UserDefaults defaults(m_file);
    EXPECT_FALSE(defaults.object(u"days"_s).isValid());
    EXPECT_EQ(readWholeFile(m_file).error().code, EFBIG);
    // These say that they are empty.
    EXPECT_EQ(readWholeFile(u"/proc/self/maps"_s, 100).error().code, EFBIG);
    EXPECT_GT(readWholeFile(u"/proc/self/maps"_s)->size(), 100);
}

TEST_F(UserDefaultsTest, AFailedWriteHoldsAndReachesTheDiskWithTheNextOne)
{
    m_file = text(m_folder / "blocker/defaults.plist");
    writeFile(m_folder / "blocker", ""); // a file where the directory should be
    UserDefaults defaults(m_file);
    EXPECT_FALSE(defaults.setInteger(u"days"_s, 9));
    EXPECT_EQ(defaults.integer(u"days"_s), 9);
    ASSERT_EQ(::unlink(m_folder / "blocker"), 0);
    EXPECT_TRUE(defaults.setBool(u"shown"_s, true));
    EXPECT_EQ(UserDefaults(m_file).integer(u"days"_s), 9);
}
