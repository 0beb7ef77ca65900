#include "platform/Bundle.h"

#include "platform/FileReading.h"
#include "platform/PropertyList.h"

using namespace Qt::StringLiterals;

namespace brivane::Bundle {

namespace {

/// Descriptions have some kilobytes; the largest known ones, with all types of documents, some
/// hundred.
constexpr qsizetype largestDescription = qsizetype(4) << 20;

} // namespace

std::optional<QString> identifier(const QString& path)
{
    const Result<QByteArray> bytes =
        readWholeFile(path + u"/Contents/Info.plist"_s, largestDescription);
    if (!bytes)
        return {};
    const std::optional<QVariant> description = PropertyList::read(*bytes);
    if (!description)
        return {};
    const QVariant value = description->toMap().value(u"CFBundleIdentifier"_s);
    return value.typeId() == QMetaType::QString ? std::optional(value.toString()) : std::nullopt;
}

} // namespace brivane::Bundle
