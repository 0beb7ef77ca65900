#pragma once

#include <QPointF>
#include <QSize>

#include <cstdint>
#include <span>
#include <vector>

namespace brivane {

/// Where each pixel of a ring lies in it. That is most of the work of painting one and has nothing
/// to do with what is painted, so it is done once for many pictures.
///
/// The band is a number of hoops, narrow enough for a pixel to be as wide an angle at one side of a
/// hoop as at the other. Each hoop is cut into cells along the circle, from twelve o'clock on, and
/// a pixel lies in one of them. The cells of all hoops are counted through.
class RingMap {
public:
    /// Lengths are pixels.
    struct Shape {
        QSize image;
        QPointF center;
        float inner = 0;
        float outer = 0;
        float halfStroke = 0; ///< of the lines along both rims

        bool operator==(const Shape&) const = default;
    };
    struct Hoop {
        float radius = 0; ///< in its middle
        int firstCell = 0;
        int cells = 0;
    };
    /// Pixels of one line, one after the other.
    struct Run {
        int line = 0;
        int first = 0;
        std::span<const std::uint32_t> cells; ///< of each
    };
    /// A pixel so near to a rim that it is not like its cell.
    struct RimPixel {
        int x = 0;
        int y = 0;
        std::uint32_t cell = 0;
        float radius = 0;
    };

    /// Becomes the map of `shape`; costs nothing when it is that already.
    void fit(const Shape& shape);

    [[nodiscard]] const Shape& shape() const { return m_shape; }
    [[nodiscard]] const std::vector<Hoop>& hoops() const { return m_hoops; }
    /// All pixels that the ring touches; those at the rims are among them.
    [[nodiscard]] const std::vector<Run>& runs() const { return m_runs; }
    [[nodiscard]] const std::vector<RimPixel>& rims() const { return m_rims; }

private:
    void addHoops();
    void addLine(int y);
    void addRun(int y, int first, int end);

    Shape m_shape;
    std::vector<Hoop> m_hoops;
    std::vector<Run> m_runs;
    std::vector<RimPixel> m_rims;
    std::vector<std::uint32_t> m_cells; ///< of the pixels of all runs
    std::vector<float> m_radii;         ///< of a run's pixels, while it is made
    std::vector<float> m_turns;         ///< of the same, where each lies around the middle
};

} // namespace brivane
