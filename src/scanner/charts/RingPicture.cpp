#include "scanner/charts/RingPicture.h"

#include "scanner/charts/DeviceImage.h"

#include <QtMath>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace brivane {

namespace {

constexpr float fullTurn = 2 * std::numbers::pi_v<float>;
constexpr double firstAngle = -90; ///< degrees
constexpr float cellsPerPixel = 3;

/// How much of the stretch from `low` to `high` lies between `from` and `to`.
float overlap(float low, float high, float from, float to)
{
    return std::max(0.0F, std::min(high, to) - std::max(low, from));
}

/// What covers a stretch of the circle: the colours in it, each with its alpha multiplied in, how
/// much of it lies in an arc, and how many ends of arcs there are in a length.
struct Cover {
    float red = 0;
    float green = 0;
    float blue = 0;
    float alpha = 0;
    float arcs = 0;
    float ends = 0;

    static Cover of(const QColor& color)
    {
        const float alpha = color.alphaF();
        return {color.redF() * alpha, color.greenF() * alpha, color.blueF() * alpha, alpha, 1, 0};
    }
    Cover& scale(float factor)
    {
        red *= factor;
        green *= factor;
        blue *= factor;
        alpha *= factor;
        arcs *= factor;
        ends *= factor;
        return *this;
    }
    Cover& add(const Cover& other, float factor = 1)
    {
        red += other.red * factor;
        green += other.green * factor;
        blue += other.blue * factor;
        alpha += other.alpha * factor;
        arcs += other.arcs * factor;
        ends += other.ends * factor;
        return *this;
    }
    [[nodiscard]] QRgb pixel() const
    {
        const auto byte = [](float value) {
            return static_cast<int>(std::min(value, 1.0F) * 255 + 0.5F);
        };
        return qRgba(byte(red), byte(green), byte(blue), byte(alpha));
    }
};

/// The circle cut into cells, so small that the eye does not see how an edge lies in one, and what
/// covers it summed up from cell to cell: the cover of any stretch is the difference of two sums.
/// Places are in turns from twelve o'clock on.
class Circle {
public:
    /// Nobody asks for more than `longestStretch` turns.
    Circle(std::span<const RingArc> arcs, int cellCount, float longestStretch)
        : m_cellCount(static_cast<float>(cellCount))
        , m_margin(static_cast<int>(std::ceil(longestStretch * m_cellCount)) + 2)
    {
        std::vector<Cover> cells(static_cast<std::size_t>(cellCount));
        for (const RingArc& arc : arcs)
            lay(arc, cells);
        // Twelve o'clock lies in the middle of a stretch as well.
        m_sums.reserve(cells.size() + 2 * static_cast<std::size_t>(m_margin) + 1);
        m_sums.emplace_back();
        for (int i = -m_margin; i < cellCount + m_margin; ++i) {
            Cover sum = m_sums.back();
            m_sums.push_back(sum.add(cells[static_cast<std::size_t>((i + cellCount) % cellCount)]));
        }
    }

    /// The mean of the stretch around `place`.
    [[nodiscard]] Cover around(float place, float stretch) const
    {
        const float middle = place * m_cellCount + static_cast<float>(m_margin);
        const float half = stretch * m_cellCount / 2;
        Cover cover = sumAt(middle + half);
        cover.add(sumAt(middle - half), -1);
        return cover.scale(1 / (2 * half));
    }

private:
    void lay(const RingArc& arc, std::vector<Cover>& cells) const
    {
        const auto cellAt = [&](double degrees) {
            const auto place = static_cast<float>((degrees - firstAngle) / 360);
            return std::clamp(place * m_cellCount, 0.0F, std::nextafter(m_cellCount, 0.0F));
        };
        const float start = cellAt(arc.startAngle);
        const float end = cellAt(arc.endAngle);
        const Cover fill = Cover::of(arc.fill);
        for (auto i = static_cast<std::size_t>(start); i <= static_cast<std::size_t>(end); ++i) {
            const auto cell = static_cast<float>(i);
            cells[i].add(fill, overlap(cell, cell + 1, start, end));
        }
        cells[static_cast<std::size_t>(start)].ends += m_cellCount;
        cells[static_cast<std::size_t>(end)].ends += m_cellCount;
    }

    [[nodiscard]] Cover sumAt(float cell) const
    {
        const auto whole = static_cast<std::size_t>(cell);
        const float part = cell - static_cast<float>(whole);
        Cover sum;
        return sum.add(m_sums[whole], 1 - part).add(m_sums[whole + 1], part);
    }

