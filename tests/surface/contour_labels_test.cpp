#include "varnel/surface/detail/contour_labels.h"

#include <gtest/gtest.h>

#include <cmath>

namespace varnel::detail {
namespace {

const LabelRules kRules{1000, 1000, 300, 0.3};

std::vector<ScreenPoint> Straight(ScreenPoint from, ScreenPoint to) {
    std::vector<ScreenPoint> points;
    for (int k = 0; k <= 20; ++k)
        points.push_back({from.x + (to.x - from.x) * k / 20, from.y + (to.y - from.y) * k / 20});
    return points;
}

std::vector<LineLabel> Labels(const std::vector<std::vector<ScreenPoint>>& lines) {
    std::vector<ScreenLine> screen;
    for (const auto& points : lines)
        screen.push_back({points, 60, 20});
    return PlaceLabels(screen, kRules);
}

TEST(ContourLabels, StandReadablyOnStraightLinesOnceEachSpacing) {
    struct Case {
        ScreenPoint from, to;
        std::size_t count;
        double angle;
    };
    for (const Case& c : {Case{{50, 500}, {950, 500}, 3, 0}, Case{{950, 500}, {50, 500}, 3, 0},
                          Case{{500, 950}, {500, 700}, 1, 90}, Case{{200, 200}, {600, 600}, 1, 45},
                          Case{{600, 200}, {200, 600}, 1, -45}, Case{{500, 500}, {610, 500}, 0, 0},
                          Case{{100, 5}, {900, 5}, 0, 0}}) {  // too short; too near to the edge
        const auto labels = Labels({Straight(c.from, c.to)});
        EXPECT_EQ(labels.size(), c.count) << c.from.x << ", " << c.from.y;
        for (const LineLabel& label : labels) {
            EXPECT_NEAR(label.angle, c.angle, 1e-9);
            EXPECT_NEAR(label.to - label.from, 80, 1e-9);  // half a height of air to either side
        }
    }
}

TEST(ContourLabels, AvoidBendsAndEachOther) {
    std::vector<ScreenPoint> ring;
    for (int k = 0; k <= 40; ++k)
        ring.push_back({500 + 40 * std::cos(k * 0.157), 500 + 40 * std::sin(k * 0.157)});
    EXPECT_TRUE(Labels({ring}).empty());

    // A zigzag that ends in a straight stretch.
    std::vector<ScreenPoint> bent;
    for (int k = 0; k < 15; ++k)
        bent.push_back({100.0 + 10 * k, k % 2 == 0 ? 480.0 : 520.0});
    bent.push_back({400, 500});
    const auto one = Labels({bent});
    for (const LineLabel& label : one)
        EXPECT_GT(label.center.x, 250);

    const auto two = Labels({Straight({100, 500}, {390, 500}), Straight({100, 508}, {390, 508})});
    ASSERT_EQ(two.size(), 2U);
    EXPECT_GE(std::abs(two[0].center.x - two[1].center.x), 80);
    EXPECT_TRUE(
        Labels({Straight({100, 500}, {250, 500}), Straight({100, 508}, {249, 508})}).size() == 1);
}

}  // namespace
}  // namespace varnel::detail
