#include "platform/BinaryPropertyList.h"
#include "platform/BinaryPropertyListObject.h"
#include "platform/PropertyList.h"

#include <QHash>
#include <QtEndian>

#include <algorithm>
#include <bit>

namespace brivane::PropertyList {

namespace {

constexpr qsizetype headerSize = 8;
constexpr qsizetype trailerSize = 32;

quint64 bigEndian(QByteArrayView bytes)
{
    quint64 value = 0;
    for (const char byte : bytes)
        value = value << 8 | static_cast<quint8>(byte);
    return value;
}

/// Cuts `count` elements of `width` bytes off the front of `rest`; none when it is shorter.
std::optional<QByteArrayView> take(QByteArrayView& rest, quint64 count, quint64 width = 1)
{
    if (count > static_cast<quint64>(rest.size()) / width)
        return {};
    const auto size = static_cast<qsizetype>(count * width);
    const QByteArrayView taken = rest.first(size);
    rest = rest.sliced(size);
    return taken;
}

/// The invalid value for an integer of more than 64 bits.
QVariant integerOf(QByteArrayView bytes)
{
    const quint64 low = bigEndian(bytes.last(std::min(bytes.size(), qsizetype(8))));
    const auto number = static_cast<qint64>(low);
    if (bytes.size() <= 8)
        return number;
    const quint64 high = bigEndian(bytes.first(8));
    if (high == 0)
        return number < 0 ? QVariant(low) : QVariant(number);
    return ~high == 0 && number < 0 ? QVariant(number) : QVariant();
}

/// The number or date of 2^power bytes at the front of `rest`.
QVariant numberOf(quint8 kind, int power, QByteArrayView rest)
{
    const auto bytes = power <= 4 ? take(rest, quint64(1) << power) : std::nullopt;
    if (!bytes)
        return {};
    if (kind == Integer)
        return integerOf(*bytes);
    if (power == 3) {
        const auto real = std::bit_cast<double>(bigEndian(*bytes));
        if (kind == Real)
            return real;
        const QDateTime date = dateOf(real);
        return date.isValid() ? QVariant(date) : QVariant();
    }
    if (kind == Real && power == 2)
        return double(std::bit_cast<float>(static_cast<quint32>(bigEndian(*bytes))));
    return {};
}

/// The text or the data that consists of `bytes`.
QVariant contentOf(quint8 kind, QByteArrayView bytes)
{
    switch (kind) {
    case Data:
        return bytes.toByteArray();
    case Ascii:
        for (const char byte : bytes) {
            if (static_cast<quint8>(byte) >= 0x80)
                return {};
        }
        return QString::fromLatin1(bytes);
    case Utf16: {
        QString text(bytes.size() / 2, Qt::Uninitialized);
        qFromBigEndian<char16_t>(bytes.data(), text.size(), text.data());
        return text;
    }
    default:
        return {};
    }
}

/// The count that an object begins with, which is cut off `rest` when it stands there: an integer
/// object of at most 8 bytes. When that is malformed, a count that no file has room for.
quint64 countOf(quint8 count, QByteArrayView& rest)
{
    if (count != countFollows)
        return count;
    const auto first = take(rest, 1);
    const int power = first ? first->front() ^ (Integer << 4) : -1;
    const auto bytes = power >= 0 && power <= 3 ? take(rest, quint64(1) << power) : std::nullopt;
    return bytes ? bigEndian(*bytes) : std::numeric_limits<quint64>::max();
}

/// Reads objects from the root down. Malformed ones are the invalid value.
class Reader {
public:
    explicit Reader(QByteArrayView bytes)
        : m_room(bytes.size())
    {
        if (bytes.size() < headerSize + trailerSize || !bytes.startsWith("bplist0"))
            return;
        const QByteArrayView trailer = bytes.last(trailerSize);
        m_offsetWidth = static_cast<quint8>(trailer[6]);
        m_referenceWidth = static_cast<quint8>(trailer[7]);
        const quint64 count = bigEndian(trailer.sliced(8, 8));
        m_root = bigEndian(trailer.sliced(16, 8));
        QByteArrayView rest = bytes.chopped(trailerSize);
        const auto objects = take(rest, bigEndian(trailer.sliced(24, 8)));
        if (!objects || m_offsetWidth < 1 || m_offsetWidth > 8 || m_referenceWidth < 1 ||
            m_referenceWidth > 8)
            return;
        if (const auto offsets = take(rest, count, m_offsetWidth)) {
            m_objects = *objects;
            m_offsets = *offsets;
            m_count = count;
        }
    }

