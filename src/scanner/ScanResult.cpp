#include "scanner/ScanResult.h"

#include <cmath>

namespace brivane {

QString ScanResult::formattedDuration() const
{
    if (scanDuration < 1)
        return QString::asprintf("%.0f ms", scanDuration * 1000);
    if (scanDuration < 60)
        return QString::asprintf("%.1f s", scanDuration);
    const auto minutes = static_cast<long>(scanDuration / 60);
    const auto seconds = static_cast<long>(std::fmod(scanDuration, 60));
    return QString::asprintf("%ldm %lds", minutes, seconds);
}

} // namespace brivane
