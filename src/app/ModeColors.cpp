#include "app/ModeColors.h"

#include "components/ColorPalette.h"

namespace brivane {

QColor modeAccentColor(AppMode::Mode mode)
{
    switch (mode) {
    case AppMode::dashboard:
        return QColor::fromHsvF(0.55F, 0.6F, 0.9F);
    case AppMode::healthCheck:
        return ColorPalette::mint();
    case AppMode::scanner:
        return ColorPalette::accent();
    case AppMode::cleaner:
        return QColor::fromHsvF(0.8F, 0.6F, 0.9F);
    case AppMode::uninstaller:
        return QColor::fromHsvF(0.78F, 0.65F, 0.85F);
    case AppMode::duplicates:
        return QColor::fromHsvF(0.72F, 0.55F, 0.85F);
    case AppMode::similarPhotos:
        return QColor::fromHsvF(0.92F, 0.55F, 0.9F);
    case AppMode::quarantine:
        return QColor::fromHsvF(0.08F, 0.7F, 0.9F);
    case AppMode::largeFiles:
        return QColor::fromHsvF(0.1F, 0.7F, 0.9F);
    case AppMode::startupItems:
        return QColor::fromHsvF(0.28F, 0.6F, 0.8F);
    case AppMode::maintenance:
        return QColor::fromHsvF(0.6F, 0.55F, 0.85F);
    case AppMode::devCleanup:
        return QColor::fromHsvF(0.05F, 0.6F, 0.85F);
    case AppMode::privacy:
        return QColor::fromHsvF(0.9F, 0.55F, 0.85F);
    case AppMode::cleaningMode:
        return QColor::fromHsvF(0.82F, 0.6F, 0.85F);
    case AppMode::snapshots:
        return QColor::fromHsvF(0.55F, 0.5F, 0.85F);
    case AppMode::settings:
        return QColor::fromHsvF(0.0F, 0.0F, 0.7F);
    }
    return ColorPalette::accent();
}

} // namespace brivane
