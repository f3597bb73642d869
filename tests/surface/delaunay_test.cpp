#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/values.h"
#include "varnel/surface/detail/delaunay.h"
#include "varnel/surface/polysurface.h"

namespace varnel::test {
namespace {

using Points = std::vector<point3Dtype>;

// What a triangulation must be.

/// Extended precision, so that the checks do not lean on the code's own predicates. A determinant
/// counts as zero when it is this small against the products it is made of.
using Real = long double;
constexpr Real kTolerance = 1e-15L;

struct Vector {
    Real x, y;
};
Vector From(const point3Dtype& a, const point3Dtype& b) {
    return {static_cast<Real>(b.x) - a.x, static_cast<Real>(b.y) - a.y};
}

/// Twice the area of a triangle, and the size of the terms it is made of.
Real Cross(const point3Dtype& a, const point3Dtype& b, const point3Dtype& c, Real* size = nullptr) {
    const Vector u = From(a, b), v = From(a, c);
    if (size != nullptr) *size = std::abs(u.x * v.y) + std::abs(u.y * v.x);
    return u.x * v.y - u.y * v.x;
}

/// How far d is inside the circle through a, b, c, as a fraction of the terms' size.
Real Inside(const point3Dtype& a, const point3Dtype& b, const point3Dtype& c,
            const point3Dtype& d) {
    const Vector u = From(d, a), v = From(d, b), w = From(d, c);
    const auto square = [](const Vector& t) { return t.x * t.x + t.y * t.y; };
    const Real det = square(u) * (v.x * w.y - v.y * w.x) - square(v) * (u.x * w.y - u.y * w.x) +
                     square(w) * (u.x * v.y - u.y * v.x);
    const Real size = square(u) * (std::abs(v.x * w.y) + std::abs(v.y * w.x)) +
                      square(v) * (std::abs(u.x * w.y) + std::abs(u.y * w.x)) +
                      square(w) * (std::abs(u.x * v.y) + std::abs(u.y * v.x));
    return size > 0 ? det / size : 0;
}

Real HullArea(Points points) {
    std::sort(points.begin(), points.end(),
              [](const auto& a, const auto& b) { return a.x != b.x ? a.x < b.x : a.y < b.y; });
    Points hull;
    const auto chain = [&hull](auto begin, auto end) {
        const std::size_t base = hull.size();
        for (auto p = begin; p != end; ++p) {
            while (hull.size() >= base + 2 && Cross(hull[hull.size() - 2], hull.back(), *p) <= 0)
                hull.pop_back();
            hull.push_back(*p);
        }
        hull.pop_back();
    };
    chain(points.begin(), points.end());
    chain(points.rbegin(), points.rend());
    Real area = 0;
    for (std::size_t i = 1; i + 1 < hull.size(); ++i)
        area += Cross(hull[0], hull[i], hull[i + 1]);
    return area;
}

bool IsFinite(const point3Dtype& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

/// Triangulates and checks everything that a Delaunay triangulation of the convex hull must fulfil.
/// Returns the number of triangles.
int CheckTriangulation(const Points& points) {
    CPolysurface surface(points.data(), 0, static_cast<int>(points.size()));
    surface.DelaunaySurface(1);
    const int n = surface.GetPSNumPolygons();
    const point3Dtype* const stored = surface.GetPSPoints();
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!IsFinite(points[i])) continue;
        EXPECT_EQ(stored[i].x, points[i].x);
        EXPECT_EQ(stored[i].y, points[i].y);
    }

