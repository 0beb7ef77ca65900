#include "scanner/FileNodes.h"
#include "scanner/charts/SunburstFrame.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

using namespace brivane;
using namespace brivane::testing;

namespace {

using Segments = std::vector<SunburstSegmentData>;

/// What all arcs of the innermost ring take together; it looks into no node.
double sweepSum(const std::vector<SizedNode>& children, std::uint64_t parentSize)
{
    double sum = 0;
    for (const auto& segment : SunburstLayout().buildSegments(children, parentSize))
        sum += segment.sweepAngle;
    return sum;
}

QPointF pointAt(const QSizeF& frame, double radius, double degrees)
{
    const double angle = degrees * std::acos(-1.0) / 180;
    return {frame.width() / 2 + radius * std::cos(angle),
            frame.height() / 2 + radius * std::sin(angle)};
}

/// The segment under a polar point, looked for in each, in all turns that its arc may take.
std::optional<std::size_t> naiveHit(const SunburstFrame& frame, const Segments& segments,
                                    double radius, double angle)
{
    std::optional<std::size_t> last;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        const double start = segments[i].startAngle;
        const double end = frame.revealedEnd(segments[i]);
        const double tested = end > 270 && angle < start ? angle + 360 : angle;
        const double inner = 60 + 120 * segments[i].depth;
        const double outer = std::min(inner + 119, 290.0);
        if (radius >= inner && radius <= outer && tested >= start && tested <= end)
            last = i;
    }
    return last;
}

/// Three levels below the root with directories, files and empty ones among them.
std::shared_ptr<FileTree> randomTree(std::mt19937& random)
{
    auto tree = FileTree::create("/shown");
    std::vector<FileNode*> level{tree->root()};
    for (int depth = 0; depth < 3; ++depth) {
        std::vector<FileNode*> next;
        for (FileNode* parent : level) {
            for (auto count = random() % 4; count > 0; --count)
                next.push_back(addFolder(parent, "n"));
            for (auto count = random() % 4; count > 0; --count)
                addFile(parent, "n", (1U << random() % 20) / 2);
        }
        level = std::move(next);
    }
    tree->root()->recalculateSize();
    return tree;
}

/// The rings inside the arc `parent` at `depth`, from `at` on, checked from the sizes alone.
std::size_t checkRing(const Segments& segments, std::size_t at, const FileNode& directory,
                      int depth, double start, double sweep, int color)
{
    const std::vector<SizedNode> nodes = childrenBySize(directory);
    if (depth > 2 || nodes.empty() || sweep <= 0.5)
        return at;
    const double usable = std::max(0.0, sweep - 0.8 * static_cast<double>(nodes.size()));
    std::vector<double> sweeps;
    double sum = 0;
    for (const SizedNode& node : nodes) {
        const double share = static_cast<double>(node.size) / static_cast<double>(directory.size());
        sweeps.push_back(std::max(2.0, usable * share));
        sum += sweeps.back();
    }
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const double own = usable > 0 && sum > usable ? sweeps[i] * usable / sum : sweeps[i];
        const SunburstSegmentData segment = at < segments.size() ? segments[at] : Segments(1)[0];
        const int ownColor = static_cast<int>(i) + color;
        EXPECT_EQ(std::tie(segment.node, segment.depth, segment.colorIndex),
                  std::tie(nodes[i].node, depth, ownColor));
        EXPECT_NEAR(segment.startAngle, start, 1e-9);
        EXPECT_NEAR(segment.sweepAngle, own, 1e-9);
        at = checkRing(segments, at + 1, *nodes[i].node, depth + 1, start, own, ownColor);
        start += own + 0.8;
    }
    return at;
}

} // namespace

TEST(Sunburst, RingsFollowTheSizesAtEveryDepth)
{
    std::mt19937 random(3);
    for (int round = 0; round < 300; ++round) {
        const auto tree = randomTree(random);
        const auto children = childrenBySize(*tree->root());
        const Segments segments =
            SunburstLayout{.maxDepth = 2}.buildSegments(children, tree->root()->size());
        EXPECT_EQ(checkRing(segments, 0, *tree->root(), 0, -90, 360, 0), segments.size());
        EXPECT_EQ(SunburstLayout().buildSegments(children, tree->root()->size()).size(),
                  children.size());
        ASSERT_FALSE(HasFailure()) << "round " << round;
    }
}

TEST(Sunburst, ArcsAndGapsFillTheTurnWhateverTheParentClaimsUntilGapsAloneAreTooMany)
{
    const SizedNode seven{nullptr, 7};
    EXPECT_NEAR(sweepSum({seven, seven}, 0), 358.4, 1e-9);
    EXPECT_NEAR(sweepSum({seven, seven}, 9), 358.4, 1e-9);
    EXPECT_NEAR(sweepSum({seven, seven}, 28), 179.2, 1e-9);
    EXPECT_NEAR(sweepSum(std::vector(449, seven), 449 * 7), 0.8, 1e-9);
    EXPECT_NEAR(sweepSum(std::vector(450, seven), 450 * 7), 900, 1e-9);
}

TEST(Sunburst, AnyPointHitsTheLastSegmentThatHoldsItAlsoPastAFullTurn)
{
    const QSizeF size(600, 800);
    std::mt19937 random(5);
    std::uniform_real_distribution<double> angles(-90, 270);
    std::uniform_real_distribution<double> radii(0, 320);
    for (const std::size_t count : {3U, 100U, 449U, 450U, 2000U}) {
        std::vector<SizedNode> children(count, {nullptr, 1});
        children.front().size = count;
        Segments segments = SunburstLayout().buildSegments(children, 2 * count);
        for (std::size_t i = 1; i < segments.size(); i += 2)
            segments[i].depth = 1;
        for (const double progress : {0.3, 1.0}) {
            const SunburstFrame frame(size, {progress, 1});
            for (int i = 0; i < 500; ++i) {
                const double radius = radii(random);
                const double angle = angles(random);
                EXPECT_EQ(frame.segmentAt(segments, pointAt(size, radius, angle)),
                          naiveHit(frame, segments, radius, angle))
                    << count << " " << radius << " " << angle;
            }
        }
    }
}

TEST(Sunburst, WhatHasNoRoomOrHasNotComeIsNotDrawn)
{
    const SunburstSegmentData inner{nullptr, 10, 20, 0, 0};
    const SunburstSegmentData outer{nullptr, 10, 20, 1, 0};
    const SunburstFrame small({1000, 300}, {1, 1});
    EXPECT_TRUE(small.arc(inner));
    EXPECT_FALSE(small.arc(outer));
    EXPECT_FALSE(SunburstFrame({600, 600}, {0.0005}).arc(inner));
    const SunburstFrame tight({600, 600}, {1}, {.innerRadius = 2});
    EXPECT_EQ(tight.hoveredArc(inner)->innerRadius, 1);
}
