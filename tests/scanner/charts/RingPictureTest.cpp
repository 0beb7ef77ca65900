#include "scanner/charts/RingPicture.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <functional>
#include <numeric>
#include <random>

#include <gtest/gtest.h>

using namespace brivane;

namespace {

constexpr QSize pageSize(300, 260);

RingBand band(double density)
{
    return {QPointF(150.3, 130.8) / density, 50 / density, 120 / density, QColor(255, 255, 255, 25),
            1 / density};
}

/// Arcs with gaps between them all round, each drawn as far as it is revealed.
std::vector<RingArc> randomArcs(std::mt19937& random, int count, double reveal)
{
    std::vector<double> weights;
    for (int i = 0; i < count; ++i)
        weights.push_back(static_cast<double>(1 + random() % 30));
    const double sum = std::accumulate(weights.begin(), weights.end(), 0.0);
    const double gap = 0.8;
    std::vector<RingArc> arcs;
    double at = -90;
    for (const double weight : weights) {
        const double sweep = (360 - gap * count) * weight / sum;
        arcs.push_back({at, at + sweep * reveal,
                        QColor::fromHsv(static_cast<int>(random() % 360), 255, 255,
                                        static_cast<int>(60 + random() % 190))});
        at += sweep + gap;
    }
    return arcs;
}

QImage page(double density, const std::function<void(QPainter&)>& paint)
{
    QImage image(pageSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(density, density);
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter);
    return image;
}

/// The same with a path for each arc.
void paintPaths(QPainter& painter, const RingBand& band, const std::vector<RingArc>& arcs)
{
    const auto circle = [&](double radius) {
        return QRectF(band.center.x() - radius, band.center.y() - radius, 2 * radius, 2 * radius);
    };
    std::vector<QPainterPath> paths;
    for (const RingArc& arc : arcs) {
        const double sweep = arc.endAngle - arc.startAngle;
        QPainterPath& path = paths.emplace_back();
        path.arcMoveTo(circle(band.outerRadius), -arc.startAngle);
        path.arcTo(circle(band.outerRadius), -arc.startAngle, -sweep);
        path.arcTo(circle(band.innerRadius), -arc.endAngle, sweep);
        path.closeSubpath();
        painter.fillPath(path, arc.fill);
    }
    for (const QPainterPath& path : paths)
        painter.strokePath(path, QPen(band.strokeColor, band.strokeWidth));
}

/// How two pictures differ in the bytes of their pixels.
struct Difference {
    /// The mean of a square of 3 pixels, where it is largest: so that what one of them rounds
    /// otherwise along an edge does not count.
    double worst = 0;
    /// The mean of all, of either sign.
    double mean = 0;
};

Difference compare(const QImage& one, const QImage& other)
{
    const auto channel = [](const QImage& image, int x, int y, int shift) {
        return static_cast<int>(image.pixel(x, y) >> shift & 255);
    };
    Difference result;
    for (int y = 1; y + 1 < one.height(); ++y) {
        for (int x = 1; x + 1 < one.width(); ++x) {
            for (const int shift : {0, 8, 16, 24}) {
                int sum = 0;
                for (int i = 0; i < 9; ++i)
                    sum += channel(one, x - 1 + i % 3, y - 1 + i / 3, shift) -
                           channel(other, x - 1 + i % 3, y - 1 + i / 3, shift);
                result.worst = std::max(result.worst, std::abs(sum) / 9.0);
                result.mean += sum / (9 * 4.0 * one.width() * one.height());
            }
        }
    }
    return result;
}

} // namespace

TEST(RingPicture, LooksAsAPathForEachArcDoes)
{
    std::mt19937 random(7);
    RingPicture picture; // the same for rings of any size
    for (const auto& [density, reveal] :
         {std::pair(1.0, 1.0), {1.0, 0.5}, {2.0, 1.0}, {2.0, 0.5}}) {
        for (const int count : {0, 1, 2, 7, 40, 150}) {
            const std::vector<RingArc> arcs = randomArcs(random, count, reveal);
            const RingBand ring = band(density);
            const Difference difference = compare(
                page(density, [&](QPainter& painter) { picture.paint(painter, ring, arcs); }),
                page(density, [&](QPainter& painter) { paintPaths(painter, ring, arcs); }));
            const auto what = testing::Message() << count << " arcs, revealed by " << reveal
                                                 << ", at density " << density;
            EXPECT_LT(difference.worst, 30) << what;
            EXPECT_LT(std::abs(difference.mean), 0.3) << what;
        }
    }
}
