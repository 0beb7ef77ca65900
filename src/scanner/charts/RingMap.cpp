#include "scanner/charts/RingMap.h"

#include <QtMath>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace brivane {

namespace {

constexpr auto pi = std::numbers::pi_v<float>;
constexpr float fullTurn = 2 * pi;
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

} // namespace

void RingMap::fit(const Shape& shape)
{
    if (shape == m_shape)
        return;
    m_shape = shape;
    m_hoops.clear();
    m_runs.clear();
    m_rims.clear();
    m_cells.clear();
    addHoops();
    for (int y = 0; y < shape.image.height(); ++y)
        addLine(y);
    // The list of cells lies still from now on.
    std::span<const std::uint32_t> rest = m_cells;
    for (Run& run : m_runs) {
        run.cells = rest.first(run.cells.size());
        rest = rest.subspan(run.cells.size());
    }
}

void RingMap::addHoops()
{
    const float width = (m_shape.outer - m_shape.inner) / hoopCount;
    int first = 0;
    for (int i = 0; i < hoopCount; ++i) {
        const float radius = m_shape.inner + (static_cast<float>(i) + 0.5F) * width;
        const int cells = qCeil(radius * fullTurn * cellsPerPixel);
        m_hoops.push_back({radius, first, cells});
        first += cells;
    }
}

void RingMap::addLine(int y)
{
    const float reach = m_shape.outer + m_shape.halfStroke + 1;
    const float hole = m_shape.inner - m_shape.halfStroke - 1;
    const auto centerX = static_cast<float>(m_shape.center.x());
    const float dy = static_cast<float>(y) + 0.5F - static_cast<float>(m_shape.center.y());
    if (std::abs(dy) >= reach)
        return;
    const auto run = [&](float from, float to) {
        const int first = std::max(0, static_cast<int>(centerX + from));
        const int end = std::min(m_shape.image.width(), static_cast<int>(centerX + to) + 1);
        if (first < end)
            addRun(y, first, end);
    };
    const float toEdge = std::sqrt(reach * reach - dy * dy);
    if (std::abs(dy) >= hole)
        return run(-toEdge, toEdge);
    const float toHole = std::sqrt(hole * hole - dy * dy);
    run(-toEdge, -toHole);
    run(toHole, toEdge);
}

void RingMap::addRun(int y, int first, int end)
{
    const auto count = static_cast<std::size_t>(end - first);
    const float dx = static_cast<float>(first) + 0.5F - static_cast<float>(m_shape.center.x());
    const float dy = static_cast<float>(y) + 0.5F - static_cast<float>(m_shape.center.y());
    m_radii.resize(count);
    m_turns.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        const float x = dx + static_cast<float>(i);
        m_radii[i] = std::sqrt(x * x + dy * dy);
        m_turns[i] = turnOf(x, dy);
    }
    const float perHoop = hoopCount / (m_shape.outer - m_shape.inner);
    const float lowest = m_shape.inner + m_shape.halfStroke + 0.5F;
    const float highest = m_shape.outer - m_shape.halfStroke - 0.5F;
    for (std::size_t i = 0; i < count; ++i) {
        const float radius = m_radii[i];
        const int number = static_cast<int>((radius - m_shape.inner) * perHoop);
        const Hoop& hoop = m_hoops[static_cast<std::size_t>(std::clamp(number, 0, hoopCount - 1))];
        const int place = static_cast<int>(m_turns[i] * static_cast<float>(hoop.cells));
        const auto cell =
            static_cast<std::uint32_t>(hoop.firstCell + std::min(place, hoop.cells - 1));
        m_cells.push_back(cell);
        if (radius < lowest || radius > highest)
            m_rims.push_back({first + static_cast<int>(i), y, cell, radius});
    }
    m_runs.push_back({y, first, std::span(m_cells).last(count)});
}

} // namespace brivane
