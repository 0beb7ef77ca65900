#include "platform/BinaryPropertyList.h"
#include "platform/BinaryPropertyListObject.h"

#include <QHash>
#include <QtEndian>

#include <algorithm>
#include <bit>
#include <vector>

namespace brivane::PropertyList {

namespace {

void append(QByteArray& bytes, quint64 value, int width)
{
    char all[8];
    qToBigEndian(value, all);
    bytes.append(all + 8 - width, width);
}

/// How many bytes hold `value`, as a power of two.
int powerFor(quint64 value)
{
    return value <= 0xFF ? 0 : value <= 0xFFFF ? 1 : value <= 0xFFFF'FFFF ? 2 : 3;
}

QByteArray beginning(Kind kind, int length)
{
    return QByteArray(1, static_cast<char>(kind << 4 | length));
}

/// An object of 2^power bytes.
QByteArray number(Kind kind, quint64 value, int power)
{
    QByteArray bytes = beginning(kind, power);
    if (power > 3)
        append(bytes, 0, 8);
    append(bytes, value, 1 << std::min(power, 3));
    return bytes;
}

QByteArray counted(Kind kind, qsizetype count)
{
    if (count < countFollows)
        return beginning(kind, static_cast<int>(count));
    const auto number = static_cast<quint64>(count);
    return beginning(kind, countFollows) + PropertyList::number(Integer, number, powerFor(number));
}

QByteArray text(const QString& text)
{
    if (std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() < 0x80; }))
        return counted(Ascii, text.size()) + text.toLatin1();
    QByteArray units(text.size() * 2, Qt::Uninitialized);
    qToBigEndian<char16_t>(text.utf16(), text.size(), units.data());
    return counted(Utf16, text.size()) + units;
}

/// The object of a value that holds no others; none for a date that has no form.
std::optional<QByteArray> scalar(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return QByteArray(1, static_cast<char>(value.toBool() ? simpleTrue : simpleFalse));
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong: {
        const auto bits = static_cast<quint64>(value.toLongLong());
        return number(Integer, bits, powerFor(bits));
    }
    case QMetaType::ULongLong: { // eight bytes have a sign
        const quint64 bits = value.toULongLong();
        return number(Integer, bits, bits >> 63 != 0 ? 4 : powerFor(bits));
    }
    case QMetaType::Double:
        return number(Real, std::bit_cast<quint64>(value.toDouble()), 3);
    case QMetaType::QString:
        return text(value.toString());
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        return counted(Data, bytes.size()) + bytes;
    }
    case QMetaType::QDateTime: {
        const double seconds = secondsOf(value.toDateTime());
        if (dateOf(seconds) != value.toDateTime())
            return {};
        return number(Date, std::bit_cast<quint64>(seconds), 3);
    }
    default:
        return {};
    }
}

/// Collects the objects of a value, each with an index, the root with 0.
class Writer {
public:
    /// The index of `value`, which is added unless it is there; none when it has no form.
    std::optional<quint64> add(const QVariant& value);
    [[nodiscard]] QByteArray bytes() const;

private:
    struct Object {
        QByteArray bytes;
        std::vector<quint64> references = {}; ///< follow the bytes
    };

    std::optional<quint64> addScalar(const QVariant& value);

    std::vector<Object> m_objects;
    QHash<QByteArray, quint64> m_scalars; ///< the indices of those that are there, by their bytes
};

std::optional<quint64> Writer::addScalar(const QVariant& value)
{
    const std::optional<QByteArray> bytes = scalar(value);
    if (!bytes)
        return {};
    const auto index = m_scalars.constFind(*bytes);
    if (index != m_scalars.cend())
        return *index;
    m_objects.push_back({*bytes});
    return *m_scalars.insert(*bytes, m_objects.size() - 1);
}

std::optional<quint64> Writer::add(const QVariant& value)
{
    const bool isMap = value.typeId() == QMetaType::QVariantMap;
    if (!isMap && value.typeId() != QMetaType::QVariantList &&
        value.typeId() != QMetaType::QStringList)
        return addScalar(value);

    const QVariantMap map = isMap ? value.toMap() : QVariantMap();
    const QVariantList children = isMap ? map.values() : value.toList();
    const quint64 index = m_objects.size();
    m_objects.push_back({counted(isMap ? Map : List, children.size())});
    std::vector<quint64> references;
    for (auto key = map.keyBegin(); key != map.keyEnd(); ++key)
        references.push_back(addScalar(*key).value_or(0)); // every text has a form
    for (const QVariant& child : children) {
        const std::optional<quint64> reference = add(child);
        if (!reference)
            return {};
        references.push_back(*reference);
    }
    m_objects[index].references = std::move(references);
    return index;
}

QByteArray Writer::bytes() const
{
    const int referenceWidth = 1 << powerFor(m_objects.size() - 1);
    QByteArray bytes = "bplist00";
    std::vector<quint64> offsets;
    for (const Object& object : m_objects) {
        offsets.push_back(static_cast<quint64>(bytes.size()));
        bytes += object.bytes;
        for (const quint64 reference : object.references)
            append(bytes, reference, referenceWidth);
    }
    const auto table = static_cast<quint64>(bytes.size());
    const int offsetWidth = 1 << powerFor(table);
    for (const quint64 offset : offsets)
        append(bytes, offset, offsetWidth);
    append(bytes, 0, 6);
    append(bytes, static_cast<quint64>(offsetWidth), 1);
    append(bytes, static_cast<quint64>(referenceWidth), 1);
    append(bytes, m_objects.size(), 8);
    append(bytes, 0, 8); // the root
    append(bytes, table, 8);
    return bytes;
}

} // namespace

std::optional<QByteArray> writeBinary(const QVariant& value)
{
    Writer writer;
    return writer.add(value) ? std::optional(writer.bytes()) : std::nullopt;
}

} // namespace brivane::PropertyList
