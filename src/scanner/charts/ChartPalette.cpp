#include "scanner/charts/ChartPalette.h"

#include <array>

namespace brivane {

namespace {

struct HueSaturationBrightness {
    float hue;
    float saturation;
    float brightness;
};

using Palette = std::array<HueSaturationBrightness, 12>;

constexpr Palette blockColors = {{
    {0.55F, 0.65F, 0.75F},
    {0.38F, 0.6F, 0.75F},
    {0.95F, 0.55F, 0.82F},
    {0.12F, 0.65F, 0.85F},
    {0.75F, 0.45F, 0.8F},
    {0.58F, 0.7F, 0.7F},
    {0.08F, 0.75F, 0.85F},
    {0.65F, 0.5F, 0.75F},
    {0.3F, 0.55F, 0.65F},
    {0.85F, 0.6F, 0.75F},
    {0.02F, 0.65F, 0.8F},
    {0.45F, 0.55F, 0.65F},
}};

constexpr Palette segmentColors = {{
    {0.38F, 0.7F, 0.8F},
    {0.95F, 0.6F, 0.85F},
    {0.55F, 0.6F, 0.8F},
    {0.12F, 0.7F, 0.9F},
    {0.75F, 0.5F, 0.85F},
    {0.58F, 0.8F, 0.75F},
    {0.08F, 0.8F, 0.9F},
    {0.65F, 0.55F, 0.8F},
    {0.3F, 0.5F, 0.75F},
    {0.85F, 0.7F, 0.8F},
    {0.45F, 0.6F, 0.7F},
    {0.02F, 0.7F, 0.85F},
}};

constexpr float fadePerRing = 0.08F;
constexpr float lowestOpacity = 0.5F;

QColor colorOf(const Palette& palette, int index, float opacity)
{
    const auto& [hue, saturation, brightness] =
        palette[static_cast<std::size_t>(index) % palette.size()];
    return QColor::fromHsvF(hue, saturation, brightness, opacity);
}

} // namespace

QColor blockColor(int index)
{
    return colorOf(blockColors, index, 1);
}

QColor segmentColor(int index, int depth)
{
    const float faded = 1 - fadePerRing * static_cast<float>(depth);
    return colorOf(segmentColors, index, std::max(faded, lowestOpacity));
}

} // namespace brivane
