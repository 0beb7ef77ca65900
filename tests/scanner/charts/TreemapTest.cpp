#include "scanner/charts/Treemap.h"

#include "scanner/FileNodes.h"
#include "scanner/charts/TreemapBlock.h"

#include <cmath>
#include <limits>
#include <numeric>
#include <random>

#include <gmock/gmock.h>

using namespace brivane;
using namespace brivane::testing;

namespace {

using Sizes = std::vector<std::uint64_t>;

std::vector<ChartItem> itemsOf(const Sizes& sizes)
{
    std::vector<ChartItem> items(sizes.size());
    for (std::size_t i = 0; i < sizes.size(); ++i)
        items[i].size = sizes[i];
    return items;
}

std::shared_ptr<FileTree> directoryOf(const Sizes& sizes)
{
    auto tree = FileTree::create("/shown");
    for (const std::uint64_t size : sizes)
        addFile(tree->root(), "child", size);
    return tree;
}

/// Sizes of one of five kinds: equal, of two sorts, even, very uneven, with many zeros.
Sizes randomSizes(std::mt19937_64& random, std::size_t count, unsigned mostBits)
{
    Sizes sizes(count);
    const auto kind = random() % 5;
    for (std::uint64_t& size : sizes) {
        const std::uint64_t kinds[] = {7, 1 + random() % 2, 1 + random() % 1000,
                                       std::uint64_t{1} << random() % mostBits, random() % 3};
        size = kinds[kind];
    }
    return sizes;
}

double naiveWorst(std::span<const double> row, double side)
{
    const double thickness = std::accumulate(row.begin(), row.end(), 0.0) / side;
    if (!(thickness > 0))
        return std::numeric_limits<double>::infinity();
    double worst = 0;
    for (const double area : row) {
        if (const double length = area / thickness; length > 0)
            worst = std::max({worst, length / thickness, thickness / length});
    }
    return worst;
}

/// The slow way: each row is made and judged as a whole.
std::vector<QRectF> naiveSquarify(std::span<const double> areas, QRectF rect)
{
    std::vector<QRectF> rects;
    while (!areas.empty() && rect.width() > 0 && rect.height() > 0) {
        const double side = std::min(rect.width(), rect.height());
        std::size_t count = 1;
        while (count < areas.size() &&
               naiveWorst(areas.first(count + 1), side) <= naiveWorst(areas.first(count), side))
            ++count;
        const auto row = areas.first(count);
        const double sum = std::accumulate(row.begin(), row.end(), 0.0);
        const bool isTop = rect.width() < rect.height();
        QPointF corner = rect.topLeft();
        for (const double area : row) {
            const double length = side * area / std::max(sum, 0.001);
            const QSizeF size(length, sum / side);
            rects.emplace_back(corner, isTop ? size : size.transposed());
            corner += isTop ? QPointF(length, 0) : QPointF(0, length);
        }
        areas = areas.subspan(count);
        const QPointF step(isTop ? 0 : sum / side, isTop ? sum / side : 0);
        rect = {rect.x() + step.x(), rect.y() + step.y(), rect.width() - step.x(),
                rect.height() - step.y()};
    }
    rects.resize(rects.size() + areas.size());
    return rects;
}

bool isNear(const QRectF& a, const QRectF& b)
{
    const QPointF one = a.topLeft() - b.topLeft();
    const QPointF other = a.bottomRight() - b.bottomRight();
    return one.manhattanLength() + other.manhattanLength() <
           1e-9 * (std::abs(b.right()) + std::abs(b.bottom()) + 1);
}

/// Each block has its share, raised to the least one, in `rect`.
void expectFairAndFull(const Sizes& sizes, const std::vector<QRectF>& rects, const QRectF& rect)
{
    std::vector<double> shares(sizes.begin(), sizes.end());
    for (const double total = std::accumulate(shares.begin(), shares.end(), 0.0);
         double& share : shares)
        share = std::max(share / total, 0.008);
    const double sum = std::accumulate(shares.begin(), shares.end(), 0.0);
    const double area = rect.width() * rect.height();
    for (std::size_t i = 0; i < rects.size(); ++i) {
        EXPECT_NEAR(rects[i].width() * rects[i].height() / area, shares[i] / sum, 1e-9);
        EXPECT_TRUE(rect.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(rects[i]));
    }
}

} // namespace

