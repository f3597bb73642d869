#include "varnel/surface/contour_lines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include "tests/support/values.h"
#include "varnel/surface/polysurface.h"

namespace varnel::test {
namespace {

constexpr double kPi = 3.14159265358979323846;

/// f over -1..1 in both directions, n x n points.
template <class F>
CPolysurface Grid(int n, int type, F&& f) {
    std::vector<double> z;
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c)
            z.push_back(f(2.0 * c / (n - 1) - 1, 2.0 * r / (n - 1) - 1));
    return CPolysurface(n, n, -1.0, -1.0, 1.0, 1.0, z.data(), type);
}

double Bowl(double x, double y) {
    return x * x + y * y;
}

struct Shape {
    double length = 0.0;
    double area = 0.0;  ///< counter-clockwise is positive
};

Shape Measure(const ContourLines& contours, const ContourLine& line) {
    Shape shape;
    for (std::size_t k = 0; k + (line.closed ? 0 : 1) < line.count; ++k) {
        const point3Dtype& a = contours.points[line.first + k];
        const point3Dtype& b = contours.points[line.first + (k + 1) % line.count];
        shape.length += std::hypot(b.x - a.x, b.y - a.y);
        shape.area += (a.x * b.y - b.x * a.y) / 2;
    }
    return shape;
}

ContourLines TraceOne(const CPolysurface& surface, double level) {
    return TraceContourLines(surface, &level, 1);
}

void ExpectCircles(const CPolysurface& surface, double tolerance) {
    // In no order.
    const double levels[3] = {0.5, 0.04, 0.25};
    const ContourLines contours = TraceContourLines(surface, levels, 3);
    ASSERT_EQ(contours.lines.size(), 3U);
    std::set<int> seen;
    for (const ContourLine& line : contours.lines) {
        const double radius = std::sqrt(levels[line.level]);
        EXPECT_TRUE(line.closed);
        seen.insert(line.level);
        for (std::size_t k = 0; k < line.count; ++k) {
            const point3Dtype& p = contours.points[line.first + k];
            EXPECT_NEAR(std::hypot(p.x, p.y), radius, tolerance);
            EXPECT_EQ(p.z, levels[line.level]);
            EXPECT_NEAR(p.w, p.z, 1e-12);
        }
        const Shape shape = Measure(contours, line);
        EXPECT_NEAR(shape.length, 2 * kPi * radius, 10 * tolerance);
        // Clockwise: the bowl's higher ground is outside, on the left.
        EXPECT_NEAR(shape.area, -kPi * radius * radius, 10 * tolerance);
    }
    EXPECT_EQ(seen.size(), 3U);
}

TEST(ContourLines, FollowCirclesOnGridsAndTriangulations) {
    ExpectCircles(Grid(101, 0, Bowl), 5e-4);
    ExpectCircles(Grid(101, 1, Bowl), 5e-4);

    std::mt19937 random(1);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    std::vector<point3Dtype> points;
    for (int i = 0; i < 20000; ++i) {
        const double x = uniform(random), y = uniform(random);
        points.push_back({x, y, Bowl(x, y), Bowl(x, y)});
    }
    CPolysurface scattered(points.data(), 0, 20000);
    scattered.DelaunaySurface(0);
    ExpectCircles(scattered, 5e-3);
}

TEST(ContourLines, PassSaddlesOnTheRightSide) {
    // x * y: hyperbolas in opposite quarters. With an even number of points the saddle is inside a
    // cell, with an odd one on a point.
    for (const int n : {20, 21}) {
        for (const int type : {0, 1}) {
            const auto surface = Grid(n, type, [](double x, double y) { return x * y; });
            for (const double level : {-0.3, -0.02, 0.02, 0.3}) {
                const ContourLines contours = TraceOne(surface, level);
                ASSERT_EQ(contours.lines.size(), 2U) << n << ", " << type << ", " << level;
                for (const ContourLine& line : contours.lines) {
                    EXPECT_FALSE(line.closed);
                    const double side = contours.points[line.first].x;
                    for (std::size_t k = 0; k < line.count; ++k) {
                        const point3Dtype& p = contours.points[line.first + k];
                        EXPECT_NEAR(p.x * p.y, level, 6e-3);
                        EXPECT_GT(p.x * side, 0);
                    }
                }
            }
        }
    }
}

/// How often lines go straight from the left or right edge of the single cell to its top.
int CutsUpperLeft(double z00, double z10, double z11, double z01) {
    const double z[4] = {z00, z10, z01, z11};
    const CPolysurface cell(2, 2, 0.0, 0.0, 1.0, 1.0, z, 0);
    const ContourLines contours = TraceOne(cell, 0.0);
    EXPECT_EQ(contours.lines.size(), 2U);
    int cuts = 0;
    for (const ContourLine& line : contours.lines) {
        const point3Dtype& a = contours.points[line.first];
        const point3Dtype& b = contours.points[line.first + 1];
        cuts += (a.x == 0 && b.y == 1) || (b.x == 0 && a.y == 1);
    }
    return cuts;
}

TEST(ContourLines, DecideACellByItsBilinearSaddle) {
    EXPECT_EQ(CutsUpperLeft(2, -1, 2, -1), 1);  // the high corners hang together
    EXPECT_EQ(CutsUpperLeft(1, -2, 1, -2), 0);
    // The mean of the corners is high, the saddle is low; and the other way round.
    EXPECT_EQ(CutsUpperLeft(10, -1, 0.05, -1), 0);
    EXPECT_EQ(CutsUpperLeft(-10, 1, -0.05, 1), 0);
}

TEST(ContourLines, AreExactWherePointsLieOnTheLevel) {
    const auto pyramid = [](double x, double y) {
        return -std::round(4 * std::max(std::abs(x), std::abs(y)));
    };
    for (const int type : {0, 1}) {
        const auto surface = Grid(9, type, pyramid);
        for (const double level : {-1.0, -2.0, -3.0}) {
            const ContourLines contours = TraceOne(surface, level);
            ASSERT_EQ(contours.lines.size(), 1U);
            EXPECT_TRUE(contours.lines[0].closed);
            EXPECT_NEAR(Measure(contours, contours.lines[0]).length, -level * 2, 1e-12);
            EXPECT_NEAR(Measure(contours, contours.lines[0]).area, level * level / 4, 1e-12);
        }
        EXPECT_TRUE(TraceOne(surface, 0.0).lines.empty());  // the tip alone
    }
    // A plateau's line is its rim.
    const auto plateau = Grid(9, 1, [](double x, double y) {
        return std::max(std::abs(x), std::abs(y)) < 0.6 ? 1.0 : 0.0;
    });
    const ContourLines rim = TraceOne(plateau, 1.0);
    ASSERT_EQ(rim.lines.size(), 1U);
    EXPECT_NEAR(Measure(rim, rim.lines[0]).area, 1.0, 1e-12);
}

TEST(ContourLines, CoverEveryCrossingOnceAndEndOnlyAtTheBorder) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> height(0, 4);
    for (int round = 0; round < 40; ++round) {
        const auto surface = Grid(9, round % 2, [&](double, double) { return height(random); });
        // Whole levels lie on many points, the others on none.
        for (const double level : {1.0, 2.0, 2.5, 3.5, 4.0}) {
            const ContourLines contours = TraceOne(surface, level);
            std::set<std::pair<int, int>> crossed;
            for (int i = 0; i < surface.GetPSNumPolygons(); ++i) {
                int n = 0;
                const int* const v = surface.FindPSPolygon(i, n);
                for (int k = 0; k < n; ++k) {
                    const int a = v[k], b = v[(k + 1) % n];
                    const point3Dtype* const p = surface.GetPSPoints();
                    if ((p[a].z >= level) != (p[b].z >= level))
                        crossed.insert({std::min(a, b), std::max(a, b)});
                }
            }
            if (level != std::round(level)) {
                EXPECT_EQ(contours.points.size(), crossed.size());
            }
            for (const ContourLine& line : contours.lines) {
                ASSERT_GE(line.count, 2U);
                const point3Dtype* const p = &contours.points[line.first];
                for (std::size_t k = 1; k < line.count; ++k)
                    EXPECT_TRUE(p[k].x != p[k - 1].x || p[k].y != p[k - 1].y);
                if (line.closed) continue;
                for (const point3Dtype& end : {p[0], p[line.count - 1]})
                    EXPECT_TRUE(std::abs(end.x) == 1 || std::abs(end.y) == 1);
            }
        }
    }
}

