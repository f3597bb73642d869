#include "varnel/surface/filled_contours.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>
#include <vector>

#include "tests/support/expect_error.h"
#include "varnel/transform/transform.h"

namespace varnel::test {
namespace {

constexpr RGBDType kColors[] = {{.1, 0, 0, 1}, {.2, 0, 0, 1}, {.3, 0, 0, 1}, {.4, 0, 0, 1}};

double Area(std::span<const point3Dtype> ring) {
    double area = 0.0;
    for (std::size_t k = 0; k < ring.size(); ++k) {
        const point3Dtype& p = ring[k];
        const point3Dtype& q = ring[(k + 1) % ring.size()];
        area += (p.x * q.y - p.y * q.x) / 2;
    }
    return area;
}

/// The area that the bands of each colour have, seen from above. Each polygon is checked to run
/// counter-clockwise and to stay in its band.
std::map<double, double> Areas(const CPolysurface& bands, std::span<const double> levels,
                               int firstBand) {
    std::map<double, double> areas;
    std::vector<point3Dtype> pts(static_cast<std::size_t>(bands.GetPSLargestPolygon()) + 1);
    for (int i = 0; i < bands.GetPSNumPolygons(); ++i) {
        int n = 0;
        RGBDType color, second;
        bands.GetPolysurfacePolygon(i, pts.data(), n, color, second);
        const double area = Area({pts.data(), static_cast<std::size_t>(n)});
        EXPECT_GE(area, 0.0);
        areas[color.r] += area;
        const int band = static_cast<int>(std::lround(color.r * 10)) - 1 + firstBand;
        for (int k = 0; k < n; ++k) {
            const double z = pts[static_cast<std::size_t>(k)].z;
            const auto above = static_cast<std::size_t>(band);
            EXPECT_TRUE(band == 0 || z >= levels[above - 1]) << z;
            EXPECT_TRUE(above == levels.size() || z <= levels[above]) << z;
        }
    }
    return areas;
}

TEST(FilledContours, BandsOfARampAreStrips) {
    const std::vector<double> z = {0, 3, 6, 0, 3, 6};  // z = 3 x over 0..2 x 0..1
    const double levels[] = {1.5, 3, 4.5};
    for (const int type : {GRID_QUADRILATERALS, GRID_TRIANGLES}) {
        const CPolysurface ramp(2, 3, 0, 0, 2, 1, z, type);
        const CPolysurface all = FilledContours(ramp, levels, kColors);
        for (const auto& [color, area] : Areas(all, levels, 0))
            EXPECT_NEAR(area, 0.5, 1e-12) << color;
        const CPolysurface open = FilledContours(ramp, levels, std::span(kColors, 2));
        const auto areas = Areas(open, levels, 1);
        EXPECT_EQ(areas.size(), 2U);
        EXPECT_NEAR(areas.at(.1) + areas.at(.2), 1.0, 1e-12);
    }
}

TEST(FilledContours, EveryPlaceIsInOneBandAndNeighboursShareTheirEdges) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> height(0, 6);
    const double levels[] = {1, 2.5, 4};
    for (int round = 0; round < 40; ++round) {
        std::vector<double> z(36);
        for (double& v : z)
            v = height(random);
        const CPolysurface surface(6, 6, 0, 0, 5, 5, z, round % 2);
        const CPolysurface bands = FilledContours(surface, levels, kColors);
        double total = 0.0;
        for (const auto& [color, area] : Areas(bands, levels, 0))
            total += area;
        EXPECT_NEAR(total, 25.0, 1e-9);
        // Each edge is run through once in each direction, but for the border.
        std::map<std::pair<int, int>, int> edges;
        for (int i = 0; i < bands.GetPSNumPolygons(); ++i) {
            int n = 0;
            const int* const polygon = bands.FindPSPolygon(i, n);
            for (int k = 0; k < n; ++k)
                ++edges[{polygon[k], polygon[(k + 1) % n]}];
        }
        for (const auto& [edge, count] : edges) {
            EXPECT_EQ(count, 1);
            const point3Dtype& p = bands.GetPSPoints()[edge.first];
            const point3Dtype& q = bands.GetPSPoints()[edge.second];
            const auto onBorder = [](double a, double b) { return a == b && (a == 0 || a == 5); };
            EXPECT_TRUE(edges.count({edge.second, edge.first}) != 0 || onBorder(p.x, q.x) ||
                        onBorder(p.y, q.y));
        }
    }
}

TEST(FilledContours, CutsLieWhereTheDrawnSurfaceHasTheLevel) {
    const std::vector<double> z = {1, 100, 1, 100};
    const CPolysurface surface(2, 2, 1, 0, 100, 1, z, GRID_QUADRILATERALS);
    CTransform3D transform;
    transform.SetScale({1, 0, 1, 0}, {100, 1, 100, 0});
    transform.SetAxisScaleMode(0, 1);
    transform.SetAxisScaleMode(2, 1);
    transform.TransformScale();
    const double level[] = {10};
    const CPolysurface bands = FilledContours(surface, level, std::span(kColors, 2), &transform);
    ASSERT_EQ(bands.GetPSNumPoints(), 6);
    EXPECT_NEAR(bands.GetPSPoints()[4].x, 10, 1e-12);
    EXPECT_EQ(bands.GetPSPoints()[4].z, 10);
    EXPECT_NEAR(bands.GetPSPoints()[4].w, 50.5, 1e-12);
}

TEST(FilledContours, LevelsAscendAndColoursBelongToThem) {
    const std::vector<double> z = {0, 1, std::nan(""), 1};
    const CPolysurface surface(2, 2, 0, 0, 1, 1, z, GRID_QUADRILATERALS);
    const double levels[] = {0.5, 0.5, 0.2};
    for (const std::size_t n : {0U, 1U, 2U, 3U})
        EXPECT_TRUE(Raises(ERR3D_PARAMETER, ERR3DCLASS_CONTOUR3D, "FilledContours", [&] {
            FilledContours(surface, std::span(levels, n), std::span(kColors, n));
        })) << n;
    EXPECT_EQ(
        FilledContours(surface, std::span(levels, 1), std::span(kColors, 2)).GetPSNumPolygons(), 0);
}

}  // namespace
}  // namespace varnel::test
