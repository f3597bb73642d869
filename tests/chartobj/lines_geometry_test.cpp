// Lines, projections and ribbons.
#include "varnel/chartobj/detail/lines_geometry.h"

#include <string>

#include "tests/chartobj/geometry_fixture.h"
#include "varnel/chartobj/detail/ribbons_geometry.h"

namespace varnel::test {
namespace {

using namespace detail;

struct Trace {
    std::string calls;  // S, A with its index, E with its index
    std::vector<point3Dtype> points;

    void Start(const point3Dtype& p) { Add("S", p); }
    void Append(std::size_t i, const point3Dtype& p) { Add("A" + std::to_string(i), p); }
    void End(std::size_t i, const point3Dtype& p) { Add("E" + std::to_string(i), p); }

 private:
    void Add(const std::string& call, const point3Dtype& p) {
        calls += call;
        points.push_back(p);
    }
};

constexpr double kInd[] = {1, 10, 100, 1000};
constexpr double kDep[] = {5, 6, 7, 8};

Data25D Series(std::size_t n = 4) {
    Data25D data;
    data.ind = std::span(kInd).first(n);
    data.dep = kDep;
    data.constValue = 3;
    return data;
}

TEST(LinesGeometry, PolylinesRunThroughTheirPointsInBothOrientations) {
    Trace trace;
    WalkLine25D(Scaled({1, 0, 0, 0}, {1000, 10, 10, 0}, 0), Series(), trace);
    EXPECT_EQ(trace.calls, "SA1A2E3");
    ExpectPoint(trace.points[2], 2, 3, 7);

    // Any independent axis but 0 is y here.
    Data25D data = Series(2);
    data.indAxis = 5;
    Trace alongY;
    WalkLine25D(Linear(), data, alongY);
    EXPECT_EQ(alongY.calls, "SE1");
    ExpectPoint(alongY.points[1], 3, 10, 6);

    Trace one;
    WalkLine25D(Linear(), Series(1), one);
    EXPECT_EQ(one.calls, "SE0");
    Trace none;
    WalkLine25D(Linear(), Series(0), none);
    EXPECT_EQ(none.calls, "");
}

TEST(LinesGeometry, WhatIsNoDataInterruptsALine) {
    const std::vector<point3Dtype> points = {{kNaN, 0, 0, 0}, {1, 0, 0, 0}, {2, 0, 0, 0},
                                             {3, kNaN, 0, 0}, {4, 0, 0, 0}, {5, 0, kNaN, 0},
                                             {6, 0, 0, 0},    {7, 0, 0, 0}, {8, 0, 0, 0}};
    Trace trace;
    WalkLine3D(Linear(), points, trace);
    EXPECT_EQ(trace.calls, "SE2SE4SA7E8");
    Trace projected;  // whose gap is in the coordinate that the projection replaces
    WalkProjectedLine(Linear(), points, 1, 0, projected);
    EXPECT_EQ(projected.calls, "SE2SE4SA7E8");
}

TEST(LinesGeometry, ProjectionsReplaceOneCoordinate) {
    const std::vector<point3Dtype> points = {{1, 2, 3, 0}, {4, 5, 6, 0}};
    const point3Dtype want[] = {{1, 2, 9, 0}, {1, 9, 3, 0}, {9, 2, 3, 0}};
    for (int plane = 0; plane < 3; ++plane) {
        Trace trace;
        WalkProjectedLine(Linear(), points, plane, 9, trace);
        ExpectPoint(trace.points[0], want[plane].x, want[plane].y, want[plane].z);
    }
    for (const int plane : {-1, 3}) {
        Trace trace;
        WalkProjectedLine(Linear(), points, plane, 9, trace);
        EXPECT_EQ(trace.calls, "");
    }

    const CTransform3D t = Scaled({0, 0, 1, 0}, {10, 10, 1000, 0}, 2);
    point3Dtype from;
    point3Dtype to;
    EXPECT_TRUE(ProjectPoint(t, {1, 2, 100, 0}, 3, 10, from, to));
    ExpectPoint(from, 1, 2, 2);
    ExpectPoint(to, 1, 2, 1);
    EXPECT_TRUE(ProjectPoint(t, {1, 2, 100, 0}, 5, 10, from, to));
    ExpectPoint(to, 10, 2, 2);
    EXPECT_FALSE(ProjectPoint(t, {1, 2, 100, 0}, 6, 10, from, to));
    EXPECT_FALSE(ProjectPoint(t, {1, 2, 100, 0}, -1, 10, from, to));
}

struct Quads : std::vector<std::array<point3Dtype, 5>> {
    std::vector<std::size_t> index;
    void operator()(std::size_t i, const std::array<point3Dtype, 5>& q) {
        push_back(q);
        index.push_back(i);
    }
};

TEST(RibbonsGeometry, SegmentsAreShortenedAndKeepTheirOrder) {
    Data25D data = Series(2);
    data.depthWidth = 2;
    data.depthOffset = -1;
    data.gap = 0.5;
    Quads alongX;
    WalkRibbon(Linear(), data, alongX);
    ASSERT_EQ(alongX.size(), 1U);
    ExpectPoint(alongX[0][0], 1, 2, 5);
    ExpectPoint(alongX[0][1], 9.5, 2, 6);
    ExpectPoint(alongX[0][2], 9.5, 4, 6);
    ExpectPoint(alongX[0][3], 1, 4, 5);
    ExpectPoint(alongX[0][4], 1, 2, 5);

    data.indAxis = 1;
    Quads alongY;
    WalkRibbon(Linear(), data, alongY);
    ExpectPoint(alongY[0][1], 2, 9.5, 6);
    ExpectPoint(alongY[0][3], 4, 1, 5);

    Quads one;
    WalkRibbon(Linear(), Series(1), one);
    EXPECT_TRUE(one.empty());
}

TEST(RibbonsGeometry, TheFarEdgeOnALogarithmicDepthIsConvertedTwice) {
    Data25D data = Series(2);
    data.constValue = 100;
    data.depthWidth = 98;
    Quads quads;
    WalkRibbon(Scaled({0, 1, 0, 0}, {10, 1000, 10, 0}, 1), data, quads);
    EXPECT_NEAR(quads[0][0].y, 2, 1e-12);
    EXPECT_NEAR(quads[0][2].y, 2, 1e-12);  // log10(2 + 98)
}

TEST(RibbonsGeometry, SegmentsAtWhatIsNoDataAreLeftOut) {
    constexpr double dep[] = {5, kNaN, 7, 8};
    Data25D data = Series();
    data.dep = dep;
    Quads quads;
    WalkRibbon(Linear(), data, quads);
    EXPECT_EQ(quads.index, (std::vector<std::size_t>{3}));
}

}  // namespace
}  // namespace varnel::test
