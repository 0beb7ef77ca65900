#include "demo/DemoPictures.h"

#include <QBuffer>
#include <QColor>
#include <QImage>

#include <cmath>
#include <random>

namespace brivane {

namespace {

constexpr int width = 720;
constexpr int height = 480;

} // namespace

QByteArray demoPicture(unsigned scene, unsigned variant)
{
    std::mt19937 random(scene);
    const auto chance = [&] { return static_cast<double>(random() % 1000) / 1000.0; };
    const double sky = chance();
    const double land = chance();
    const double horizon = height * (0.35 + 0.3 * chance());
    const double hills = 40 + 60 * chance();
    const double wave = 90 + 160 * chance();
    const double light = 1.0 - 0.04 * variant;
    const int shift = static_cast<int>(variant) * 5;

    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const double edge = horizon + hills * std::sin((x + shift) / wave);
            const bool isSky = y < edge;
            const double depth = isSky ? y / edge : (y - edge) / (height - edge);
            // Grain, as a camera has it; it also gives the file a camera's size.
            const double grain = static_cast<double>(random() % 100) / 1000.0;
            const double value =
                light * (isSky ? 0.55 + 0.35 * depth : 0.65 - 0.45 * depth) + grain;
            line[x] = QColor::fromHsvF(static_cast<float>(isSky ? sky : land),
                                       static_cast<float>(isSky ? 0.55 - 0.3 * depth : 0.5),
                                       static_cast<float>(std::min(value, 1.0)))
                          .rgb();
        }
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPG", 88);
    return bytes;
}

} // namespace brivane
