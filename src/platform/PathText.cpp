#include "platform/PathText.h"

#include <cstring>

namespace brivane::PathText {

namespace {

constexpr char16_t byteEscape = 0xDC00;

bool isAscii(QByteArrayView bytes)
{
    constexpr qsizetype step = sizeof(quint64);
    qsizetype at = 0;
    for (; at + step <= bytes.size(); at += step) {
        quint64 block = 0;
        std::memcpy(&block, bytes.data() + at, sizeof block);
        if ((block & 0x8080'8080'8080'8080) != 0)
            return false;
    }
    for (; at < bytes.size(); ++at) {
        if (static_cast<unsigned char>(bytes[at]) >= 0x80)
            return false;
    }
    return true;
}

/// Length of the valid UTF-8 sequence of several bytes at the front of `bytes`, 0 if there is none.
/// Overlong forms, surrogates and values above U+10FFFF are not valid.
qsizetype sequenceLength(QByteArrayView bytes)
{
    const auto at = [&](qsizetype i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char lead = at(0);
    qsizetype length = 0;
    unsigned char lowest = 0x80;
    unsigned char highest = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        if (lead == 0xE0)
            lowest = 0xA0;
        else if (lead == 0xED)
            highest = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        if (lead == 0xF0)
            lowest = 0x90;
        else if (lead == 0xF4)
            highest = 0x8F;
    }
    if (length == 0 || bytes.size() < length || at(1) < lowest || at(1) > highest)
        return 0;
    for (qsizetype i = 2; i < length; ++i) {
        if (at(i) < 0x80 || at(i) > 0xBF)
            return 0;
    }
    return length;
}

/// The character that `sequence`, valid UTF-8 of that character alone, stands for.
char32_t characterOf(QByteArrayView sequence)
{
    constexpr unsigned char leadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t character = static_cast<unsigned char>(sequence[0]) & leadBits[sequence.size()];
    for (const char byte : sequence.sliced(1))
        character = character << 6 | (static_cast<unsigned char>(byte) & 0x3FU);
    return character;
}

/// Whether a character changes the direction or the line of the text around it, or is the byte
/// order mark, which nobody sees.
bool disturbsText(char32_t c)
{
    if (QChar::category(c) == QChar::Other_Control || c == 0x2028 || c == 0x2029 || c == 0xFEFF)
        return true;
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069);
}

} // namespace

QString fromBytes(QByteArrayView bytes)
{
    if (isAscii(bytes)) // as nearly all are
        return QString::fromLatin1(bytes);
    // By hand: QString::fromUtf8() takes a byte order mark away from the front of what it is given,
    // but in a name it is a character like any other.
    QString text(bytes.size(), Qt::Uninitialized); // a sequence has no more units than bytes
    QChar* to = text.data();
    for (qsizetype at = 0; at < bytes.size();) {
        const auto lead = static_cast<unsigned char>(bytes[at]);
        const qsizetype length = lead < 0x80 ? 1 : sequenceLength(bytes.sliced(at));
        if (length > 1) {
            for (const char16_t unit : QChar::fromUcs4(characterOf(bytes.sliced(at, length))))
                *to++ = unit;
            at += length;
        } else {
            *to++ = static_cast<char16_t>(length == 1 ? lead : byteEscape + lead);
            ++at;
        }
    }
    text.truncate(to - text.constData());
    return text;
}

QByteArray toBytes(QStringView path)
{
    QByteArray bytes;
    qsizetype validFrom = 0;
    for (qsizetype at = 0; at < path.size(); ++at) {
        const QChar unit = path[at];
        if (!unit.isSurrogate())
            continue;
        if (unit.isHighSurrogate() && at + 1 < path.size() && path[at + 1].isLowSurrogate()) {
            ++at;
            continue;
        }
        bytes += path.sliced(validFrom, at - validFrom).toUtf8();
        const int byte = unit.unicode() - byteEscape;
        bytes += byte >= 0x80 && byte <= 0xFF ? static_cast<char>(byte) : '?';
        validFrom = at + 1;
    }
    // Nearly always everything, so that the array is not copied.
    bytes += path.sliced(validFrom).toUtf8();
    return bytes;
}

QString forDisplay(QStringView path)
{
    QString text;
    text.reserve(path.size());
    for (qsizetype at = 0; at < path.size(); ++at) {
        const QChar unit = path[at];
        if (unit.isHighSurrogate() && at + 1 < path.size() && path[at + 1].isLowSurrogate()) {
            text += unit;
            text += path[++at];
        } else if (unit.isSurrogate() || disturbsText(unit.unicode())) {
            text += QChar(QChar::ReplacementCharacter);
        } else {
            text += unit;
        }
    }
    return text;
}

QString lastComponent(QStringView path)
{
    while (path.endsWith(u'/'))
        path.chop(1);
    return path.sliced(path.lastIndexOf(u'/') + 1).toString();
}

QString extension(QStringView path)
{
    const QStringView name = path.sliced(path.lastIndexOf(u'/') + 1);
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 ? name.sliced(dot + 1).toString().toLower() : QString();
}

} // namespace brivane::PathText
