#include "varnel/chartobj/detail/bars_geometry.h"

#include "tests/chartobj/geometry_fixture.h"
#include "varnel/chartobj/detail/planes_geometry.h"

namespace varnel::test {
namespace {

using namespace detail;

struct Bar {
    std::size_t point, group;
    Prism prism;
};

struct Bars : std::vector<Bar> {
    void operator()(std::size_t i, const Prism& p) { push_back({i, 0, p}); }
    void operator()(std::size_t i, std::size_t g, const Prism& p) { push_back({i, g, p}); }
};

constexpr double kInd[] = {1, 2, 4};
constexpr double kDep[] = {3, -2, 0.5};

Data25D Series() {
    Data25D data;
    data.ind = kInd;
    data.dep = kDep;
    data.constValue = 7;
    data.indWidth = 0.5;
    data.depthWidth = 2;
    data.indOffset = -0.25;
    data.depthOffset = -1;
    return data;
}

TEST(BarsGeometry, BarsRunFromTheBaseToTheDatumInBothOrientations) {
    Data25D data = Series();
    data.baseValue = 0.5;
    Bars alongX;
    WalkBars25D(Linear(), data, alongX);
    ASSERT_EQ(alongX.size(), 3U);
    ExpectPrism(alongX[0].prism, 0.75, 6, 0.5, 0.5, 2, 2.5);
    ExpectPrism(alongX[1].prism, 1.75, 6, 0.5, 0.5, 2, -2.5);
    ExpectPrism(alongX[2].prism, 3.75, 6, 0.5, 0.5, 2, 0);

    data.indAxis = 1;
    Bars alongY;
    WalkBars25D(Linear(), data, alongY);
    ExpectPrism(alongY[0].prism, 6, 0.75, 0.5, 2, 0.5, 2.5);

    // An unknown axis keeps the x orientation but has the depth width both ways.
    data.indAxis = 2;
    Bars odd;
    WalkBars25D(Linear(), data, odd);
    ExpectPrism(odd[0].prism, 0.75, 6, 0.5, 2, 2, 2.5);
}

TEST(BarsGeometry, LogarithmicValuesConvertTheDifferenceToTheBase) {
    constexpr double dep[] = {1001, 11, 1};
    Data25D data = Series();
    data.dep = dep;
    data.baseValue = 1;
    Bars bars;
    WalkBars25D(Scaled({0, 0, 1, 0}, {10, 10, 1000, 0}, 2), data, bars);
    ExpectPrism(bars[0].prism, 0.75, 6, 0, 0.5, 2, 3);
    ExpectPrism(bars[1].prism, 1.75, 6, 0, 0.5, 2, 1);
    ExpectPrism(bars[2].prism, 3.75, 6, 0, 0.5, 2, 0);

    // On a logarithmic independent axis the place is a logarithm, the offset is not.
    Bars across;
    WalkBars25D(Scaled({1, 0, 0, 0}, {100, 10, 10, 0}, 0), data, across);
    EXPECT_NEAR(across[1].prism.x, std::log10(2) - 0.25, 1e-12);
    EXPECT_EQ(across[1].prism.dx, 0.5);
}

TEST(BarsGeometry, FloatingBarsHangFromTheirDatum) {
    constexpr double heights[] = {1, 4, -1};
    Data25D data = Series();
    data.heights = heights;
    Bars bars;
    WalkFloatingBars(Linear(), data, bars);
    ExpectPrism(bars[0].prism, 0.75, 6, 2, 0.5, 2, 1);
    ExpectPrism(bars[1].prism, 1.75, 6, -6, 0.5, 2, 4);
    ExpectPrism(bars[2].prism, 3.75, 6, 1.5, 0.5, 2, -1);
}

TEST(BarsGeometry, ThreeDimensionalBarsStandOnTheirHeights) {
    constexpr point3Dtype points[] = {{1, 2, 9, 0}, {3, 4, 5, 0}};
    constexpr double heights[] = {4};
    Bars bars;
    WalkBars3D(Linear(), points, heights, 0.5, 0.25, false, bars);
    ExpectPrism(bars[0].prism, 1, 2, 4, 0.5, 0.25, 5);
    ExpectPrism(bars[1].prism, 3, 4, 0, 0.5, 0.25, 5);
}

Data25D Groups(std::span<const double> values, int numGroups) {
    Data25D data = Series();
    data.groups = {values, numGroups, 3};
    data.indWidth = 1;
    data.indOffset = -0.5;
    return data;
}

TEST(BarsGeometry, GroupsSideBySideShareTheWidthAndRiseByTheirAbsoluteValues) {
    constexpr double values[] = {1, 2, 3, -4, 5, 6, 7, 8, 9, 10, 11, 12};
    Data25D data = Groups(values, 4);
    data.baseValue = 2;
    Bars bars;
    WalkBarsSideBySide(Linear(), data, bars);
    ASSERT_EQ(bars.size(), 12U);
    for (std::size_t g = 0; g < 4; ++g) {
        EXPECT_EQ(bars[g].group, g);
        EXPECT_EQ(bars[g].point, 0U);
        EXPECT_NEAR(bars[g].prism.x, 0.5 + 0.25 * static_cast<double>(g), 1e-12);
    }
    ExpectPrism(bars[1].prism, 0.75, 6, 2, 0.25, 2, 4);

    data.indAxis = 1;
    Bars alongY;
    WalkBarsSideBySide(Linear(), data, alongY);
    ExpectPrism(alongY[1].prism, 6, 0.75, 2, 2, 0.25, 4);
}

TEST(BarsGeometry, StackedGroupsStandOnTheTotalThatTheyStartedFrom) {
    constexpr double values[] = {2, 0, 0, -1, 0, 0, 3, 0, 0};
    Data25D data = Groups(values, 3);
    data.baseValue = 100;
    Bars bars;
    WalkStackedBars(Linear(), data, bars);
    ExpectPrism(bars[0].prism, 0.5, 6, 0, 1, 2, 2);
    ExpectPrism(bars[1].prism, 0.5, 6, 2, 1, 2, 1);
    ExpectPrism(bars[2].prism, 0.5, 6, 1, 1, 2, 3);
}

TEST(BarsGeometry, WhatIsNoDataIsLeftOut) {
    constexpr double dep[] = {3, kNaN, 0.5};
    Data25D data = Series();
    data.dep = dep;
    Bars bars;
    WalkBars25D(Linear(), data, bars);
    ASSERT_EQ(bars.size(), 2U);
    EXPECT_EQ(bars[1].point, 2U);

    // In a stack it adds nothing; beyond the stored values there is none.
    constexpr double values[] = {2, 2, 2, kNaN, 1, 1, 5, 5};
    Bars stacked;
    WalkStackedBars(Linear(), Groups(values, 1000000), stacked);
    ASSERT_EQ(stacked.size(), 7U);
    EXPECT_EQ(stacked[1].group, 2U);
    EXPECT_EQ(stacked[1].prism.z, 2);
    EXPECT_EQ(stacked.back().group, 1U);

    constexpr point3Dtype points[] = {{1, kNaN, 9, 0}, {3, 4, 5, 0}};
    Bars solid;
    WalkBars3D(Linear(), points, {}, 1, 1, false, solid);
    EXPECT_EQ(solid.size(), 1U);
}

TEST(BarsGeometry, ExactExtentsGoBetweenConvertedEnds) {
    CTransform3D t = Scaled({1, 0, 1, 0}, {1000, 10, 1000, 0}, 0);
    t.SetAxisScaleMode(2, 1);
    t.TransformScale();
    constexpr double ind[] = {1, 10, 100}, dep[] = {40, 1, -5}, heights[] = {30, 0.5, 1};
    constexpr double values[] = {40, 2, 2, 60, 2, 2};
    Data25D data = Series();
    data.exact = true;
    data.ind = ind;
    data.dep = dep;
    data.heights = heights;
    data.baseValue = 1;
    const double x = std::log10(0.75);
    const double dx = std::log10(1.25) - x;
    Bars bars;
    WalkBars25D(t, data, bars);
    ExpectPrism(bars[0].prism, x, 6, 0, dx, 2, std::log10(40));
    EXPECT_EQ(bars[2].prism.dz, 0);  // no logarithm: the low end of the axis
    WalkFloatingBars(t, data, bars);
    ExpectPrism(bars[3].prism, x, 6, 1, dx, 2, std::log10(4));
    data.groups = {values, 2, 3};
    WalkBarsSideBySide(t, data, bars);
    ExpectPrism(bars[7].prism, 0, 6, 0, std::log10(1.25), 2, std::log10(60));
    WalkStackedBars(t, data, bars);
    ExpectPrism(bars[13].prism, x, 6, std::log10(40), dx, 2, 2 - std::log10(40));
    data.constValue = 2;
    data.indAxis = 1;
    WalkPlanes25D(t, data, 0.02, bars);
    ExpectPrism(bars[18].prism, 0, 0.75, std::log10(40), std::log10(3), 0.5, 0.06);
    constexpr point3Dtype points[] = {{10, 2, 100, 0}};
    Bars inSpace;
    WalkBars3D(t, points, {}, 5, 3, true, inSpace);
    ExpectPrism(inSpace[0].prism, 1, 2, 0, std::log10(1.5), 3, 2);
    WalkPlanes3D(t, points, 5, 3, 0.02, true, inSpace);
    ExpectPrism(inSpace[1].prism, 1, 2, 2, std::log10(1.5), 3, 0.06);

    // What is negative hangs, in a pile of its own.
    constexpr double signedValues[] = {2, 0, 0, -1, 0, 0, 3, 0, 0, -4, 0, 0};
    Data25D groups = Groups(signedValues, 4);
    groups.exact = true;
    Bars piles;
    WalkStackedBars(Linear(), groups, piles);
    const double ends[][2] = {{0, 2}, {0, -1}, {2, 5}, {-1, -5}};
    for (std::size_t g = 0; g < 4; ++g) {
        EXPECT_EQ(piles[g].prism.z, ends[g][0]);
        EXPECT_EQ(piles[g].prism.z + piles[g].prism.dz, ends[g][1]);
    }
    Bars sideBySide;
    WalkBarsSideBySide(Linear(), groups, sideBySide);
    EXPECT_EQ(sideBySide[3].prism.dz, -4);
}

TEST(PlanesGeometry, SlabsOf25DFollowTheRangeAndConvertTheirWidths) {
    Bars slabs;
    const Data25D data = Series();
    WalkPlanes25D(Scaled({1, 0, -5, 0}, {100, 10, 5, 0}, 0), data, 0.02, slabs);
    ASSERT_EQ(slabs.size(), 3U);
    ExpectPrism(slabs[1].prism, std::log10(2) - 0.25, 6, -2, std::log10(0.5), 2, 0.2);

    Bars points;
    constexpr point3Dtype place[] = {{1, 2, 3, 0}};
    WalkPlanes3D(Linear(), place, 4, 5, 0.02, false, points);
    ExpectPrism(points[0].prism, 1, 2, 3, 4, 5, 0.1);
}

}  // namespace
}  // namespace varnel::test
