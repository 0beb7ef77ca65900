#pragma once

#include <QDateTime>

#include <algorithm>
#include <cmath>

// Dates as stored JSON has them: the number of seconds since 2001-01-01 00:00:00 UTC.
namespace brivane::ReferenceDate {

inline constexpr qint64 millisecondsSince1970 = 978'307'200'000;

[[nodiscard]] inline double seconds(const QDateTime& date)
{
    return static_cast<double>(date.toMSecsSinceEpoch() - millisecondsSince1970) / 1000;
}

/// The date, in UTC, to the millisecond. Numbers that are no dates any more, 30,000 years away,
/// become the last one that is.
[[nodiscard]] inline QDateTime fromSeconds(double seconds)
{
    constexpr double farthest = 1e12;
    const double within = std::clamp(seconds, -farthest, farthest);
    return QDateTime::fromMSecsSinceEpoch(std::llround(within * 1000) + millisecondsSince1970,
                                          Qt::UTC);
}

} // namespace brivane::ReferenceDate