TEST(Treemap, BeyondFortyNothingIsLostAndEqualSizesKeepTheirOrder)
{
    std::mt19937_64 random(1);
    for (const std::size_t count : {0U, 1U, 39U, 40U, 41U, 5000U}) {
        for (int round = 0; round < 20; ++round) {
            const Sizes sizes = randomSizes(random, count, 50);
            const auto tree = directoryOf(sizes);
            const std::vector<FileNode*> before = tree->root()->children();
            std::vector<FileNode*> expected = before;
            std::erase_if(expected, [](const FileNode* node) { return node->size() == 0; });
            std::ranges::stable_sort(expected, std::greater(), &FileNode::size);

            const auto items = displayItems(childrenBySize(*tree->root()));
            EXPECT_EQ(tree->root()->children(), before);
            const std::size_t singles = expected.size() > 40 ? 39 : expected.size();
            ASSERT_EQ(items.size(), expected.size() > 40 ? 40 : singles);
            std::uint64_t rest = std::accumulate(sizes.begin(), sizes.end(), std::uint64_t{0});
            for (std::size_t i = 0; i < items.size(); ++i) {
                EXPECT_EQ(items[i].colorIndex, static_cast<int>(i));
                EXPECT_EQ(items[i].node, i < singles ? expected[i] : nullptr);
                EXPECT_EQ(items[i].size, i < singles ? expected[i]->size() : rest);
                rest -= items[i].size;
            }
            EXPECT_EQ(rest, 0U);
        }
    }
}

TEST(Treemap, TheGroupIsNeverEnteredAndOwnsUpToBeingALowerBound)
{
    // Sparse files may claim so much that no sum can hold it.
    const auto tree = directoryOf(Sizes(42, UINT64_MAX));
    const auto whole = displayItems(childrenBySize(*tree->root())).back();
    EXPECT_EQ(whole.name(), u"Other (3 items)");
    EXPECT_EQ(whole.path(), u"__other__");
    EXPECT_EQ(whole.size, UINT64_MAX);
    EXPECT_TRUE(whole.isDirectory() && !whole.canDrillDown() && !whole.isIncomplete);
    tree->addIssue(tree->root()->children()[40], true, {});
    EXPECT_TRUE(displayItems(childrenBySize(*tree->root())).back().isIncomplete);
}

TEST(Treemap, BlocksFillAnyRectangleInProportionAndLieAsTheSlowWayLaysThem)
{
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> exponent(-2, 4);
    for (int round = 0; round < 3000; ++round) {
        const std::size_t counts[] = {1, 2, 39, 40, 41, 1 + random() % 40};
        const std::size_t count = round % 500 == 0 ? 5000 : counts[random() % 6];
        Sizes sizes = randomSizes(random, count, 60);
        const double width = std::pow(10, exponent(random));
        const double height = random() % 5 == 0 ? width : std::pow(10, exponent(random));
        const QRectF rect(exponent(random), exponent(random), width, height);
        // Rows below a thousandth of a square point are not stretched to their side.
        if (width * height > 10 && std::ranges::count(sizes, 0U) < std::ssize(sizes))
            expectFairAndFull(sizes, computeTreemap(itemsOf(sizes), rect), rect);

        std::ranges::shuffle(sizes, random);
        std::vector<double> areas(sizes.begin(), sizes.end());
        for (const double total = std::accumulate(areas.begin(), areas.end(), 1.0);
             double& area : areas)
            area *= width * height / total;
        EXPECT_TRUE(std::ranges::equal(squarify(areas, rect), naiveSquarify(areas, rect), isNear));
        ASSERT_FALSE(HasFailure()) << "round " << round;
    }
}

TEST(TreemapBlock, ABlockTooSmallToDrawIsStillHitAndTheFirstWins)
{
    const std::vector<QRectF> blocks = {{0, 0, 5, 50}, {5, 0, 5.5, 50}, {5, 0, 20, 50}};
    EXPECT_FALSE(isBlockDrawn(blockFrame(blocks[1])));
    EXPECT_TRUE(isBlockDrawn(blockFrame(blocks[2])));
    EXPECT_EQ(blockAt(blocks, {2.5, 25}), std::nullopt);
    EXPECT_EQ(blockAt(blocks, {7, 25}), 1U);
    EXPECT_EQ(blockAt(blocks, {12, 25}), 2U);
    EXPECT_EQ(blockAt(blocks, {12, 1}), std::nullopt);
}

TEST(TreemapBlock, BlocksComeOneAfterTheOtherAndAllHaveComeAtTheEnd)
{
    for (std::size_t index = 0; index < 40; ++index) {
        EXPECT_LE(blockProgress(index + 1, 0.5), blockProgress(index, 0.5));
        EXPECT_EQ(blockProgress(index, 0), 0);
        EXPECT_EQ(blockProgress(index, 1), 1);
    }
    EXPECT_LT(blockProgress(10, 0.4), blockProgress(0, 0.4));
}
