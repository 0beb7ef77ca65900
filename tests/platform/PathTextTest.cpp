#include "platform/PathText.h"

#include <QByteArrayList>

#include <random>

#include <gtest/gtest.h>

using namespace brivane;

TEST(PathText, NoNameComesBackAsAnother)
{
    const auto expectBack = [](const QByteArray& bytes) {
        ASSERT_EQ(PathText::toBytes(PathText::fromBytes(bytes)), bytes) << bytes.toHex().data();
    };
    for (qsizetype length = 0; length <= 3; ++length) {
        QByteArray bytes(length, '\0');
        for (unsigned value = 0; value < 1U << (8 * length); ++value) {
            for (qsizetype i = 0; i < length; ++i)
                bytes[i] = static_cast<char>(value >> (8 * i));
            ASSERT_NO_FATAL_FAILURE(expectBack(bytes));
        }
    }
    // Pieces at whose seams a decoder could err, in every order: text, a byte order mark, U+FFFE, a
    // sequence without its end, surrogates in UTF-8, one in UTF-16, an overlong slash, U+110000.
    const QByteArrayList pieces =
        QByteArray("/|longer plain text|\xC3\xA9|\xEF\xBB\xBF|\xEF\xBF\xBE|\xE2\x82|\xED\xA0\x80|"
                   "\xED\xB2\x80|\xF0\x9F\x98\x80|\xC0\xAF|\xF4\x90\x80\x80|\x80|\xFF")
            .split('|');
    std::mt19937 random(1);
    for (int round = 0; round < 2'000'000; ++round) {
        QByteArray bytes;
        for (auto more = random() % 6; more > 0; --more)
            bytes += pieces[static_cast<qsizetype>(random()) % pieces.size()];
        if (!bytes.isEmpty() && random() % 2 == 0)
            bytes[static_cast<qsizetype>(random()) % bytes.size()] = static_cast<char>(random());
        ASSERT_NO_FATAL_FAILURE(expectBack(bytes));
    }
}

TEST(PathText, CharactersAreThemselvesAndOtherBytesLoneSurrogates)
{
    for (char32_t character = 0; character <= QChar::LastValidCodePoint; ++character) {
        if (QChar::isSurrogate(character))
            continue;
        const QString text = QStringView(QChar::fromUcs4(character)).toString();
        ASSERT_EQ(PathText::fromBytes(text.toUtf8()), text) << static_cast<unsigned>(character);
    }
    for (const QByteArray bytes : {"\x80", "\xFF", "\xED\xB2\x80", "\xC0\xAF", "\xE2\x82"}) {
        QString expected;
        for (const char byte : bytes)
            expected += QChar(static_cast<char16_t>(0xDC00 + static_cast<unsigned char>(byte)));
        EXPECT_EQ(PathText::fromBytes(bytes), expected) << bytes.toHex().data();
    }
}

TEST(PathText, ShownNamesCannotBreakLinesTurnTheDirectionOrPoseAsOthers)
{
    EXPECT_EQ(PathText::forDisplay(u"\uFEFFa"), u"\uFFFDa");
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
