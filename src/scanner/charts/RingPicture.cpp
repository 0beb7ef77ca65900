#include "scanner/charts/RingPicture.h"

#include "scanner/charts/DeviceImage.h"

#include <QtMath>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace brivane {

namespace {

constexpr auto pi = std::numbers::pi_v<float>;
constexpr float fullTurn = 2 * pi;
constexpr double firstAngle = -90; ///< degrees
constexpr float cellsPerPixel = 3;
constexpr int hoopCount = 8;

/// The angle of a place around the middle, in turns from twelve o'clock on, right to a millionth.
/// Without a branch, so that the compiler does several at a time.
inline float turnOf(float dx, float dy)
{
    const float x = std::abs(dx);
    const float y = std::abs(dy);
    const float slope = std::min(x, y) / std::max(std::max(x, y), 1e-6F);
    const float square = slope * slope;
    // The polynomial that comes nearest to the arc tangent from 0 to 1.
    float angle = -0.01172120F;
    angle = angle * square + 0.05265332F;
    angle = angle * square - 0.11643287F;
    angle = angle * square + 0.19354346F;
    angle = angle * square - 0.33262347F;
    angle = angle * square + 0.99997726F;
    angle *= slope;
    // All sides are worked out, and one is taken.
    const float steep = pi / 2 - angle;
    angle = y > x ? steep : angle;
    const float left = pi - angle;
    angle = dx < 0 ? left : angle;
    const float fromTop = (dy < 0 ? -angle : angle) + pi / 2;
    const float turned = fromTop + fullTurn;
    return (fromTop < 0 ? turned : fromTop) / fullTurn;
}

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

/// A ring on its way into an image. Lengths are pixels of the image.
///
/// A pixel counts as the piece of the band that is one pixel long and one wide around its centre.
/// What an arc or a line covers of that is the product of what it covers along the circle and
/// across the band. Along the circle it is looked up: the band is a number of hoops, narrow enough
/// for a pixel to be as wide an angle at one side of a hoop as at the other, and each has a table.
class Raster {
public:
    Raster(const RingBand& band, const QPointF& center, float density,
           std::span<const RingArc> arcs)
        : m_centerX(static_cast<float>(center.x()))
        , m_centerY(static_cast<float>(center.y()))
        , m_inner(static_cast<float>(band.innerRadius) * density)
        , m_outer(static_cast<float>(band.outerRadius) * density)
        , m_halfStroke(static_cast<float>(band.strokeWidth) * density / 2)
        , m_stroke(Cover::of(band.strokeColor))
    {
        const Circle circle(arcs, qCeil(m_outer * fullTurn * cellsPerPixel),
                            1.5F / (fullTurn * std::max(1.0F, m_inner)));
        for (int i = 0; i < hoopCount; ++i)
            addHoop(circle,
                    m_inner + (static_cast<float>(i) + 0.5F) * (m_outer - m_inner) / hoopCount);
    }

    void paint(QImage& image)
    {
        m_radii.resize(static_cast<std::size_t>(image.width()));
        m_turns.resize(m_radii.size());
        const float reach = m_outer + m_halfStroke + 1;
        const float hole = m_inner - m_halfStroke - 1;
        for (int y = 0; y < image.height(); ++y) {
            const float dy = static_cast<float>(y) + 0.5F - m_centerY;
            if (std::abs(dy) >= reach)
                continue;
            auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
            const auto run = [&](float from, float to) {
                const int first = std::max(0, static_cast<int>(m_centerX + from));
                const int end = std::min(image.width(), static_cast<int>(m_centerX + to) + 1);
                if (first < end)
                    paintRun(line + first, end - first,
                             static_cast<float>(first) + 0.5F - m_centerX, dy);
            };
            const float toEdge = std::sqrt(reach * reach - dy * dy);
            if (std::abs(dy) >= hole) {
                run(-toEdge, toEdge);
                continue;
            }
            const float toHole = std::sqrt(hole * hole - dy * dy);
            run(-toEdge, -toHole);
            run(toHole, toEdge);
        }
    }

private:
    /// Where the cells of a circle at one distance from the middle are, and how many.
    struct Hoop {
        int first = 0;
        int last = 0;
        float count = 0;
    };

    void addHoop(const Circle& circle, float radius)
    {
        const float length = radius * fullTurn;
        const int count = qCeil(length * cellsPerPixel);
        const auto first = static_cast<int>(m_covers.size());
        m_hoops.push_back({first, first + count - 1, static_cast<float>(count)});
        for (int i = 0; i < count; ++i) {
            const float place = (static_cast<float>(i) + 0.5F) / static_cast<float>(count);
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

    /// `count` pixels of a line from `dx` on.
    void paintRun(QRgb* line, int count, float dx, float dy)
    {
        float* const radii = m_radii.data();
        float* const turns = m_turns.data();
        for (int i = 0; i < count; ++i) {
            const float x = dx + static_cast<float>(i);
            radii[i] = std::sqrt(x * x + dy * dy);
            turns[i] = turnOf(x, dy);
        }
        const Hoop* const hoops = m_hoops.data();
        const QRgb* const cells = m_pixels.data();
        const float inner = m_inner;
        const float perHoop = hoopCount / (m_outer - m_inner);
        const float lowest = m_inner + m_halfStroke + 0.5F;
        const float highest = m_outer - m_halfStroke - 0.5F;
        for (int i = 0; i < count; ++i) {
            const auto number = static_cast<int>((radii[i] - inner) * perHoop);
            const Hoop& hoop = hoops[std::clamp(number, 0, hoopCount - 1)];
            const int cell =
                std::min(hoop.first + static_cast<int>(turns[i] * hoop.count), hoop.last);
            if (radii[i] >= lowest && radii[i] <= highest)
                line[i] = cells[cell];
            else
                line[i] = rimPixel(m_covers[static_cast<std::size_t>(cell)], radii[i]);
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

    float m_centerX;
    float m_centerY;
    float m_inner;
    float m_outer;
    float m_halfStroke;
    Cover m_stroke;
    std::vector<Hoop> m_hoops;
    std::vector<Cover> m_covers; ///< of the cells of all hoops
    std::vector<QRgb> m_pixels;  ///< of the same, away from the rims
    std::vector<float> m_radii;  ///< of a line's pixels
    std::vector<float> m_turns;  ///< of the same, where each lies around the middle
};

} // namespace

void paintRing(QPainter& painter, const RingBand& band, std::span<const RingArc> arcs)
{
    if (arcs.empty() || band.innerRadius >= band.outerRadius)
        return;
    const double reach = band.outerRadius + band.strokeWidth / 2 + 1;
    const QRectF around(band.center.x() - reach, band.center.y() - reach, 2 * reach, 2 * reach);
    paintDeviceImage(painter, around, [&](QImage& image, const QTransform& toImage) {
        Raster raster(band, toImage.map(band.center), static_cast<float>(toImage.m11()), arcs);
        raster.paint(image);
    });
}

} // namespace brivane
