#include "varnel/chartobj/detail/areas_geometry.h"

#include "tests/chartobj/geometry_fixture.h"
#include "varnel/chartobj/detail/seams.h"

namespace varnel::test {
namespace {

using namespace detail;

struct Solid {
    std::size_t index, group;
    SolidCorners c;
};

struct Solids : std::vector<Solid> {
    void operator()(std::size_t i, const SolidCorners& c) { push_back({i, 0, c}); }
    void operator()(std::size_t i, std::size_t g, const SolidCorners& c) { push_back({i, g, c}); }
};

Data25D Series(std::span<const double> ind, std::span<const double> dep) {
    Data25D data;
    data.ind = ind;
    data.dep = dep;
    data.constValue = 5;
    data.depthWidth = 2;
    data.depthOffset = -1;
    return data;
}

// Corners 0, 2, 4 and 6 determine a solid whose ends are upright.
void ExpectSolid(const SolidCorners& c, const point3Dtype& c0, const point3Dtype& c2,
                 const point3Dtype& c4, const point3Dtype& c6) {
    const point3Dtype* const want[] = {&c0, &c2, &c4, &c6};
    for (std::size_t k = 0; k < 4; ++k)
        ExpectPoint(c[2 * k], want[k]->x, want[k]->y, want[k]->z);
}

constexpr double kInd[] = {0, 1, 2, 3};

TEST(AreasGeometry, AreasAreCutAtTheBase) {
    constexpr double dep[] = {5, -5};
    const CTransform3D t = Scaled({0, 0, -5, 0}, {1, 10, 5, 0});
    const double low = -10.0 / 500;  // the base edge of a segment that ends on the base
    Solids solids;
    WalkAreaFill(t, Series(std::span(kInd).first(2), dep), solids);
    ASSERT_EQ(solids.size(), 2U);
    EXPECT_EQ(solids[0].index, 1U);
    EXPECT_EQ(solids[1].index, 2U);
    ExpectSolid(solids[0].c, {0, 4, low, 0}, {0.5, 6, low, 0}, {0, 4, 5, 0}, {0.5, 6, 0, 0});
    // Below the base the ends are exchanged both ways, and the data edge is at the bottom.
    ExpectSolid(solids[1].c, {1, 6, -5, 0}, {0.5, 4, 0, 0}, {1, 6, low, 0}, {0.5, 4, low, 0});

    Data25D alongY = Series(std::span(kInd).first(2), dep);
    alongY.indAxis = 1;
    alongY.gap = 0.1;
    Solids turned;
    WalkAreaFill(t, alongY, turned);
    ExpectSolid(turned[0].c, {4, 0, low, 0}, {6, 0.4, low, 0}, {4, 0, 5, 0}, {6, 0.4, 0, 0});
    ExpectSolid(turned[1].c, {6, 0.9, -5, 0}, {4, 0.5, 0, 0}, {6, 0.9, low, 0}, {4, 0.5, low, 0});
}

TEST(AreasGeometry, AreasAboveTheBaseStandOnIt) {
    constexpr double dep[] = {3, 4, 1, 2};
    Data25D data = Series(kInd, dep);
    data.baseValue = 1;
    Solids solids;
    WalkAreaFill(Linear(), data, solids);
    ASSERT_EQ(solids.size(), 3U);
    EXPECT_EQ(solids[0].c[0].z, 1);
    EXPECT_NEAR(solids[1].c[0].z, 1 - 0.02, 1e-12);
    EXPECT_NEAR(solids[2].c[3].z, 1 - 0.02, 1e-12);
}

TEST(AreasGeometry, AreasOnLogarithmicAxesAreConvertedCornerByCorner) {
    constexpr double ind[] = {1, 100};
    constexpr double dep[] = {3, 4};
    Data25D data = Series(ind, dep);
    data.gap = 0.5;
    Solids solids;  // no gap on a logarithmic independent axis
    WalkAreaFill(Scaled({1, 0, 0, 0}, {100, 10, 10, 0}, 0), data, solids);
    ExpectSolid(solids[0].c, {0, 4, 0, 0}, {2, 6, 0, 0}, {0, 4, 3, 0}, {2, 6, 4, 0});

    Solids values;
    data.baseValue = 1;
    WalkAreaFill(Scaled({0, 0, 1, 0}, {100, 10, 100, 0}, 2), data, values);
    EXPECT_NEAR(values[0].c[0].z, 0, 1e-12);
    EXPECT_NEAR(values[0].c[4].z, std::log10(3), 1e-12);
}

TEST(AreasGeometry, NeighboursOnTheLoweredBaseMakeNoCut) {
    const double tolerance = 10.0 / 500;
    const double dep[] = {-tolerance, -tolerance, -1, kNaN};
    Solids solids;
    WalkAreaFill(Linear(), Series(kInd, dep), solids);
    ASSERT_EQ(solids.size(), 3U);  // the second segment starts on the lowered base and is cut there
    for (const Solid& solid : solids)
        for (const point3Dtype& corner : solid.c)
            EXPECT_TRUE(IsData(corner));
}

TEST(AreasGeometry, SegmentsThatAreLeftOutKeepTheirNumber) {
    constexpr double dep[] = {1, kNaN, 2, 3};
    Solids solids;
    WalkAreaFill(Linear(), Series(kInd, dep), solids);
    ASSERT_EQ(solids.size(), 1U);
    EXPECT_EQ(solids[0].index, 3U);
}

TEST(AreasGeometry, RangesReachDownwardFromTheirData) {
    constexpr double dep[] = {8, 9, 4, 4};
    constexpr double dep2[] = {3, -2, 0, kNaN};
    Data25D data = Series(kInd, dep);
    data.dep2 = dep2;
    data.gap = 0.25;
    Solids solids;
    WalkAreaRange(Linear(), data, solids);
    ASSERT_EQ(solids.size(), 2U);
    // 8 - 3 is not above 8, so it is thickened; 9 + 2 is left as it is.
    ExpectSolid(solids[0].c, {0, 4, 8, 0}, {0.75, 6, 9, 0}, {0, 4, 5.01, 0}, {0.75, 6, 11, 0});
    EXPECT_NEAR(solids[1].c[6].z, 4.01, 1e-12);
}

Data25D Groups(std::span<const double> values, int numGroups, std::size_t n) {
    Data25D data = Series(std::span(kInd).first(n), {});
    data.groups = {values, numGroups, n};
    return data;
}

TEST(AreasGeometry, BandsLieOnEachOther) {
    constexpr double values[] = {1, 2, 3, 4};
    Data25D data = Groups(values, 2, 2);
    data.baseValue = 0.5;
    data.gap = 0.25;
    Solids solids;
    WalkGroupAreas(Linear(), data, solids);
    ASSERT_EQ(solids.size(), 2U);
    ExpectSolid(solids[0].c, {0, 4, .5, 0}, {.75, 6, .5, 0}, {0, 4, 1, 0}, {.75, 6, 2, 0});
    EXPECT_EQ(solids[1].group, 1U);
    ExpectSolid(solids[1].c, {0, 4, 1, 0}, {.75, 6, 2, 0}, {0, 4, 4, 0}, {.75, 6, 6, 0});

    data.indAxis = 1;
    Solids alongY;
    WalkGroupAreas(Linear(), data, alongY);
    ExpectSolid(alongY[1].c, {4, 0, 1, 0}, {6, .75, 2, 0}, {4, 0, 4, 0}, {6, .75, 6, 0});
}

TEST(AreasGeometry, ABandIsCutWhereItsDatumChangesSign) {
    // Group 1 goes from +2 to -2 on totals of 4 and 8: it vanishes halfway, at 6.
    constexpr double values[] = {4, 8, 2, -2, 1, 1};
    Solids solids;
    WalkGroupAreas(Linear(), Groups(values, 3, 2), solids);
    ASSERT_EQ(solids.size(), 4U);
    ExpectSolid(solids[1].c, {0, 4, 4, 0}, {.5, 6, 6, 0}, {0, 4, 6, 0}, {.5, 6, 6, 0});
    // The hanging piece stands out a little: 1/500 of the depth, 1/1000 of the range of values.
    ExpectSolid(solids[2].c, {.5, 3.996, 6, 0}, {1, 6.004, 6, 0}, {.5, 3.996, 6.01, 0},
                {1, 6.004, 8.01, 0});
    // The next band starts from the lowered total.
    ExpectSolid(solids[3].c, {0, 4, 6, 0}, {1, 6, 6, 0}, {0, 4, 7, 0}, {1, 6, 7, 0});

    constexpr double negative[] = {-1, -2};
    Solids below;
    WalkGroupAreas(Linear(), Groups(negative, 1, 2), below);
    ExpectSolid(below[0].c, {0, 3.996, -1, 0}, {1, 6.004, -2, 0}, {0, 3.996, 0.01, 0},
                {1, 6.004, 0.01, 0});

    constexpr double zero[] = {0, 0};
    Solids none;
    WalkGroupAreas(Linear(), Groups(zero, 1, 2), none);
    EXPECT_TRUE(none.empty());
}

TEST(AreasGeometry, MissingDataOfAGroupAddNothing) {
    constexpr double values[] = {1, 1, 1, 2, kNaN, 2, 3, 3, 3};
    Solids solids;
    WalkGroupAreas(Linear(), Groups(values, 3, 3), solids);
    ASSERT_EQ(solids.size(), 4U);
    for (const Solid& solid : solids)
        EXPECT_NE(solid.group, 1U);
    ExpectSolid(solids[1].c, {0, 4, 3, 0}, {1, 6, 1, 0}, {0, 4, 6, 0}, {1, 6, 4, 0});
}

TEST(AreasGeometry, ExactAreasAreCutWhereTheAxesPutThem) {
    constexpr double dep[] = {10, 0.1, 0.1, 1}, dep2[] = {9, -0.9, 0, 0};
    Data25D data = Series(kInd, dep);
    data.exact = true;
    data.dep2 = dep2;
    data.baseValue = 1;
    const CTransform3D t = Scaled({0, 0, 0.1, 0}, {10, 10, 10, 0}, 2);
    Solids solids;
    WalkAreaFill(t, data, solids);
    ASSERT_EQ(solids.size(), 4U);
    ExpectSolid(solids[0].c, {0, 4, 0, 0}, {0.5, 6, 0, 0}, {0, 4, 1, 0}, {0.5, 6, 0, 0});
    ExpectSolid(solids[1].c, {0.5, 4, 0, 0}, {1, 6, -1, 0}, {0.5, 4, 0, 0}, {1, 6, 0, 0});
    EXPECT_EQ(solids[3].index, 4U);
    Solids range;  // from 10 down to 1, from 0.1 up to 1: they change places halfway
    WalkAreaRange(t, data, range);
    ASSERT_EQ(range.size(), 3U);  // the last segment has no extent
    ExpectSolid(range[0].c, {0, 4, 0, 0}, {0.5, 6, 0, 0}, {0, 4, 1, 0}, {0.5, 6, 0, 0});

    constexpr double values[] = {2, -2, 1, 1};
    Data25D groups = Groups(values, 2, 2);
    groups.exact = true;
    Solids piles;
    WalkGroupAreas(Linear(), groups, piles);
    ASSERT_EQ(piles.size(), 4U);
    ExpectSolid(piles[0].c, {0, 4, 0, 0}, {0.5, 6, 0, 0}, {0, 4, 2, 0}, {0.5, 6, 0, 0});
    ExpectSolid(piles[1].c, {0, 4, 2, 0}, {0.5, 6, 0, 0}, {0, 4, 3, 0}, {0.5, 6, 1, 0});
    ExpectSolid(piles[2].c, {0.5, 4, 0, 0}, {1, 6, -2, 0}, {0.5, 4, 0, 0}, {1, 6, 0, 0});
    ExpectSolid(piles[3].c, {0.5, 4, 0, 0}, {1, 6, 0, 0}, {0.5, 4, 1, 0}, {1, 6, 1, 0});
}

TEST(AreasGeometry, NeighboursAreJoinedWhereTheyTouch) {
    constexpr double dep[] = {3, -1, kNaN, 2, 2}, ind[] = {0, 1, 2, 3, 4};
    for (const int indAxis : {0, 1}) {
        Data25D data = Series(ind, dep);
        data.indAxis = indAxis;
        const std::size_t start = indAxis == 1 ? 0 : 1, end = indAxis == 1 ? 5 : 2;
        SeamedBand band(indAxis == 1, 10.0 / 250);
        std::vector<std::array<int, 6>> drawn;
        const auto draw = [&](const SolidCorners&, const std::array<int, 6>& flags) {
            drawn.push_back(flags);
        };
        WalkAreaFill(Linear(), data,
                     [&](std::size_t, const SolidCorners& c) { band.Add(c, draw); });
        band.End(draw);
        ASSERT_EQ(drawn.size(), 3U);
        EXPECT_EQ(drawn[0][start], 1);
        EXPECT_EQ(drawn[0][end], -1);
        // The piece below the base is given the other way round.
        EXPECT_EQ(drawn[1][end], -1);
        EXPECT_EQ(drawn[1][start], 1);
        EXPECT_EQ(drawn[2], (std::array<int, 6>{1, 1, 1, 1, 1, 1}));
    }
}

}  // namespace
}  // namespace varnel::test