    Real area = 0;
    int border = 0, bad = 0;
    std::set<int> used;
    for (int t = 0; t < n; ++t) {
        int size = 0;
        const int* const v = surface.FindPSPolygon(t, size);
        if (size != 3 || std::max({v[0], v[1], v[2]}) >= surface.GetPSNumPoints()) {
            ADD_FAILURE() << "triangle " << t;
            return n;
        }
        used.insert(v, v + 3);
        Real terms = 0;
        const Real cross = Cross(stored[v[0]], stored[v[1]], stored[v[2]], &terms);
        area += cross;
        bad += cross < -kTolerance * terms;
        int neighbours[3];
        surface.GetAdjacentPolyList(t, neighbours);
        for (int j = 0; j < 3; ++j) {
            if (neighbours[j] == -1) {
                ++border;
                continue;
            }
            if (neighbours[j] < 0 || neighbours[j] >= n) {
                ADD_FAILURE() << "neighbour " << neighbours[j];
                return n;
            }
            // The neighbour names t across the same edge, run the other way.
            const int* const w = surface.FindPSPolygon(neighbours[j], size);
            int back[3];
            surface.GetAdjacentPolyList(neighbours[j], back);
            int across = -1;
            for (int k = 0; k < 3; ++k)
                if (back[k] == t && w[k] == v[(j + 1) % 3] && w[(k + 1) % 3] == v[j]) across = k;
            if (across < 0) {
                ADD_FAILURE() << "triangles " << t << " and " << neighbours[j] << " do not meet";
                return n;
            }
            // No circle around a neighbouring corner: so none around any point at all.
            const point3Dtype& opposite = stored[w[(across + 2) % 3]];
            bad += Inside(stored[v[0]], stored[v[1]], stored[v[2]], opposite) > kTolerance;
        }
    }
    EXPECT_EQ(bad, 0) << "clockwise, or another corner inside the circle";

    std::set<std::pair<double, double>> places;
    Points finite;
    for (const point3Dtype& p : points) {
        if (!IsFinite(p)) continue;
        places.insert({p.x, p.y});
        finite.push_back(p);
    }
    if (n > 0) {
        EXPECT_EQ(used.size(), places.size());
        EXPECT_EQ(n, 2 * static_cast<int>(places.size()) - 2 - border);
        // Thin sets have little area in a large box, where the sums round.
        const Real hull = HullArea(finite);
        const Vector box = From(GetMinimum3D(finite.data(), static_cast<int>(finite.size())),
                                GetMaximum3D(finite.data(), static_cast<int>(finite.size())));
        EXPECT_LE(std::abs(area - hull), 1e-12L * hull + 1e-18L * n * box.x * box.y);
    } else if (places.size() > 2) {
        EXPECT_EQ(HullArea(finite), 0);
    }
    return n;
}

// Points.

point3Dtype Place(double x, double y) {
    return {x, y, 0, 0};
}

/// Points of one kind: `u` gives numbers in 0..1.
struct Kind {
    const char* name;
    point3Dtype (*make)(double u, double v, int i, int n);
};

const Kind kKinds[] = {
    {"uniform", [](double u, double v, int, int) { return Place(u, v); }},
    {"offset", [](double u, double v, int, int) { return Place(u + 5e6, v - 3e7); }},
    {"clusters", [](double u, double v, int i,
                    int) { return Place(i % 3 + 1e-9 * u, i % 5 * 7.0 + 1e-9 * v); }},
    {"tight clusters far apart",
     [](double u, double v, int i, int) {
         return Place(i % 2 * 1e6 + 1e-8 * u, i % 3 * 1e6 + 1e-10 * v);
     }},
    {"repeated",
     [](double u, double v, int, int) { return Place(std::floor(7 * u), std::floor(7 * v)); }},
    {"grid",
     [](double, double, int i, int n) {
         const int m = static_cast<int>(std::sqrt(n));
         return Place(0.1 * (i % m), 0.3 * (i / m));
     }},
    {"turned grid",
     [](double, double, int i, int n) {
         const int m = static_cast<int>(std::sqrt(n));
         const double x = 0.1 * (i % m), y = 0.1 * (i / m);
         return Place(x * std::cos(0.5) - y * std::sin(0.5), x * std::sin(0.5) + y * std::cos(0.5));
     }},
    {"flat", [](double u, double v, int, int) { return Place(u, 1e-9 * v); }},
    {"tall", [](double u, double v, int, int) { return Place(1e-12 * u, 1e6 * v); }},
    {"circle", [](double u, double, int, int) { return Place(std::cos(7 * u), std::sin(7 * u)); }},
    {"hub of a wheel",
     [](double u, double, int i, int) {
         return i == 0 ? point3Dtype{} : point3Dtype{std::cos(7 * u), std::sin(7 * u), 0, 0};
     }},
    {"parabola", [](double u, double, int, int) { return Place(u, u * u); }},
    {"two lines", [](double u, double, int i, int) { return Place(u, i % 2 * 1.0); }},
    {"line", [](double u, double, int, int) { return Place(u, u); }},
    {"level line", [](double u, double, int, int) { return Place(u, 1e300); }},
    {"line and a point",
     [](double u, double, int i, int) {
         return i == 9 ? point3Dtype{3, 1e-130, 0, 0} : point3Dtype{u, 0, 0, 0};
     }},
    {"tiny", [](double u, double v, int, int) { return Place(1e-310 * u, 1e-310 * v); }},
    {"huge",
     [](double u, double v, int, int) { return Place((u - 0.5) * 3e307, (v - 0.5) * 1.75e308); }},
    {"some not finite", [](double u, double v, int i,
                           int) { return Place(i % 7 == 3 ? kNaN : u, i % 11 == 4 ? -kInf : v); }},
};

Points Make(const Kind& kind, int n, unsigned seed) {
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> uniform(0.0, 1.0);
    Points points;
    for (int i = 0; i < n; ++i) {
        const double u = uniform(random), v = uniform(random);
        points.push_back(kind.make(u, v, i, n));
    }
    return points;
}

TEST(Delaunay, HoldsItsInvariantsOnEveryKindOfPoints) {
    for (const Kind& kind : kKinds) {
        for (const int n : {1, 2, 3, 4, 5, 10, 49, 100, 1024, 5000}) {
            SCOPED_TRACE(std::string(kind.name) + ", " + std::to_string(n) + " points");
            CheckTriangulation(Make(kind, n, static_cast<unsigned>(n)));
        }
    }
}

TEST(Delaunay, HoldsItsInvariantsOverManySeeds) {
    // Few points on few places: all the ways in which points can be on lines and circles.
    const Kind coarse{"coarse", [](double u, double v, int, int) {
                          return Place(std::floor(4 * u), std::floor(4 * v));
                      }};
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        CheckTriangulation(Make(coarse, 3 + static_cast<int>(seed) % 20, seed));
        CheckTriangulation(Make(kKinds[0], 3 + static_cast<int>(seed) % 30, seed));
    }
}