    float m_cellCount;
    int m_margin;              ///< cells before and behind the turn
    std::vector<Cover> m_sums; ///< of all cells before, from the margin's first on
};

/// The colours of a ring, for one picture of it. Lengths are pixels of the image.
///
/// A pixel counts as the piece of the band that is one pixel long and one wide around its centre.
/// What an arc or a line covers of that is the product of what it covers along the circle and
/// across the band. Along the circle it is looked up in the table of its cell.
class Raster {
public:
    Raster(const RingMap& map, const QColor& stroke, std::span<const RingArc> arcs)
        : m_map(map)
        , m_inner(map.shape().inner)
        , m_outer(map.shape().outer)
        , m_halfStroke(map.shape().halfStroke)
        , m_stroke(Cover::of(stroke))
    {
        const Circle circle(arcs, qCeil(m_outer * fullTurn * cellsPerPixel),
                            1.5F / (fullTurn * std::max(1.0F, m_inner)));
        for (const RingMap::Hoop& hoop : map.hoops())
            addHoop(circle, hoop);
    }

    void paint(QImage& image) const
    {
        const QRgb* const pixels = m_pixels.data();
        for (const RingMap::Run& run : m_map.runs()) {
            auto* pixel = reinterpret_cast<QRgb*>(image.scanLine(run.line)) + run.first;
            for (const std::uint32_t cell : run.cells)
                *pixel++ = pixels[cell];
        }
        for (const RingMap::RimPixel& rim : m_map.rims())
            reinterpret_cast<QRgb*>(image.scanLine(rim.y))[rim.x] =
                rimPixel(m_covers[rim.cell], rim.radius);
    }

private:
    void addHoop(const Circle& circle, const RingMap::Hoop& hoop)
    {
        const float length = hoop.radius * fullTurn;
        for (int i = 0; i < hoop.cells; ++i) {
            const float place = (static_cast<float>(i) + 0.5F) / static_cast<float>(hoop.cells);
            // Across the diagonal a pixel is wide in the middle and narrow at its ends.
            const float angle = place * fullTurn;
            const float sides[]{std::abs(std::sin(angle)), std::abs(std::cos(angle))};
            const float wide = std::max(sides[0], sides[1]) / length;
            const float shift = std::min(sides[0], sides[1]) / length / 4;
            Cover cover = circle.around(place - shift, wide);
            cover.add(circle.around(place + shift, wide)).scale(0.5F);
            cover.ends /= length; // from a turn to a pixel
            m_covers.push_back(cover);
            m_pixels.push_back(pixelOf(m_covers.back(), 1, 1, 0));
        }
    }

    [[nodiscard]] QRgb rimPixel(const Cover& cover, float radius) const
    {
        const float low = radius - 0.5F;
        const float high = radius + 0.5F;
        const auto lines = [&](float rim) {
            return overlap(low, high, rim - m_halfStroke, rim + m_halfStroke);
        };
        return pixelOf(cover, overlap(low, high, m_inner, m_outer),
                       overlap(low, high, m_inner - m_halfStroke, m_outer + m_halfStroke),
                       lines(m_inner) + lines(m_outer));
    }

    /// `fill`, `ends` and `rims` are what the pixel meets across the band of an arc, of the lines
    /// at its ends and of those along the rims.
    [[nodiscard]] QRgb pixelOf(const Cover& cover, float fill, float ends, float rims) const
    {
        const float stroke =
            std::min(1.0F, cover.ends * 2 * m_halfStroke * ends + cover.arcs * rims);
        Cover light = cover;
        light.scale(fill * (1 - stroke * m_stroke.alpha));
        return light.add(m_stroke, stroke).pixel();
    }

    const RingMap& m_map;
    float m_inner;
    float m_outer;
    float m_halfStroke;
    Cover m_stroke;
    std::vector<Cover> m_covers; ///< of the cells of all hoops
    std::vector<QRgb> m_pixels;  ///< of the same, away from the rims
};

} // namespace

void RingPicture::paint(QPainter& painter, const RingBand& band, std::span<const RingArc> arcs)
{
    if (arcs.empty() || band.innerRadius >= band.outerRadius)
        return;
    const double reach = band.outerRadius + band.strokeWidth / 2 + 1;
    const QRectF around(band.center.x() - reach, band.center.y() - reach, 2 * reach, 2 * reach);
    paintDeviceImage(painter, around, [&](QImage& image, const QTransform& toImage) {
        const auto pixels = [&](double length) {
            return static_cast<float>(length * toImage.m11());
        };
        m_map.fit({.image = image.size(),
                   .center = toImage.map(band.center),
                   .inner = pixels(band.innerRadius),
                   .outer = pixels(band.outerRadius),
                   .halfStroke = pixels(band.strokeWidth) / 2});
        Raster(m_map, band.strokeColor, arcs).paint(image);
    });
}

} // namespace brivane
