#include "varnel/surface/contour.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <vector>

#include "tests/support/values.h"
#include "varnel/surface/detail/contour_search.h"
#include "varnel/surface/polysurface.h"
#include "varnel/transform/transform.h"

namespace varnel::test {
namespace {

using detail::ContourSearch;

/// Polygons that the level crosses, by their own z.
std::set<int> Crossed(const CPolysurface& surface, double level) {
    std::set<int> crossed;
    for (int i = 0; i < surface.GetPSNumPolygons(); ++i) {
        int n = 0;
        const int* const v = surface.FindPSPolygon(i, n);
        bool below = false, above = false;
        for (int k = 0; k < n; ++k) {
            below |= surface.GetPSPoints()[v[k]].z <= level;
            above |= surface.GetPSPoints()[v[k]].z >= level;
        }
        if (below && above) crossed.insert(i);
    }
    return crossed;
}

std::vector<std::vector<int>> Chains(const CPolysurface& surface, double level) {
    ContourSearch search(surface);
    std::vector<std::vector<int>> chains;
    search.StartLevel(level);
    while (search.NextChain())
        chains.emplace_back(search.GetList(), search.GetList() + search.GetCount());
    return chains;
}

bool AreNeighbours(const CPolysurface& surface, int a, int b) {
    int three[3];
    surface.GetAdjacentPolyList(a, three);
    return three[0] == b || three[1] == b || three[2] == b;
}

TEST(Contour, CrossesEdgesAtBothEndsInclusively) {
    int e1 = 7, e2 = 7;
    const point3Dtype triangle[4] = {{0, 0, 0, 0}, {1, 0, 2, 4}, {0, 1, 4, 8}, {0, 0, 0, 0}};
    EXPECT_TRUE(detail::CheckForPolyContour3D(triangle, 3, 2, e1, e2));
    EXPECT_EQ(e1, 0);
    EXPECT_EQ(e2, 1);
    EXPECT_TRUE(detail::CheckForPolyContour3D(triangle, 3, 4, e1, e2));
    EXPECT_EQ(e1, 1);
    EXPECT_EQ(e2, 2);
    EXPECT_FALSE(detail::CheckForPolyContour3D(triangle, 3, 4.1, e1, e2));

    point3Dtype p1, p2;
    EXPECT_TRUE(detail::InterpolatePolyContour3D(triangle, 3, 1, p1, p2, e1, e2));
    EXPECT_EQ(p1.x, 0.5);
    EXPECT_EQ(p1.w, 2);
    EXPECT_EQ(p2.y, 0.25);
    EXPECT_EQ(p2.z, 1);
    EXPECT_EQ(e2, 2);

    // A level edge gives its ends, and no line unless a crossed edge follows.
    const point3Dtype level[4] = {{0, 0, 1, 0}, {1, 0, 1, 0}, {0, 1, 5, 0}, {0, 0, 1, 0}};
    EXPECT_TRUE(detail::InterpolatePolyContour3D(level, 3, 1, p1, p2, e1, e2));
    EXPECT_EQ(p1.x, 1);
    EXPECT_EQ(p2.x, 0);
    const point3Dtype flat[4] = {{0, 0, 1, 0}, {1, 0, 1, 0}, {0, 1, 1, 0}, {0, 0, 1, 0}};
    EXPECT_FALSE(detail::InterpolatePolyContour3D(flat, 3, 1, p1, p2, e1, e2));
    EXPECT_EQ(p1.y, 1);
    EXPECT_EQ(p2.y, 0);

    // One crossed edge alone leaves the second as it was.
    const point3Dtype torn[4] = {{0, 0, 0, 0}, {1, 0, 2, 0}, {0, 1, kNaN, 0}, {0, 0, 0, 0}};
    e2 = 9;
    EXPECT_TRUE(detail::CheckForPolyContour3D(torn, 3, 1, e1, e2));
    EXPECT_EQ(e2, 9);
}

TEST(Contour, ChainsRunFromBorderToBorder) {
    // z = y: at level 1.25 the line passes all triangles of the second row of cells.
    std::vector<double> z;
    for (int r = 0; r < 4; ++r)
        z.insert(z.end(), 6, r);
    const CPolysurface surface(4, 6, 0.0, 0.0, 5.0, 3.0, z.data(), 1);
    const auto chains = Chains(surface, 1.25);
    ASSERT_EQ(chains.size(), 1U);
    ASSERT_EQ(chains[0].size(), 10U);
    for (std::size_t k = 1; k < 10; ++k)
        EXPECT_TRUE(AreNeighbours(surface, chains[0][k - 1], chains[0][k]));
    EXPECT_TRUE(Chains(surface, -0.5).empty());
    EXPECT_TRUE(Chains(surface, 3.5).empty());
}

TEST(Contour, ALineAroundAPeakIsOneChainAndSoIsEachOfSeveral) {
    std::vector<double> z;
    for (int r = 0; r < 21; ++r)
        for (int c = 0; c < 41; ++c)
            z.push_back(std::max(5 - std::hypot(r - 10.01, c - 9.98),
                                 5 - std::hypot(r - 10.02, c - 30.03)));
    const CPolysurface surface(21, 41, 0.0, 0.0, 40.0, 20.0, z.data(), 1);
    const auto chains = Chains(surface, 2.1);
    ASSERT_EQ(chains.size(), 2U);
    for (const auto& chain : chains)
        EXPECT_TRUE(AreNeighbours(surface, chain.front(), chain.back()));
    EXPECT_EQ(chains[0].size() + chains[1].size(), Crossed(surface, 2.1).size());
}

TEST(Contour, EveryCrossedPolygonIsInExactlyOneChain) {
    std::mt19937 random(3);
    std::uniform_int_distribution<int> height(0, 3);
    std::uniform_real_distribution<double> uniform(0.0, 1.0);
    for (int round = 0; round < 60; ++round) {
        CPolysurface surface;
        if (round % 3 < 2) {
            // Triangles, and quadrilaterals, whose neighbour table means nothing.
            std::vector<double> z;
            for (int k = 0; k < 64; ++k)
                z.push_back(height(random));
            surface = CPolysurface(8, 8, 0.0, 0.0, 1.0, 1.0, z.data(), round % 3);
        } else {
            std::vector<point3Dtype> points;
            for (int k = 0; k < 64; ++k) {
                const double x = uniform(random), y = uniform(random);
                points.push_back({x, y, static_cast<double>(height(random)), 0});
            }
            surface = CPolysurface(points.data(), 0, 64);
            surface.DelaunaySurface(round % 2);
        }
        for (const double level : {0.0, 0.5, 1.0, 2.0, 2.5, 3.0}) {
            std::vector<int> all;
            for (const auto& chain : Chains(surface, level))
                all.insert(all.end(), chain.begin(), chain.end());
            const std::set<int> once(all.begin(), all.end());
            EXPECT_EQ(all.size(), once.size());
            EXPECT_EQ(once, Crossed(surface, level));
        }
    }
}

TEST(Contour, PolygonsWithACornerThatIsNoDataAreNotCrossed) {
    const double z[16] = {0, 1, 2, 3, 0, kNaN, 2, 3, 0, 1, 2, 3, 0, 1, 2, kNaN};
    const CPolysurface surface(4, 4, 0.0, 0.0, 3.0, 3.0, z, 1);
    std::size_t crossed = 0;
    for (const auto& chain : Chains(surface, 0.5)) {
        crossed += chain.size();
        for (const int polygon : chain)
            EXPECT_TRUE(std::isfinite(surface.GetPSPMean(polygon, 2)));
    }
    EXPECT_EQ(crossed, 3U);  // of the six between the first two columns three have the corner
}

TEST(Contour, FindsTheBandOfAValue) {
    const double levels[3] = {1, 2, 4};
    const RGBDType colors[4] = {};
    const CContour3D contour(nullptr, nullptr, nullptr, levels, colors, 3, 0, 0);
    double lower = -7;
    const double rows[][3] = {{0.9, 0, -7}, {4, 3, -7}, {9, 3, -7}, {1, 1, 1}, {3.9, 2, 2}};
    for (const auto& [value, band, bound] : rows) {
        EXPECT_EQ(contour.GetContourBounds(value, lower), band);
        EXPECT_EQ(lower, bound);
    }
    const CContour3D none(nullptr, nullptr, nullptr, nullptr, nullptr, 3, 0, 0);
    EXPECT_EQ(none.GetContourBounds(1, lower), 0);
}

TEST(Contour, MeasuresHowFarAChainMustReach) {
    // z = y over one row of cells: at level 0.25 each cell has a piece of 0.75 and one of 0.25.
    const double z[14] = {0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1};
    CPolysurface surface(2, 7, 0.0, 0.0, 6.0, 1.0, z, 1);
    CTransform3D transform;
    transform.SetScale({0, 0, 0, 0}, {6, 1, 1, 0});
    transform.TransformScale();
    point3Dtype a, b;
    transform.NormalizePoint({0, 0, 0, 0}, a);
    transform.NormalizePoint({1, 0, 0, 0}, b);
    const double unit = b.x - a.x;
    ASSERT_GT(unit, 0);

    const double level = 0.25;
    const RGBDType color{};
    const CContour3D contour(nullptr, &transform, &surface, &level, &color, 1, 0, 0);
    const auto chains = Chains(surface, level);
    ASSERT_EQ(chains.size(), 1U);
    const std::vector<int>& list = chains[0];
    ASSERT_EQ(list.size(), 12U);
    const auto piece = [&](int entry) {
        return list[static_cast<std::size_t>(entry)] % 2 == 0 ? 0.75 : 0.25;
    };
    int lo = 0, hi = 0;
    const auto measure = [&](int centre, double length) {
        return contour.CalcNormalDistance3D(list.data(), 12, level, centre, length * unit, lo, hi) /
               unit;
    };
    const struct {
        int centre;
        double length, measured;
        int lo, hi;
    } rows[] = {{5, 0.1, piece(5), 4, 5},
                {5, 2.1, 2 * piece(4) + piece(5) + 2 * piece(5), 2, 7},
                // Longer than there is: everything but the far ends is measured.
                {3, 99, piece(3) + 2 * piece(2) + 2 * piece(3), 0, 6},
                {0, 99, piece(0), 0, 0}};
    for (const auto& row : rows) {
        EXPECT_NEAR(measure(row.centre, row.length), row.measured, 1e-12);
        EXPECT_EQ(lo, row.lo);
        EXPECT_EQ(hi, row.hi);
    }
    measure(11, 99);
    EXPECT_EQ(hi, 11);
    EXPECT_EQ(measure(12, 1), 0);
    EXPECT_EQ(hi, -1);
}

}  // namespace
}  // namespace varnel::test
