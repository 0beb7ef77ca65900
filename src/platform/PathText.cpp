#include "platform/PathText.h"

namespace brivane::PathText {

namespace {

constexpr char16_t byteEscape = 0xDC00;

/// Length of the valid UTF-8 sequence at the front of `bytes`, 0 if there is none. Overlong forms,
/// surrogates and values above U+10FFFF are not valid.
qsizetype sequenceLength(QByteArrayView bytes)
{
    const auto at = [&](qsizetype i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char lead = at(0);
    if (lead < 0x80)
        return 1;
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

/// Whether a character changes the direction or the line of the text around it.
bool disturbsText(char32_t c)
{
    if (QChar::category(c) == QChar::Other_Control || c == 0x2028 || c == 0x2029)
        return true;
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069);
}

} // namespace

QString fromBytes(QByteArrayView bytes)
{
    QString text;
    text.reserve(bytes.size());
    qsizetype validFrom = 0;
    qsizetype at = 0;
    while (at < bytes.size()) {
        if (const qsizetype length = sequenceLength(bytes.sliced(at)); length > 0) {
            at += length;
            continue;
        }
        text += QString::fromUtf8(bytes.sliced(validFrom, at - validFrom));
        text += QChar(static_cast<char16_t>(byteEscape + static_cast<unsigned char>(bytes[at])));
        validFrom = ++at;
    }
    text += QString::fromUtf8(bytes.sliced(validFrom));
    return text;
}

QByteArray toBytes(QStringView path)
{
    QByteArray bytes;
    bytes.reserve(path.size());
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

} // namespace brivane::PathText
