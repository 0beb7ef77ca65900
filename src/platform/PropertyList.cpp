#include "platform/PropertyList.h"

#include "platform/BinaryPropertyList.h"
#include "platform/XmlPropertyList.h"

#include <QDateTime>

#include <algorithm>

namespace brivane::PropertyList {

namespace {

/// Goes through a value as it unfolds, up to the bounds.
class Measure {
public:
    /// Whether `value`, in `depth` containers, has a type that a list can hold, and room.
    bool takes(const QVariant& value, int depth)
    {
        switch (value.typeId()) {
        case QMetaType::QVariantMap:
            return takesMap(value.toMap(), depth);
        case QMetaType::QVariantList:
        case QMetaType::QStringList:
            return takesList(value.toList(), depth);
        case QMetaType::Bool:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Double:
            return takesValue(0);
        case QMetaType::QString:
            return takesValue(value.toString().size());
        case QMetaType::QByteArray:
            return takesValue(value.toByteArray().size());
        case QMetaType::QDateTime:
            return value.toDateTime().isValid() && takesValue(0);
        default:
            return false;
        }
    }

private:
    bool takesMap(const QVariantMap& map, int depth)
    {
        if (depth >= deepestNesting || !takesValue(0))
            return false;
        for (auto item = map.begin(); item != map.end(); ++item) {
            if (!takesValue(item.key().size()) || !takes(item.value(), depth + 1))
                return false;
        }
        return true;
    }

    bool takesList(const QVariantList& list, int depth)
    {
        return depth < deepestNesting && takesValue(0) &&
               std::all_of(list.begin(), list.end(),
                           [&](const QVariant& item) { return takes(item, depth + 1); });
    }

    bool takesValue(qsizetype content)
    {
        m_content += content;
        return ++m_values <= mostValues && m_content <= mostContent;
    }

    qsizetype m_values = 0;
    qsizetype m_content = 0;
};

} // namespace

std::optional<QVariant> read(const QByteArray& bytes)
{
    if (bytes.size() > largestFile)
        return {};
    std::optional<QVariant> value = bytes.startsWith("bplist") ? readBinary(bytes) : readXml(bytes);
    return value && Measure().takes(*value, 0) ? value : std::nullopt;
}

std::optional<QByteArray> write(const QVariant& value, Encoding encoding)
{
    if (!Measure().takes(value, 0))
        return {};
    std::optional<QByteArray> bytes =
        encoding == Encoding::Xml ? writeXml(value) : writeBinary(value);
    return bytes && bytes->size() <= largestFile ? bytes : std::nullopt;
}

} // namespace brivane::PropertyList
