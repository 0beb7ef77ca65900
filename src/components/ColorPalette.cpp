#include "components/ColorPalette.h"

#include <cmath>

namespace brivane {

namespace {

double luminance(const QColor& color)
{
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    const QColor rgb = color.toRgb();
    return 0.2126 * linear(rgb.redF()) + 0.7152 * linear(rgb.greenF()) +
           0.0722 * linear(rgb.blueF());
}

} // namespace

QColor ColorPalette::sidebarBackground()
{
    return QColor::fromRgbF(0.055F, 0.055F, 0.09F);
}

QColor ColorPalette::surface()
{
    return QColor::fromRgbF(0.08F, 0.09F, 0.15F);
}

QColor ColorPalette::cardBackground()
{
    return QColor::fromRgbF(0.09F, 0.1F, 0.16F);
}

QColor ColorPalette::surfaceLight()
{
    return QColor::fromRgbF(0.1F, 0.12F, 0.19F);
}

QColor ColorPalette::subtleText()
{
    return QColor::fromRgbF(0.4F, 0.45F, 0.58F);
}

QColor ColorPalette::secondaryText()
{
    return QColor::fromRgbF(0.58F, 0.63F, 0.74F);
}

QColor ColorPalette::primaryText()
{
    return QColor::fromRgbF(0.9F, 0.92F, 0.96F);
}

QColor ColorPalette::accent()
{
    return QColor::fromHsvF(0.58F, 0.7F, 0.85F);
}

QColor ColorPalette::danger()
{
    return QColor::fromHsvF(0.0F, 0.7F, 0.85F);
}

QColor ColorPalette::warning()
{
    return QColor::fromHsvF(0.1F, 0.8F, 0.9F);
}

QColor ColorPalette::success()
{
    return QColor::fromHsvF(0.35F, 0.7F, 0.75F);
}

QColor ColorPalette::windowBackground()
{
    return QColor::fromRgbF(0.06F, 0.06F, 0.1F);
}

QColor ColorPalette::hairline()
{
    return QColor::fromRgbF(1.0F, 1.0F, 1.0F, 0.07F);
}

QColor ColorPalette::hairlineStrong()
{
    return QColor::fromRgbF(1.0F, 1.0F, 1.0F, 0.14F);
}

QColor ColorPalette::blue()
{
    return {10, 132, 255};
}

QColor ColorPalette::brown()
{
    return {172, 142, 104};
}

QColor ColorPalette::cyan()
{
    return {100, 210, 255};
}

QColor ColorPalette::gray()
{
    return {142, 142, 147};
}

QColor ColorPalette::green()
{
    return {48, 209, 88};
}

QColor ColorPalette::indigo()
{
    return {94, 92, 230};
}

QColor ColorPalette::mint()
{
    return {102, 212, 207};
}

QColor ColorPalette::orange()
{
    return {255, 159, 10};
}

QColor ColorPalette::pink()
{
    return {255, 55, 95};
}

QColor ColorPalette::purple()
{
    return {191, 90, 242};
}

QColor ColorPalette::red()
{
    return {255, 69, 58};
}

QColor ColorPalette::teal()
{
    return {64, 200, 224};
}

QColor ColorPalette::yellow()
{
    return {255, 214, 10};
}

QColor ColorPalette::usageColor(double fraction)
{
    if (fraction > 0.9)
        return danger();
    return fraction > 0.75 ? warning() : accent();
}

QColor ColorPalette::textOn(const QColor& color)
{
    // Contrast is (lighter + 0.05) / (darker + 0.05) of the relative luminances.
    const double ground = luminance(color) + 0.05;
    const bool white = 1.05 / ground >= ground / 0.05;
    return white ? Qt::white : Qt::black;
}

QColor ColorPalette::faded(const QColor& color, double opacity)
{
    QColor result = color;
    result.setAlphaF(static_cast<float>(opacity));
    return result;
}

QColor ColorPalette::lightened(const QColor& color, double amount)
{
    const auto mix = [part = static_cast<float>(amount)](float channel) {
        return channel + (1.0F - channel) * part;
    };
    const QColor rgb = color.toRgb();
    return QColor::fromRgbF(mix(rgb.redF()), mix(rgb.greenF()), mix(rgb.blueF()), rgb.alphaF());
}

} // namespace brivane
