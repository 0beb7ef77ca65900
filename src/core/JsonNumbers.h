#pragma once

#include <QJsonValue>

#include <limits>
#include <optional>

// Integers in stored JSON. Reading gives none for what is no number or not a whole one.
namespace brivane::JsonNumbers {

[[nodiscard]] inline std::optional<qint64> toSigned(const QJsonValue& value)
{
    // The fallback comes back for whatever is no integer, so it has to come back twice.
    const qint64 number = value.toInteger(0);
    return number == value.toInteger(1) ? std::optional(number) : std::nullopt;
}

/// Above 2^63 - 1, to which QJsonValue is exact, every number is taken for that.
[[nodiscard]] inline std::optional<quint64> toUnsigned(const QJsonValue& value)
{
    constexpr auto largest = std::numeric_limits<qint64>::max();
    if (const std::optional<qint64> number = toSigned(value))
        return *number >= 0 ? std::optional(static_cast<quint64>(*number)) : std::nullopt;
    return value.toDouble() >= 0x1p63 ? std::optional(quint64{largest}) : std::nullopt;
}

[[nodiscard]] inline QJsonValue fromUnsigned(quint64 number)
{
    constexpr quint64 largest = std::numeric_limits<qint64>::max();
    return QJsonValue(static_cast<qint64>(number < largest ? number : largest));
}

} // namespace brivane::JsonNumbers
