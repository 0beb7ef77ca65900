#include "platform/PropertyList.h"

#include "platform/PathText.h"

#include <QDateTime>

#include <random>

#include <gtest/gtest.h>

using namespace brivane;
using namespace Qt::StringLiterals;

namespace {

QByteArray bigEndian(quint64 value, int width)
{
    QByteArray bytes;
    for (int shift = (width - 1) * 8; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift);
    return bytes;
}

/// A binary list made of `objects`, with references and offsets of four bytes; the first is the
/// root.
QByteArray binaryList(const QList<QByteArray>& objects)
{
    QByteArray bytes = "bplist00";
    QByteArray offsets;
    for (const QByteArray& object : objects) {
        offsets += bigEndian(static_cast<quint64>(bytes.size()), 4);
        bytes += object;
    }
    const auto table = static_cast<quint64>(bytes.size());
    return bytes + offsets + QByteArray(6, '\0') + '\4' + '\4' +
           bigEndian(static_cast<quint64>(objects.size()), 8) + bigEndian(0, 8) +
           bigEndian(table, 8);
}

QByteArray array(const QList<quint64>& references)
{
    QByteArray bytes(1, static_cast<char>(0xA0 | references.size()));
    for (const quint64 reference : references)
        bytes += bigEndian(reference, 4);
    return bytes;
}

} // namespace

TEST(PropertyList, ValuesComeBackFromBothEncodings)
{
    const QVariantMap value{
        {u"negative"_s, qint64(-5)},
        {u"large"_s, qint64(0x7FFF'FFFF'FFFF'FFFF)},
        {u"yes"_s, true},
        {u"tenth"_s, 0.1},
        {u"time"_s, 1764000000.123456},
        {u"text"_s, u"caf\u00E9 <&> \U0001F600"_s},
        {u"data"_s, QByteArray("\0\xFF\n", 3)},
        {u"noData"_s, QByteArray("")},
        {u"date"_s, QDateTime::fromMSecsSinceEpoch(1'600'000'000'000, Qt::UTC)},
        {u"list"_s, QVariantList{qint64(1), QVariantList(), QVariantMap{{u"k"_s, u""_s}}}},
        {u"control"_s, u" a\r\n\t\x01 "_s},
    };
    for (const auto encoding : {PropertyList::Encoding::Binary, PropertyList::Encoding::Xml}) {
        const auto bytes = PropertyList::write(value, encoding);
        ASSERT_TRUE(bytes);
        const auto back = PropertyList::read(*bytes);
        ASSERT_TRUE(back && back->typeId() == QMetaType::QVariantMap);
        const QVariantMap map = back->toMap();
        EXPECT_EQ(map.keys(), value.keys());
        for (auto item = value.begin(); item != value.end(); ++item) {
            EXPECT_EQ(map.value(item.key()), item.value()) << qPrintable(item.key());
            EXPECT_EQ(map.value(item.key()).typeId(), item.value().typeId())
                << qPrintable(item.key());
        }
    }
}

TEST(PropertyList, ANameThatIsNoTextIsKeptOrRefusedNeverCut)
{
    const QVariantMap value{{u"path"_s, PathText::fromBytes("/x/\xFF/\xE2\x82 end")}};
    const auto bytes = PropertyList::write(value, PropertyList::Encoding::Xml);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(PropertyList::read(*bytes), std::optional<QVariant>(value));
    EXPECT_FALSE(PropertyList::write(value, PropertyList::Encoding::Binary));
    EXPECT_FALSE(PropertyList::write(QString(u"a\0b"_s), PropertyList::Encoding::Xml));
    EXPECT_FALSE(PropertyList::write(QVariant(), PropertyList::Encoding::Xml));
}

TEST(PropertyList, HostileInputIsRefusedNotFollowed)
{
    QList<QByteArray> bomb; // each level holds the next one twice: 2^40 values
    for (quint64 level = 1; level <= 40; ++level)
        bomb += array({level, level});
    bomb += QByteArray("\x09", 1);
    QList<QByteArray> deep;
    for (quint64 level = 1; level <= 100'000; ++level)
        deep += array({level});
    deep += QByteArray("\x09", 1);

    const QByteArray rows[] = {
        "",
        "bplist00",
        "not a list",
        "<plist><dict>",
        "<plist>" + QByteArray("<array>").repeated(100'000),
        binaryList({array({0})}),
        binaryList({array({7})}),
        binaryList({QByteArray("\xAF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 10)}),
        binaryList(bomb),
        binaryList(deep),
    };
    for (const QByteArray& bytes : rows)
        EXPECT_FALSE(PropertyList::read(bytes)) << bytes.first(std::min(bytes.size(), 40ll)).data();
    EXPECT_TRUE(PropertyList::read(binaryList({array({1, 1}), QByteArray("\x09", 1)})));
}

TEST(PropertyList, DamagedFilesNeverCrash)
{
    const QVariantMap value{{u"a"_s, QVariantList{qint64(1), 0.5, u"text"_s, true}},
                            {u"b"_s, QVariantMap{{u"c"_s, QByteArray("data")}}}};
    std::mt19937 random(7);
    for (const auto encoding : {PropertyList::Encoding::Binary, PropertyList::Encoding::Xml}) {
        const QByteArray good = PropertyList::write(value, encoding).value_or(QByteArray());
        ASSERT_FALSE(good.isEmpty());
        for (int round = 0; round < 3000; ++round) {
            QByteArray bytes = good;
            for (auto changes = random() % 4 + 1; changes > 0; --changes)
                bytes[static_cast<qsizetype>(random() % static_cast<size_t>(bytes.size()))] =
                    static_cast<char>(random());
            if (random() % 4 == 0)
                bytes.truncate(static_cast<qsizetype>(random() % static_cast<size_t>(good.size())));
            // Whatever is still understood can be written again.
            if (const auto back = PropertyList::read(bytes); back)
                (void)PropertyList::write(*back, encoding);
        }
    }
}