TEST(Delaunay, FewPlacesOrOneLineMakeNoTriangles) {
    EXPECT_EQ(CheckTriangulation({{1, 2, 0, 0}}), 0);
    EXPECT_EQ(CheckTriangulation({{1, 2, 0, 0}, {3, 4, 0, 0}}), 0);
    EXPECT_EQ(CheckTriangulation(Points(50, {1, 2, 0, 0})), 0);
    EXPECT_EQ(CheckTriangulation({{0, 0, 0, 0}, {1, 1, 0, 0}, {0, 0, 1, 0}, {1, 1, 1, 0}}), 0);
    EXPECT_EQ(CheckTriangulation({{0, 0, 0, 0}, {1, 3, 0, 0}, {2, 6, 0, 0}, {-5, -15, 0, 0}}), 0);
    EXPECT_EQ(CheckTriangulation({{0, 0, 0, 0}, {1, 0, 0, 0}, {0, 1, 0, 0}}), 1);
}

TEST(Delaunay, ASquareHasTwoTrianglesThatMeet) {
    const Points square = {{0, 0, 1, 5}, {1, 0, 2, 6}, {1, 1, 3, 7}, {0, 1, 4, 8}};
    CPolysurface surface(square.data(), 0, 4);
    const point3Dtype spare = {9, 9, 9, 9};
    for (int i = 4; i < 8; ++i)
        surface.SetOnePolysurfacePoint(i, spare);
    surface.DelaunaySurface(1);
    ASSERT_EQ(surface.GetPSNumPolygons(), 2);
    RGBDType first, second;
    int indices[3], n = 0;
    surface.GetPSPolygonIndices(1, indices, n, first, second);
    EXPECT_EQ(Row(n, first.b, first.r, second.r), Row(3, 1.0, 0.0, 1.0));

    // The far corners stay in the spare places, beside the values that were there.
    const double corners[4][2] = {{-100, -100}, {100, -100}, {0, 100}, {9, 9}};
    for (int k = 0; k < 4; ++k) {
        EXPECT_EQ(surface.GetPSPoints()[4 + k].x, corners[k][0]);
        EXPECT_EQ(surface.GetPSPoints()[4 + k].y, corners[k][1]);
        EXPECT_EQ(surface.GetPSPoints()[4 + k].w, 9);
    }
    EXPECT_EQ(surface.GetPSPoints()[2].z, 3);
    EXPECT_EQ(surface.GetPSPoints()[2].w, 7);
}

