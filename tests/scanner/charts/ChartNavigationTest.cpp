#include "scanner/charts/ChartNavigation.h"

#include "scanner/charts/Treemap.h"
#include "scanner/charts/TreemapBlock.h"

#include <random>
#include <set>

#include <gtest/gtest.h>

using namespace brivane;

TEST(ChartNavigation, KeysLeadToTheBlockBesideTheMiddleAndNeverToOneNotDrawn)
{
    // 0 1 3     beside 3 is 4, which is too small to be drawn
    // 0 2 3
    const std::vector<QRectF> frames = {
        {0, 0, 100, 100}, {103, 0, 50, 30}, {103, 33, 50, 67}, {156, 0, 40, 100}, {199, 0, 2, 100}};
    EXPECT_EQ(neighbour(frames, 0, Direction::Right), 2U);
    EXPECT_EQ(neighbour(frames, 3, Direction::Left), 2U);
    EXPECT_EQ(neighbour(frames, 2, Direction::Up), 1U);
    EXPECT_EQ(neighbour(frames, 3, Direction::Right), std::nullopt);
}

TEST(ChartNavigation, EveryDrawnBlockIsReachedFromTheFirst)
{
    std::mt19937_64 random(6);
    for (int round = 0; round < 300; ++round) {
        std::vector<ChartItem> items(1 + random() % 40);
        for (ChartItem& item : items)
            item.size = std::uint64_t{1} << random() % 12;
        std::ranges::sort(items, std::greater(), &ChartItem::size);
        std::vector<QRectF> frames;
        for (const QRectF& rect : computeTreemap(items, {0, 0, 800, 500}))
            frames.push_back(blockFrame(rect));
        std::vector<std::size_t> found{0};
        std::set<std::size_t> seen{0};
        for (std::size_t i = 0; i < found.size(); ++i) {
            for (int direction = 0; direction < 4; ++direction) {
                const auto next = neighbour(frames, found[i], static_cast<Direction>(direction));
                if (next && seen.insert(*next).second)
                    found.push_back(*next);
            }
        }
        EXPECT_EQ(seen.size(), items.size()) << "round " << round;
    }
}

TEST(ChartNavigation, ArcsFollowEachOtherRoundTheirRingPastThoseNotDrawn)
{
    const std::vector<SunburstSegmentData> segments = {
        {nullptr, 0, 50, 0, 0},  {nullptr, 0, 20, 1, 0},  {nullptr, 60, 0.001, 0, 1},
        {nullptr, 70, 50, 0, 2}, {nullptr, 70, 20, 1, 2},
    };
    EXPECT_EQ(nextArc(segments, {}, Turn::Clockwise), 0U);
    EXPECT_EQ(nextArc(segments, {}, Turn::CounterClockwise), 3U);
    EXPECT_EQ(nextArc(segments, 0, Turn::Clockwise), 3U);
    EXPECT_EQ(nextArc(segments, 3, Turn::Clockwise), 0U);
    EXPECT_EQ(nextArc(segments, 1, Turn::CounterClockwise), 4U);
    EXPECT_EQ(nextArc({}, {}, Turn::Clockwise), std::nullopt);
    EXPECT_EQ(nextArc(std::span(segments).subspan(2, 1), {}, Turn::Clockwise), std::nullopt);
}
