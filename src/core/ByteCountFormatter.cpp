#include "core/ByteCountFormatter.h"

#include <iterator>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

struct Unit {
    const char* name;
    quint64 divisor;
    quint64 parts; ///< of one of the unit that are shown: 10 for one decimal
};

constexpr Unit units[] = {
    {"KB", 1'000, 1},
    {"MB", 1'000'000, 10},
    {"GB", 1'000'000'000, 100},
    {"TB", 1'000'000'000'000, 100},
    {"PB", 1'000'000'000'000'000, 100},
    {"EB", 1'000'000'000'000'000'000, 100},
};

/// `bytes` in parts of the unit, rounded. Made of two quotients, since a product would overflow.
quint64 partsOf(quint64 bytes, const Unit& unit)
{
    const quint64 part = unit.divisor / unit.parts;
    return bytes / unit.divisor * unit.parts + (bytes % unit.divisor + part / 2) / part;
}

} // namespace

QString ByteCountFormatter::string(quint64 bytes)
{
    if (bytes == 0)
        return u"Zero KB"_s;
    if (bytes < units[0].divisor)
        return QString::number(bytes) + (bytes == 1 ? u" byte"_s : u" bytes"_s);
    const Unit* unit = std::begin(units);
    while (unit + 1 != std::end(units) && partsOf(bytes, *unit) >= 1000 * unit->parts)
        ++unit;
    const quint64 parts = partsOf(bytes, *unit);
    QString number = QString::number(parts / unit->parts);
    if (quint64 rest = parts % unit->parts; rest > 0) {
        int digits = unit->parts == 100 ? 2 : 1;
        if (rest % 10 == 0) {
            rest /= 10;
            --digits;
        }
        number += u".%1"_s.arg(rest, digits, 10, QChar(u'0'));
    }
    return number + u' ' + QLatin1StringView(unit->name);
}

} // namespace brivane
