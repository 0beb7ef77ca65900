#include "platform/UserDefaults.h"

#include "platform/PathText.h"
#include "platform/PropertyList.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace brivane;
using namespace Qt::StringLiterals;

namespace {

class UserDefaultsTest : public testing::Test {
protected:
    void put(const QByteArray& bytes)
    {
        QFile file(m_file);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    void put(const QVariantMap& values)
    {
        put(PropertyList::write(values, PropertyList::Encoding::Xml).value_or(QByteArray()));
    }

    QTemporaryDir m_folder;
    QString m_file = m_folder.path() + u"/defaults.plist"_s;
};

} // namespace

TEST_F(UserDefaultsTest, AWrongTypeReadsAsAbsent)
{
    put(QVariantMap{
        {u"seven"_s, qint64(7)},
        {u"one"_s, qint64(1)},
        {u"true"_s, true},
        {u"7.0"_s, 7.0},
        {u"7.5"_s, 7.5},
        {u"huge"_s, 1e300},
        {u"text"_s, u"7"_s},
        {u"texts"_s, QVariantList{u"a"_s, u"b"_s}},
        {u"mixed"_s, QVariantList{u"a"_s, qint64(1)}},
    });
    const UserDefaults defaults(m_file);

    struct Row {
        QString key;
        std::optional<qint64> integer;
        std::optional<bool> boolean;
        std::optional<double> real;
        std::optional<QString> string;
        std::optional<QStringList> strings;
    };
    const Row rows[] = {
        {u"seven"_s, 7, {}, 7.0, {}, {}},
        {u"one"_s, 1, true, 1.0, {}, {}},
        {u"true"_s, 1, true, 1.0, {}, {}},
        {u"7.0"_s, 7, {}, 7.0, {}, {}},
        {u"7.5"_s, {}, {}, 7.5, {}, {}},
        {u"huge"_s, {}, {}, 1e300, {}, {}},
        {u"text"_s, {}, {}, {}, u"7"_s, {}},
        {u"texts"_s, {}, {}, {}, {}, QStringList{u"a"_s, u"b"_s}},
        {u"mixed"_s, {}, {}, {}, {}, {}},
        {u"absent"_s, {}, {}, {}, {}, {}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(defaults.integer(row.key), row.integer) << qPrintable(row.key);
        EXPECT_EQ(defaults.boolean(row.key), row.boolean) << qPrintable(row.key);
        EXPECT_EQ(defaults.real(row.key), row.real) << qPrintable(row.key);
        EXPECT_EQ(defaults.string(row.key), row.string) << qPrintable(row.key);
        EXPECT_EQ(defaults.stringArray(row.key), row.strings) << qPrintable(row.key);
        EXPECT_FALSE(defaults.data(row.key)) << qPrintable(row.key);
    }
}

TEST_F(UserDefaultsTest, WritesAreInTheFileAtOnceBesideWhatOthersWrote)
{
    m_file = m_folder.path() + u"/not/there/yet/defaults.plist"_s;
    const QString path = PathText::fromBytes("/photos/\xFF");
    UserDefaults defaults(m_file);
    EXPECT_FALSE(QFile::exists(m_file));
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
    EXPECT_EQ(QDir(m_folder.path() + u"/not/there/yet"_s).entryList(QDir::Files).size(), 1);
}

TEST_F(UserDefaultsTest, ADamagedFileIsKeptUnderAnotherName)
{
    put("precious, but no property list");
    UserDefaults defaults(m_file);
    EXPECT_FALSE(defaults.object(u"days"_s).isValid());
    EXPECT_FALSE(QFile::exists(m_file + u".damaged-1"_s));
    EXPECT_TRUE(defaults.setInteger(u"days"_s, 9));
    QFile kept(m_file + u".damaged-1"_s);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "precious, but no property list");
    EXPECT_EQ(UserDefaults(m_file).integer(u"days"_s), 9);
}

TEST_F(UserDefaultsTest, AFailedWriteHoldsAndReachesTheDiskWithTheNextOne)
{
    const QString blocker = m_folder.path() + u"/blocker"_s;
    m_file = blocker + u"/defaults.plist"_s;
    QFile file(blocker);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)); // a file where the directory should be
    file.close();
    UserDefaults defaults(m_file);
    EXPECT_FALSE(defaults.setInteger(u"days"_s, 9));
    EXPECT_EQ(defaults.integer(u"days"_s), 9);
    ASSERT_TRUE(QFile::remove(blocker));
    EXPECT_TRUE(defaults.setBool(u"shown"_s, true));
    EXPECT_EQ(UserDefaults(m_file).integer(u"days"_s), 9);
}
