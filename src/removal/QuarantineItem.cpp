#include "removal/QuarantineItem.h"

#include "core/JsonNumbers.h"
#include "core/ReferenceDate.h"
#include "platform/PathText.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

// Each gives none when the value is not what it should be.

std::optional<QString> text(const QJsonValue& value)
{
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<QUuid> uuid(const QJsonValue& value)
{
    const QString written = value.toString();
    const QUuid id = QUuid::fromString(written);
    // With braces it would be longer; what is no UUID reads as that of zeros.
    constexpr int length = 36;
    const bool isOne = !id.isNull() || written == id.toString(QUuid::WithoutBraces);
    return isOne && written.size() == length ? std::optional(id) : std::nullopt;
}

std::optional<QDateTime> date(const QJsonValue& value)
{
    return value.isDouble() ? std::optional(ReferenceDate::fromSeconds(value.toDouble()))
                            : std::nullopt;
}

} // namespace

qint64 QuarantineItem::daysRemaining(const QDateTime& now) const
{
    constexpr qint64 millisecondsOfDay = 86'400'000;
    constexpr auto largest = std::numeric_limits<qint64>::max();
    const qint64 passed = quarantineDate.msecsTo(now) / millisecondsOfDay;
    if (purgeDays <= passed)
        return 0;
    if (passed < 0 && purgeDays > largest + passed)
        return largest;
    return purgeDays - passed;
}

QJsonObject QuarantineItem::toJson() const
{
    return {
        {u"id"_s, id.toString(QUuid::WithoutBraces).toUpper()},
        {u"originalPath"_s, originalPath},
        {u"quarantinePath"_s, quarantinePath},
        {u"size"_s, JsonNumbers::fromUnsigned(size)},
        {u"quarantineDate"_s, ReferenceDate::seconds(quarantineDate)},
        {u"categoryName"_s, categoryName},
        {u"fileName"_s, fileName},
        {u"purgeDays"_s, purgeDays},
    };
}

std::optional<QuarantineItem> QuarantineItem::fromJson(const QJsonValue& value)
{
    const QJsonObject object = value.toObject();
    const auto id = uuid(object[u"id"]);
    const auto originalPath = text(object[u"originalPath"]);
    const auto quarantinePath = text(object[u"quarantinePath"]);
    const auto bytes = JsonNumbers::toUnsigned(object[u"size"]);
    const auto quarantineDate = date(object[u"quarantineDate"]);
    const auto categoryName = text(object[u"categoryName"]);
    const auto fileName = text(object[u"fileName"]);
    const auto purgeDays = JsonNumbers::toSigned(object[u"purgeDays"]);
    if (!id || !originalPath || !quarantinePath || !bytes || !quarantineDate || !categoryName ||
        !fileName || !purgeDays)
        return {};
    // Qt's reader drops a byte order mark in front of a text; in front of a path is a slash.
    return QuarantineItem{.id = *id,
                          .originalPath = *originalPath,
                          .quarantinePath = *quarantinePath,
                          .size = *bytes,
                          .quarantineDate = *quarantineDate,
                          .categoryName = *categoryName,
                          .fileName = PathText::lastComponent(*originalPath),
                          .purgeDays = *purgeDays};
}

} // namespace brivane