TEST(Delaunay, RunsAgainAndWithoutNeighbours) {
    const Points points = Make(kKinds[0], 100, 3);
    CPolysurface surface(points.data(), 0, 100);
    surface.DelaunaySurface(1);
    const int n = surface.GetPSNumPolygons();
    EXPECT_NE(surface.GetAdjacentPolygonPntr(), nullptr);
    surface.DelaunaySurface(0);
    EXPECT_EQ(surface.GetPSNumPolygons(), n);
    EXPECT_EQ(surface.GetAdjacentPolygonPntr(), nullptr);
    int three[3] = {5, 5, 5};
    surface.GetAdjacentPolyList(0, three);
    EXPECT_EQ(three[2], -1);

    CPolysurface empty;
    empty.DelaunaySurface(1);
    EXPECT_EQ(empty.GetPSNumPolygons(), 0);

    // A polygon table that is too small makes way for one with room.
    CPolysurface small(100, 3, 4);
    small.SetPolysurfacePoints(points.data(), 0, 100);
    small.DelaunaySurface(1);
    EXPECT_EQ(small.GetPSNumPolygons(), n);
}

// The exact decisions.

TEST(DelaunayPredicates, SeeTheLastBit) {
    using detail::InsideCircle;
    using detail::Orientation;
    using detail::Site;
    const double e = 0x1p-52;
    EXPECT_EQ(Orientation({0.5, 0.5}, {12, 12}, {24, 24}), 0);
    EXPECT_EQ(Orientation({0.5, 0.5}, {12, 12}, {24, 24 * (1 + e)}), 1);
    EXPECT_EQ(Orientation({0.5, 0.5}, {12, 12}, {24 * (1 + e), 24}), -1);
    EXPECT_EQ(Orientation({0.5 + e, 0.5}, {12, 12}, {24, 24}), -1);

    // Points of the circle of radius 65, none of them in line with an axis.
    const Site a{16, -63}, b{63, 16}, c{-33, 56};
    EXPECT_FALSE(InsideCircle(a, b, c, {25, -60}));
    EXPECT_TRUE(InsideCircle(a, b, c, {25, -60 * (1 - e)}));
    EXPECT_FALSE(InsideCircle(a, b, c, {25, -60 * (1 + e)}));
    // The same 2^160 times as large.
    const double s = 0x1p+160;
    const Site as{16 * s, -63 * s}, bs{63 * s, 16 * s}, cs{-33 * s, 56 * s};
    EXPECT_FALSE(InsideCircle(as, bs, cs, {25 * s, -60 * s}));
    EXPECT_TRUE(InsideCircle(as, bs, cs, {25 * s, -60 * s * (1 - e)}));

    EXPECT_EQ(detail::SideSign(1, -1, {0, 0}, {1, 1 + e}), -1);
    EXPECT_EQ(detail::SideSign(1, -1, {-0x1p-60, 0}, {1, 1}), 1);
    EXPECT_EQ(detail::SideSign(3, 1, {2, 5}, {3, 2}), 0);
}

// Faults that end the process.

detail::TriangleStack MakeStack(int capacity) {
    return {std::make_unique<int[]>(static_cast<std::size_t>(capacity)), capacity};
}

TEST(DelaunayDeathTest, InconsistentTablesEndTheProcess) {
    // The lines go to standard output; the test looks at standard error.
    const auto onOutput = [] { dup2(STDERR_FILENO, STDOUT_FILENO); };
    const auto pop = [] { MakeStack(1).pop(); };
    const auto push = [] {
        auto stack = MakeStack(1);
        stack.push(1);
        stack.push(2);
    };
    const auto edge = [] { detail::edg({{0, 1, 2}, {7, 8, 9}, 0}, 6); };
    const auto exits = testing::ExitedWithCode(1);
    EXPECT_EXIT((onOutput(), pop()), exits, "^Error in function pop\nStack underflow\n$");
    EXPECT_EXIT((onOutput(), push()), exits, "^Error in routine push\nStack Overflow \n$");
    EXPECT_EXIT((onOutput(), edge()), exits, "^Error in function edg\nElements not adjacent\n$");
    EXPECT_EQ(detail::edg({{0, 1, 2}, {7, 8, 7}, 0}, 7), 2);
}

}  // namespace
}  // namespace varnel::test