    QVariant root() { return object(m_root, 0); }

private:
    QVariant object(quint64 index, int depth);
    QVariant list(QByteArrayView rest, quint64 count, int depth);
    QVariant map(QByteArrayView rest, quint64 count, int depth);

    quint64 reference(QByteArrayView references, quint64 index) const
    {
        return bigEndian(references.sliced(static_cast<qsizetype>(index * m_referenceWidth),
                                           static_cast<qsizetype>(m_referenceWidth)));
    }
    /// Whether there is room for `size` bytes with `count` references more. An honest file has no
    /// byte in two objects, so that only what containers with more than one reference to them hold
    /// is read again: room for that is what other objects leave.
    bool fits(qsizetype size, quint64 count = 0)
    {
        m_room -= size;
        m_values += count;
        return m_room >= 0 && m_values <= mostValues;
    }

    QByteArrayView m_objects; ///< with the header before them
    QByteArrayView m_offsets;
    quint64 m_offsetWidth = 0;
    quint64 m_referenceWidth = 0;
    quint64 m_count = 0;
    quint64 m_root = 0;
    qsizetype m_room; ///< bytes
    quint64 m_values = 0;
    QHash<quint64, QVariant> m_shared; ///< texts and data by their offset
};

QVariant Reader::object(quint64 index, int depth)
{
    if (index >= m_count)
        return {};
    const quint64 offset = bigEndian(m_offsets.sliced(static_cast<qsizetype>(index * m_offsetWidth),
                                                      static_cast<qsizetype>(m_offsetWidth)));
    if (offset < headerSize || offset >= static_cast<quint64>(m_objects.size()))
        return {};
    QByteArrayView rest = m_objects.sliced(static_cast<qsizetype>(offset));
    const auto first = static_cast<quint8>(rest.front());
    rest = rest.sliced(1);
    const quint8 kind = first >> 4;
    const quint8 length = first & 0xF;
    if (kind == Simple)
        return first == simpleFalse || first == simpleTrue ? first == simpleTrue : QVariant();
    if (kind == Integer || kind == Real || kind == Date)
        return numberOf(kind, length, rest);
    const quint64 count = countOf(length, rest);
    if (kind == List)
        return list(rest, count, depth);
    if (kind == Map)
        return map(rest, count, depth);
    if (const auto shared = m_shared.constFind(offset); shared != m_shared.cend())
        return *shared;
    const auto content = take(rest, count, kind == Utf16 ? 2 : 1);
    if (!content || !fits(content->size()))
        return {};
    return *m_shared.insert(offset, contentOf(kind, *content));
}

QVariant Reader::list(QByteArrayView rest, quint64 count, int depth)
{
    const auto references = take(rest, count, m_referenceWidth);
    if (depth >= deepestNesting || !references || !fits(references->size(), count))
        return {};
    QVariantList list;
    list.reserve(static_cast<qsizetype>(count));
    for (quint64 i = 0; i < count; ++i) {
        list.append(object(reference(*references, i), depth + 1));
        if (!list.back().isValid())
            return {};
    }
    return list;
}

QVariant Reader::map(QByteArrayView rest, quint64 count, int depth)
{
    const auto keys = take(rest, count, m_referenceWidth);
    const auto values = take(rest, count, m_referenceWidth);
    if (depth >= deepestNesting || !keys || !values ||
        !fits(keys->size() + values->size(), 2 * count))
        return {};
    QVariantMap map;
    for (quint64 i = 0; i < count; ++i) {
        const QVariant key = object(reference(*keys, i), depth + 1);
        const QVariant value = object(reference(*values, i), depth + 1);
        if (key.typeId() != QMetaType::QString || !value.isValid())
            return {};
        map.insert(key.toString(), value);
    }
    return map;
}

} // namespace

std::optional<QVariant> readBinary(const QByteArray& bytes)
{
    QVariant value = Reader(bytes).root();
    return value.isValid() ? std::optional(std::move(value)) : std::nullopt;
}

} // namespace brivane::PropertyList
