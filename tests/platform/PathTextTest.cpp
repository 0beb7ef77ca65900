#include "platform/PathText.h"

#include <random>

#include <gtest/gtest.h>

using namespace brivane;

TEST(PathText, AnyBytesComeBackUnchanged)
{
    const QByteArray cases[] = {
        "",
        "plain",
        "caf\xC3\xA9",
        "\xF0\x9F\x98\x80 smile",
        "\xFF\xFE",
        "cut\xE2\x82",          // a sequence without its end
        "\xC0\xAF",             // overlong slash
        "\xED\xB2\x80",         // a surrogate in UTF-8
        "\xF4\x90\x80\x80",     // above U+10FFFF
        "\xF0\x9F\x98\x80\x80", // a stray byte straight after a pair
        QByteArray(255, '\xB0'),
        "line\nbreak\r\t\x01",
    };
    for (const QByteArray& bytes : cases)
        EXPECT_EQ(PathText::toBytes(PathText::fromBytes(bytes)), bytes) << bytes.toHex().data();

    std::mt19937 random(1);
    for (int round = 0; round < 5000; ++round) {
        QByteArray bytes(static_cast<qsizetype>(random() % 24), '\0');
        for (char& byte : bytes) // lead and continuation bytes are the interesting ones
            byte = static_cast<char>(random() % 4 == 0 ? random() % 128 + 1 : random() % 128 + 128);
        ASSERT_EQ(PathText::toBytes(PathText::fromBytes(bytes)), bytes) << bytes.toHex().data();
    }
}

TEST(PathText, ShownNamesCannotBreakLinesOrTurnTheDirection)
{
    EXPECT_EQ(PathText::forDisplay(u"a\nb"), u"a\uFFFDb");
    EXPECT_EQ(PathText::forDisplay(u"gpj\u202Eexe"), u"gpj\uFFFDexe");
    EXPECT_EQ(PathText::forDisplay(PathText::fromBytes("x\xFF")), u"x\uFFFD");
    EXPECT_EQ(PathText::forDisplay(u"\U0001F600"), u"\U0001F600");
}

TEST(PathText, LastComponentSurvivesSlashes)
{
    for (const char16_t* path : {u"/a/b", u"/a/b//", u"b"})
        EXPECT_EQ(PathText::lastComponent(QStringView(path)), u"b");
    EXPECT_EQ(PathText::lastComponent(u"/"), u"");
}
