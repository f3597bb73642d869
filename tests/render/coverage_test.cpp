#include "varnel/render/detail/coverage.h"

#include <gtest/gtest.h>

#include <vector>

namespace varnel::detail {
namespace {

TEST(Coverage, LeavesOutWhatTouchesNoSample) {
    const SamplePlace centre[1] = {{0.5F, 0.5F}};
    const SamplePlace four[4] = {
        {0.375F, 0.125F}, {0.875F, 0.375F}, {0.125F, 0.625F}, {0.625F, 0.875F}};
    const Coverage one({10, 10, 100, 100}, centre, 0.01F);
    const Coverage many({10, 10, 100, 100}, four, 0.01F);
    struct Case {
        std::vector<WindowPoint> corners;
        bool withOne;
        bool withFour;
    };
    const Case cases[] = {
        {{{20.6F, 20.6F}, {21.4F, 20.6F}, {21.4F, 21.4F}, {20.6F, 21.4F}}, false, true},
        {{{20.4F, 20.4F}, {20.6F, 20.4F}, {20.5F, 20.6F}}, true, false},
        {{{20.49F, 0.0F}, {20.49F, 30.0F}, {20.495F, 30.0F}}, true, false},  // too close to tell
        {{{20.2F, 20.6F}, {20.6F, 21.4F}, {20.7F, 21.4F}}, false, false},    // beside the samples
        {{{20.6F, 12.0F}, {21.4F, 12.0F}, {21.0F, 13.0F}}, false, true},
        {{{0.0F, 0.0F}, {9.9F, 0.0F}, {9.9F, 200.0F}}, false, false},  // beside the viewport
        {{{0.0F, 0.0F}, {300.0F, 0.0F}, {0.0F, 300.0F}}, true, true},
        {{{20.55F, 20.55F}, {20.56F, 20.55F}, {20.55F, 20.56F}}, false, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(&c - cases);
        const auto n = static_cast<int>(c.corners.size());
        EXPECT_EQ(one.MayCover(c.corners.data(), n), c.withOne);
        EXPECT_EQ(many.MayCover(c.corners.data(), n), c.withFour);
        EXPECT_TRUE(Coverage().MayCover(c.corners.data(), n));
    }
}

TEST(Coverage, CountsNoSamplesOfHugeViewports) {
    const SamplePlace centre[1] = {{0.5F, 0.5F}};
    const WindowPoint all[3] = {{-3e9F, -3e9F}, {9e9F, -3e9F}, {-3e9F, 9e9F}};
    for (const int half : {200'000, 500'000, 1'000'000'000}) {
        const Coverage c({-half, -half, 2 * half, 2 * half}, centre, 0.01F);
        EXPECT_TRUE(c.MayCover(all, 3)) << half;
    }
}

TEST(Coverage, SegmentsAreSeenWhereTheyLeaveADiamond) {
    const SamplePlace centre[1] = {{0.5F, 0.5F}};
    const Coverage c({0, 0, 100, 100}, centre, 0.01F);
    EXPECT_FALSE(c.MayDraw({20.3F, 20.5F}, {20.7F, 20.6F})) << "inside a diamond";
    EXPECT_FALSE(c.MayDraw({20.8F, 20.1F}, {21.2F, 19.9F})) << "between four diamonds";
    EXPECT_TRUE(c.MayDraw({20.5F, 20.5F}, {21.0F, 20.9F}));
    EXPECT_TRUE(c.MayDraw({20.3F, 20.5F}, {20.995F, 20.5F})) << "too close to tell";
}

}  // namespace
}  // namespace varnel::detail
