#include "platform/PropertyList.h"

#include "platform/PathText.h"
#include "support/SamePropertyList.h"

#include <QDateTime>

#include <limits>

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

QByteArray xml(const QByteArray& content)
{
    return "<plist version=\"1.0\">" + content + "</plist>";
}

QVariant nested(int levels)
{
    QVariant value = true;
    for (int level = 0; level < levels; ++level)
        value = QVariantList{value};
    return value;
}

QDateTime date(qint64 milliseconds)
{
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
}

} // namespace

TEST(PropertyList, WhatIsWrittenComesBackWhateverItHolds)
{
    using Whole = std::numeric_limits<qint64>;
    using Real = std::numeric_limits<double>;
    QString units = u"ab <>&\"'\r\n\t\x01\x1F\x7F\u0085\u2028\uFEFF\uFFFE\uFFFF\U0001F600]]>"
                    u"<?utf-16 DC80?>&#xDC80;"_s;
    for (const char16_t unit : {u'\0', u'\xD800', u'\xDC80', u'\xDFFF', u'\xD800'})
        units += QChar(unit) + u' ';
    QVariantList values{0.0, -0.0, 0.1, false, ~0ull, Whole::min(), Whole::max(), nested(256)};
    for (const double real : {Real::infinity(), Real::quiet_NaN(), Real::denorm_min()})
        values += real;
    for (const QByteArray& data : {QByteArray(""), QByteArray("\0\xFF", 2)})
        values += data;
    for (const QString& string : {units, PathText::fromBytes("/x/\xFF/\xE2\x82 end")})
        values += QVariantMap{{string, QVariantList{string}}, {u""_s, QVariantMap()}};
    for (const auto& [count, item] :
         {std::pair<int, QVariant>(256, QVariantList()), {300, u"shared"_s}, {70'000, 0.5}})
        values += QVariant(QVariantList(count, item));
    constexpr qint64 farthest = Whole::max() / 1'000'000 * 1'000'000;
    for (const qint64 milliseconds : {-farthest, farthest, -1ll})
        values += date(milliseconds);
    for (const int year : {-9999, -1, 1, 1931, 1932, 2069, 2070, 10'000, 250'000})
        values += QDateTime(QDate(year, 2, 28), QTime(23, 59, 59, 1), Qt::UTC);
    for (const auto encoding : {PropertyList::Encoding::Binary, PropertyList::Encoding::Xml}) {
        for (const QVariant& value : std::as_const(values)) {
            const auto bytes = PropertyList::write(value, encoding);
            ASSERT_TRUE(bytes) << value.typeName();
            const auto back = PropertyList::read(*bytes);
            ASSERT_TRUE(back && isSameList(value, *back, encoding)) << bytes->toHex().data();
        }
    }
}

TEST(PropertyList, WhatCouldNotBeReadIsNotWritten)
{
    const QVariantList many(4'000'000, true);
    const QVariantList large(70, QByteArray(1 << 20, 'x'));
    const QVariant rows[] = {
        {}, QVariantList{QVariant()}, QDateTime(), QChar(u'c'), nested(257), many, large};
    for (const QVariant& value : rows) {
        for (const auto encoding : {PropertyList::Encoding::Binary, PropertyList::Encoding::Xml})
            EXPECT_FALSE(PropertyList::write(value, encoding)) << value.typeName();
    }
    // A number of seconds cannot tell it from the milliseconds beside it.
    EXPECT_FALSE(PropertyList::write(date(1ll << 60 | 1), PropertyList::Encoding::Binary));
    // It begins within a second.
    EXPECT_FALSE(
        PropertyList::write(date(std::numeric_limits<qint64>::min()), PropertyList::Encoding::Xml));
}

TEST(PropertyList, WhatOthersWriteIsUnderstood)
{
    const QDateTime moment(QDate(2070, 1, 2), QTime(3, 4, 5), Qt::UTC);
    const struct {
        QByteArray bytes;
        QVariant value;
    } rows[] = {
        {"\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<!DOCTYPE plist PUBLIC "
         "\"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">"
         "<!-- <array> --><plist version='1.0' a='>'>\r\n<true></true>\r\n</plist>\r\n",
         true},
        {xml("<integer> +0x7F </integer>"), 127ll},
        {xml("<integer>18446744073709551615</integer>"), ~0ull},
        {xml("<real> -1.5E3\n</real>"), -1500.0},
        {xml("<date>2070-01-02T03:04:05Z</date>"), moment},
        {xml("<data>\n\tAP\n\t8K\n</data>"), QByteArray("\0\xFF\n", 3)},
        {xml("<string>a<!-- b --><![CDATA[<c>]]>&amp;&#100;\r\n</string>"), u"a<c>&d\r\n"_s},
        {xml("<dict><key>k</key><true/><key>k</key><string/></dict>"),
         QVariantMap{{u"k"_s, u""_s}}},
        // As builds before this encoding of such units wrote them.
        {xml("<string>/x/\xED\xB3\xBF\x01\xEF\xBF\xBE</string>"),
         PathText::fromBytes("/x/\xFF\x01\xEF\xBF\xBE")},
        {binaryList({"\x11\xFF\xFE"}), 0xFFFEll},
        {binaryList({"\x14" + QByteArray(16, '\xFF')}), -1ll},
        {binaryList({"\x14" + bigEndian(0, 8) + QByteArray(8, '\xFF')}), ~0ull},
        {binaryList({"\x22\x3F\xC0" + bigEndian(0, 2)}), 1.5},
        {binaryList({"\x33" + bigEndian(std::bit_cast<quint64>(2177550245.25), 8)}),
         moment.addMSecs(250)},
        {binaryList({QByteArray("\xD1") + bigEndian(1, 4) + bigEndian(2, 4),
                     "\x61" + bigEndian(0, 2), "\x09"}),
         QVariantMap{{QString(QChar(0)), true}}},
        {binaryList({array({1, 1, 2, 2}), array({}), array({1})}),
         QVariantList{QVariantList(), QVariantList(), QVariantList{QVariantList()},
                      QVariantList{QVariantList()}}}};
    for (const auto& [bytes, value] : rows) {
        const auto read = PropertyList::read(bytes);
        EXPECT_TRUE(read && isSameList(value, *read, PropertyList::Encoding::Binary))
            << bytes.data();
    }
}

TEST(PropertyList, HostileInputIsRefusedNotFollowed)
{
    QList<QByteArray> bomb; // each level holds the next one twice: 2^16 values in 300 bytes
    for (quint64 level = 1; level <= 16; ++level)
        bomb += array({level, level});
    bomb += QByteArray("\x09", 1);
    QByteArray attributes; // each would be compared with all others
    for (int count = 0; count < 50'000; ++count)
        attributes += " a" + QByteArray::number(count) + "=''";
    QList<QByteArray> deep;
    for (quint64 level = 1; level <= 100'000; ++level)
        deep += array({level});
    deep += QByteArray("\x09", 1);

    const QByteArray text = "\x5F\x12" + bigEndian(1 << 20, 4) + QByteArray(1 << 20, 'x');
    const QByteArray rows[] = {
        "",
        "<plist>" + QByteArray("<array>").repeated(100'000),
        xml(QByteArray("<array><!--</array>-->").repeated(257) +
            QByteArray("</array>").repeated(257)),
        xml("<dict><key>k</key><true/>text</dict>"),
        xml("<true/><true/>"),
        xml("<integer>18446744073709551616</integer>"),
        xml("<real>1e999</real>"),
        xml("<date>2070-02-30T00:00:00Z</date>"),
        xml("<date>292278995-01-01T00:00:00Z</date>"),
        xml("<string>\xC3</string>"),
        xml("<string><?utf-16 0?>\xFF</string>"),
        "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + xml("<true/>"),
        "<!DOCTYPE plist [<!ENTITY a \"b\">]>" + xml("<string>&a;</string>"),
        "<plist" + attributes + "><true/></plist>",
        binaryList({array({1, 0}), "\x80\x01"}),
        binaryList({"\x14\x01" + QByteArray(15, '\0')}),
        binaryList({"\x33\x7F\xF0" + bigEndian(0, 6)}),
        binaryList({QByteArray("\xD1") + bigEndian(1, 4) + bigEndian(1, 4), "\x09"}),
        binaryList({array(QList<quint64>(14, 1)), array(QList<quint64>(14, 2)), text}),
        binaryList({array({0})}),
        binaryList({QByteArray("\xAF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 10)}),
        binaryList(bomb),
        binaryList(deep)};
    for (const QByteArray& bytes : rows)
        EXPECT_FALSE(PropertyList::read(bytes)) << bytes.first(std::min(bytes.size(), 40ll)).data();
    EXPECT_TRUE(PropertyList::read(binaryList({array({1, 1}), QByteArray("\x09", 1)})));
}
