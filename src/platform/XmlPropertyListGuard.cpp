#include "platform/XmlPropertyListGuard.h"

#include "platform/PropertyList.h"
#include "platform/XmlUnit.h"

#include <algorithm>

namespace brivane::PropertyList {

namespace {

constexpr qsizetype longestTag = 1000;

/// How many bytes the tag or document type at the front of `rest` has; 0 when it may not pass.
qsizetype sizeOfTag(QByteArrayView rest)
{
    char quote = 0;
    const qsizetype most = std::min(rest.size(), longestTag);
    for (qsizetype at = 0; at < most; ++at) {
        const char byte = rest[at];
        if (quote != 0)
            quote = byte == quote ? 0 : quote;
        else if (byte == '"' || byte == '\'')
            quote = byte;
        else if (byte == '[')
            return 0;
        else if (byte == '>')
            return at + 1;
    }
    return 0;
}

/// How many bytes the markup at the front of `rest` has; 0 when it may not pass.
qsizetype sizeOfMarkup(QByteArrayView rest)
{
    constexpr QByteArrayView spans[][2] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
    for (const auto& [begin, end] : spans) {
        if (!rest.startsWith(begin))
            continue;
        const qsizetype at = rest.indexOf(end, begin.size());
        return at < 0 ? 0 : at + end.size();
    }
    return sizeOfTag(rest);
}

/// How many bytes of `rest` are a unit that the parser would not give back, which is put into
/// `unit`.
qsizetype sizeOfUnit(QByteArrayView rest, char16_t& unit)
{
    const auto byte = [&](qsizetype at) { return static_cast<quint8>(rest[at]); };
    if (byte(0) < 0x80) {
        unit = byte(0);
        return isFormless(unit) || unit == u'\r' ? 1 : 0;
    }
    if (byte(0) >> 4 != 0xE || rest.size() < 3 || byte(1) >> 6 != 2 || byte(2) >> 6 != 2)
        return 0;
    unit = static_cast<char16_t>(byte(0) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F));
    return unit >= 0x800 && isFormless(unit) ? 3 : 0;
}

} // namespace

std::optional<QByteArray> guardedXml(const QByteArray& bytes)
{
    // No UTF-16 either, in which all of this would look different.
    if (bytes.contains('\0'))
        return {};
    const QByteArrayView xml = bytes;
    QByteArray guarded;
    qsizetype guardedUpTo = 0;
    for (qsizetype at = 0; at < xml.size();) {
        if (xml[at] == '<') {
            const qsizetype size = sizeOfMarkup(xml.sliced(at));
            if (size == 0)
                return {};
            at += size;
            continue;
        }
        char16_t unit = 0;
        const qsizetype size = sizeOfUnit(xml.sliced(at), unit);
        if (size > 0) {
            guarded += xml.sliced(guardedUpTo, at - guardedUpTo);
            guarded += instructionFor(unit);
            guardedUpTo = at + size;
            if (guarded.size() > largestFile)
                return {};
        }
        at += std::max(size, qsizetype(1));
    }
    if (guardedUpTo == 0)
        return bytes;
    guarded += xml.sliced(guardedUpTo);
    return guarded;
}

} // namespace brivane::PropertyList