TEST(ContourLines, JoinPolygonsOfAnySense) {
    CPolysurface surface(5, 3, 3);
    const point3Dtype points[5] = {
        {0, 0, 0, 0}, {1, 0, 1, 0}, {1, 1, 1, 0}, {0, 1, 0, 0}, {2, 2, 0, 0}};
    surface.SetPolysurfacePoints(points, 0, 5);
    const int lower[3] = {0, 1, 2}, upper[3] = {0, 3, 2}, third[3] = {0, 2, 4};
    surface.AddPolysurfacePolygon(0, lower, 3, {}, {});
    surface.AddPolysurfacePolygon(1, upper, 3, {}, {});
    ContourLines contours = TraceOne(surface, 0.5);
    ASSERT_EQ(contours.lines.size(), 1U);
    EXPECT_EQ(contours.points.size(), 3U);

    // A third polygon at an edge begins a line of its own.
    surface.AddPolysurfacePolygon(2, third, 3, {}, {});
    contours = TraceOne(surface, 0.5);
    EXPECT_EQ(contours.lines.size(), 2U);
    EXPECT_EQ(contours.points.size(), 5U);
}

TEST(ContourLines, LeaveOutWhatIsNotFinite) {
    auto surface = Grid(11, 1, [](double x, double) { return x; });
    surface.SetOnePolysurfacePoint(5 * 11 + 5, {0, 0, kNaN, 0});
    const double levels[4] = {kNaN, 0.1, kInf, -kInf};
    const ContourLines contours = TraceContourLines(surface, levels, 4);
    EXPECT_EQ(contours.lines.size(), 2U);
    for (const point3Dtype& p : contours.points)
        EXPECT_TRUE(std::isfinite(p.x + p.y + p.z));
    EXPECT_TRUE(TraceContourLines(CPolysurface(), levels, 4).lines.empty());
    EXPECT_TRUE(TraceContourLines(surface, nullptr, 4).lines.empty());
    EXPECT_TRUE(TraceContourLines(surface, levels, 0).lines.empty());

    const auto steep = Grid(2, 1, [](double x, double) { return x * 1.7e308; });
    const ContourLines middle = TraceOne(steep, 0.0);
    ASSERT_EQ(middle.lines.size(), 1U);
    for (const point3Dtype& p : middle.points)
        EXPECT_NEAR(p.x, 0, 1e-15);
}

}  // namespace
}  // namespace varnel::test
