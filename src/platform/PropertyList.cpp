#include "platform/PropertyList.h"

#include "platform/PropertyListGuard.h"

#include <QDateTime>

#include <cmath>
#include <cstdlib>
#include <limits>

#include <plist/plist.h>

namespace brivane::PropertyList {

namespace {

constexpr qint64 epochOfDates = 978307200; // 2001-01-01 00:00:00 UTC, what stored dates count from

struct PlistDeleter {
    void operator()(void* node) const { plist_free(node); }
};
using PlistPointer = std::unique_ptr<void, PlistDeleter>;

/// UTF-8 in which a lone surrogate is three bytes like any other unit: with these bytes an XML
/// list gives back every QString, also the text of a file name that is no UTF-8.
QByteArray toLibrary(const QString& text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    qsizetype validFrom = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar unit = text[at];
        if (!unit.isSurrogate())
            continue;
        if (unit.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate()) {
            ++at;
            continue;
        }
        bytes += QStringView(text).sliced(validFrom, at - validFrom).toUtf8();
        bytes += '\xED';
        bytes += static_cast<char>(0x80 | ((unit.unicode() >> 6) & 0x3F));
        bytes += static_cast<char>(0x80 | (unit.unicode() & 0x3F));
        validFrom = at + 1;
    }
    bytes += QStringView(text).sliced(validFrom).toUtf8();
    return bytes;
}

QString fromLibrary(QByteArrayView bytes)
{
    QString text;
    qsizetype validFrom = 0;
    for (qsizetype at = 0; at + 2 < bytes.size(); ++at) {
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        const auto third = static_cast<unsigned char>(bytes[at + 2]);
        if (bytes[at] != '\xED' || second < 0xA0 || second > 0xBF || (third & 0xC0) != 0x80)
            continue;
        text += QString::fromUtf8(bytes.sliced(validFrom, at - validFrom));
        text += QChar(static_cast<char16_t>(0xD000 | ((second & 0x3F) << 6) | (third & 0x3F)));
        at += 2;
        validFrom = at + 1;
    }
    return text + QString::fromUtf8(bytes.sliced(validFrom));
}

QVariant valueOf(plist_t node);

QVariant mapOf(plist_t node)
{
    QVariantMap map;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    for (;;) {
        char* key = nullptr;
        plist_t child = nullptr;
        plist_dict_next_item(node, iterator, &key, &child);
        if (key != nullptr && child != nullptr)
            map.insert(fromLibrary(key), valueOf(child));
        std::free(key);
        if (child == nullptr)
            break;
    }
    std::free(iterator);
    return map;
}

QVariant listOf(plist_t node)
{
    QVariantList list;
    plist_array_iter iterator = nullptr;
    plist_array_new_iter(node, &iterator);
    for (;;) {
        plist_t child = nullptr;
        plist_array_next_item(node, iterator, &child);
        if (child == nullptr)
            break;
        list.append(valueOf(child));
    }
    std::free(iterator);
    return list;
}

QVariant valueOf(plist_t node)
{
    switch (plist_get_node_type(node)) {
    case PLIST_DICT:
        return mapOf(node);
    case PLIST_ARRAY:
        return listOf(node);
    case PLIST_BOOLEAN: {
        uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_UINT: {
        uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return static_cast<qint64>(value);
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_STRING: {
        uint64_t length = 0;
        const char* text = plist_get_string_ptr(node, &length);
        return text == nullptr ? QString()
                               : fromLibrary(QByteArrayView(text, static_cast<qsizetype>(length)));
    }
    case PLIST_DATA: {
        uint64_t length = 0;
        const char* bytes = plist_get_data_ptr(node, &length);
        return bytes == nullptr ? QByteArray("")
                                : QByteArray(bytes, static_cast<qsizetype>(length));
    }
    case PLIST_DATE: {
        int32_t seconds = 0;
        int32_t microseconds = 0;
        plist_get_date_val(node, &seconds, &microseconds);
        return QDateTime::fromMSecsSinceEpoch((epochOfDates + seconds) * 1000 + microseconds / 1000,
                                              Qt::UTC);
    }
    case PLIST_UID: {
        uint64_t value = 0;
        plist_get_uid_val(node, &value);
        return static_cast<qint64>(value);
    }
    case PLIST_KEY:
    case PLIST_NONE:
        break;
    }
    return {};
}

/// Makes the nodes of a value. Null for what has no form in the encoding.
class NodeMaker {
public:
    explicit NodeMaker(Encoding encoding)
        : m_encoding(encoding)
    {
    }
    PlistPointer nodeOf(const QVariant& value) const;

private:
    PlistPointer nodeOfMap(const QVariantMap& map) const;
    PlistPointer nodeOfList(const QVariantList& list) const;
    bool canHold(const QString& text) const;

    Encoding m_encoding;
};

bool NodeMaker::canHold(const QString& text) const
{
    // The library's strings end at the first NUL, and at a lone surrogate in binary lists.
    return !text.contains(QChar(u'\0')) &&
           (m_encoding == Encoding::Xml || QStringView(text).isValidUtf16());
}

PlistPointer NodeMaker::nodeOfMap(const QVariantMap& map) const
{
    PlistPointer node(plist_new_dict());
    for (auto item = map.begin(); item != map.end(); ++item) {
        PlistPointer child = nodeOf(item.value());
        if (!child || !canHold(item.key()))
            return nullptr;
        plist_dict_set_item(node.get(), toLibrary(item.key()).constData(), child.release());
    }
    return node;
}

PlistPointer NodeMaker::nodeOfList(const QVariantList& list) const
{
    PlistPointer node(plist_new_array());
    for (const QVariant& item : list) {
        PlistPointer child = nodeOf(item);
        if (!child)
            return nullptr;
        plist_array_append_item(node.get(), child.release());
    }
    return node;
}

PlistPointer NodeMaker::nodeOf(const QVariant& value) const
{
    switch (value.typeId()) {
    case QMetaType::QVariantMap:
        return nodeOfMap(value.toMap());
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return nodeOfList(value.toList());
    case QMetaType::Bool:
        return PlistPointer(plist_new_bool(value.toBool() ? 1 : 0));
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
        return PlistPointer(plist_new_uint(static_cast<uint64_t>(value.toLongLong())));
    case QMetaType::Double:
        return PlistPointer(plist_new_real(value.toDouble()));
    case QMetaType::QString: {
        const QString text = value.toString();
        if (!canHold(text))
            return nullptr;
        return PlistPointer(plist_new_string(toLibrary(text).constData()));
    }
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        return PlistPointer(plist_new_data(bytes.constData(), static_cast<uint64_t>(bytes.size())));
    }
    case QMetaType::QDateTime: {
        const qint64 milliseconds = value.toDateTime().toMSecsSinceEpoch() - epochOfDates * 1000;
        const auto seconds = static_cast<qint64>(std::floor(double(milliseconds) / 1000));
        if (!value.toDateTime().isValid() || seconds < std::numeric_limits<int32_t>::min() ||
            seconds > std::numeric_limits<int32_t>::max())
            return nullptr;
        return PlistPointer(
            plist_new_date(static_cast<int32_t>(seconds),
                           static_cast<int32_t>((milliseconds - seconds * 1000) * 1000)));
    }
    default:
        return nullptr;
    }
}

} // namespace

std::optional<QVariant> read(const QByteArray& bytes)
{
    if (!isSafeToParse(bytes))
        return {};
    plist_t root = nullptr;
    plist_from_memory(bytes.constData(), static_cast<uint32_t>(bytes.size()), &root);
    const PlistPointer owner(root);
    if (!owner)
        return {};
    QVariant value = valueOf(root);
    return value.isValid() ? std::optional(std::move(value)) : std::nullopt;
}

std::optional<QByteArray> write(const QVariant& value, Encoding encoding)
{
    const PlistPointer node = NodeMaker(encoding).nodeOf(value);
    if (!node)
        return {};
    char* bytes = nullptr;
    uint32_t length = 0;
    if (encoding == Encoding::Xml)
        plist_to_xml(node.get(), &bytes, &length);
    else
        plist_to_bin(node.get(), &bytes, &length);
    if (bytes == nullptr)
        return {};
    QByteArray result(bytes, static_cast<qsizetype>(length));
    std::free(bytes);
    return result;
}

} // namespace brivane::PropertyList
