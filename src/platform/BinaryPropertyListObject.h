#pragma once

#include <QByteArray>
#include <QDateTime>

#include <cmath>
#include <limits>

// What an object of a binary property list looks like. For its reader and its writer.
namespace brivane::PropertyList {

/// What the upper half of an object's first byte says. The lower half is a length or a count.
enum Kind : quint8 {
    Simple = 0x0,  ///< the lower half says which
    Integer = 0x1, ///< of 2^length bytes; from 8 bytes on it has a sign
    Real = 0x2,    ///< of 2^length bytes
    Date = 0x3,    ///< a real of 8 bytes: seconds from the first moment of 2001 UTC on
    Data = 0x4,
    Ascii = 0x5,
    Utf16 = 0x6,
    List = 0xA,
    Map = 0xD, ///< first the references to the keys, then those to the values
};
inline constexpr quint8 simpleFalse = 0x08;
inline constexpr quint8 simpleTrue = 0x09;
/// As a count: the count follows as an integer object.
inline constexpr quint8 countFollows = 0xF;

/// From 1970 to 2001.
inline constexpr qint64 epochOfDates = 978307200; // seconds

/// Invalid for a time that no QDateTime tells.
inline QDateTime dateOf(double seconds)
{
    constexpr qint64 farthest = std::numeric_limits<qint64>::max() / 1000 - 1;
    // "Not a number" is not between them either.
    if (!(seconds >= double(-farthest - epochOfDates) &&
          seconds <= double(farthest - epochOfDates)))
        return {};
    const double whole = std::floor(seconds); // taken apart, or far dates lose their milliseconds
    const qint64 milliseconds = std::llround((seconds - whole) * 1000);
    return QDateTime::fromMSecsSinceEpoch(
        (epochOfDates + static_cast<qint64>(whole)) * 1000 + milliseconds, Qt::UTC);
}

/// The nearest number there is.
inline double secondsOf(const QDateTime& date)
{
    const qint64 milliseconds = date.toMSecsSinceEpoch();
    const qint64 rest = (milliseconds % 1000 + 1000) % 1000;
    const qint64 whole = milliseconds / 1000 - (milliseconds % 1000 < 0 ? 1 : 0);
    return double(whole - epochOfDates) + double(rest) / 1000;
}

} // namespace brivane::PropertyList
