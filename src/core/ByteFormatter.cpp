#include "core/ByteFormatter.h"

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

struct Unit {
    const char* name;
    quint64 divisor;
};

constexpr Unit units[] = {
    {"TB", 1099511627776},
    {"GB", 1073741824},
    {"MB", 1048576},
    {"KB", 1024},
};

} // namespace

QString ByteFormatter::format(quint64 bytes)
{
    for (const Unit& unit : units) {
        if (bytes < unit.divisor)
            continue;
        const double value = static_cast<double>(bytes) / static_cast<double>(unit.divisor);
        const int decimals = value >= 100 ? 0 : value >= 10 ? 1 : 2;
        return QString::asprintf("%.*f %s", decimals, value, unit.name);
    }
    return QString::number(bytes) + u" B"_s;
}

} // namespace brivane
