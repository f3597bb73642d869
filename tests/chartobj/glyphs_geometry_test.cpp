// Prices, boxes and the surfaces of meshes.
#include <map>

#include "tests/chartobj/geometry_fixture.h"
#include "varnel/chartobj/detail/boxes_geometry.h"
#include "varnel/chartobj/detail/stock_geometry.h"
#include "varnel/chartobj/detail/surfaces_geometry.h"

namespace varnel::test {
namespace {

using namespace detail;

struct Segment {
    point3Dtype p, q;
};

constexpr double kInd[] = {2, 4, 6};

Data25D Series(std::span<const double> values, int numGroups) {
    Data25D data;
    data.ind = kInd;
    data.groups = {values, numGroups, 3};
    data.constValue = 5;
    data.indWidth = 1;
    data.indOffset = -0.5;
    data.depthWidth = 2;
    data.depthOffset = -1;
    return data;
}

struct Marks {
    std::vector<Segment> lines;
    std::vector<std::pair<bool, Prism>> bodies;
    std::vector<point3Dtype> opens, closes;
    void Line(std::size_t, const point3Dtype& p, const point3Dtype& q) { lines.push_back({p, q}); }
    void Body(std::size_t, bool rose, const Prism& body) { bodies.emplace_back(rose, body); }
    void OpenSymbol(std::size_t, const point3Dtype& p) { opens.push_back(p); }
    void CloseSymbol(std::size_t, const point3Dtype& p) { closes.push_back(p); }
};

// Open, high, low and close of a rise, a fall and a point without a low.
constexpr double kPrices[] = {3, 8, 1, 6, 9, 2, 1, 2, kNaN, 5, 4, 2};

TEST(StockGeometry, MarksHaveTheirPartsInPlace) {
    constexpr int all[] = {1, 1, 1, 1, 1, 1};
    Marks marks;
    WalkStocks(Linear(), Series(kPrices, 4), StockParts(all), marks);
    ASSERT_EQ(marks.lines.size(), 6U);
    ExpectPoint(marks.lines[0].p, 2, 5, 1);
    ExpectPoint(marks.lines[0].q, 2, 5, 6);
    ExpectPoint(marks.lines[1].p, 1.5, 5, 3);
    ExpectPoint(marks.lines[1].q, 2, 5, 3);
    ExpectPoint(marks.lines[2].p, 2, 5, 5);
    ExpectPoint(marks.lines[2].q, 2.5, 5, 5);
    ASSERT_EQ(marks.bodies.size(), 2U);
    EXPECT_TRUE(marks.bodies[0].first);
    EXPECT_FALSE(marks.bodies[1].first);
    ExpectPrism(marks.bodies[1].second, 3.5, 4, 8, 1, 2, -4);
    ExpectPoint(marks.opens.at(0), -0.35, 0, -0.2);
    ExpectPoint(marks.closes.at(0), -0.25, 0, 0);
}

TEST(StockGeometry, BodiesHaveTheirLeastHeightAndExactRoomItsConvertedWidth) {
    constexpr int body[] = {0, 0, 0, 0, 0, 1};
    constexpr double prices[] = {5, 5, 5, 9, 9, 9, 1, 1, 1, 5, 4, 5};
    Data25D data = Series(prices, 4);
    data.leastHeight = 0.5;
    data.exact = true;
    Marks marks;
    WalkStocks(Scaled({1, 0, 0, 0}, {10, 10, 10, 0}, 0), data, StockParts(body), marks);
    ExpectPrism(marks.bodies[0].second, std::log10(1.5), 4, 4.75, std::log10(2.5 / 1.5), 2, 0.5);
    EXPECT_EQ(marks.bodies[1].second.dz, -1);
}

TEST(StockGeometry, EachFlagSwitchesItsPart) {
    for (int part = 0; part < 6; ++part) {
        int flags[6] = {};
        flags[part] = 1;
        Marks marks;
        WalkStocks(Linear(), Series(kPrices, 4), StockParts(flags), marks);
        EXPECT_EQ(marks.lines.size(), part < 3 ? 2U : 0U);
        EXPECT_EQ(marks.opens.size(), part == 3 ? 2U : 0U);
        EXPECT_EQ(marks.closes.size(), part == 4 ? 2U : 0U);
        EXPECT_EQ(marks.bodies.size(), part == 5 ? 2U : 0U);
    }
}

TEST(StockGeometry, LogarithmicValuesAndTheOtherOrientation) {
    constexpr int all[] = {1, 1, 1, 1, 1, 1};
    constexpr double prices[] = {10, 10, 10, 1000, 1000, 1000, 1, 1, 1, 100, 100, 100};
    Data25D data = Series(prices, 4);
    data.indAxis = 1;
    Marks marks;
    WalkStocks(Scaled({0, 0, 1, 0}, {10, 10, 10000, 0}, 2), data, StockParts(all), marks);
    ExpectPoint(marks.lines[0].p, 5, 2, 0);
    ExpectPoint(marks.lines[0].q, 5, 2, 3);
    ExpectPoint(marks.lines[1].p, 5, 1.5, 1);
    ExpectPrism(marks.bodies[0].second, 4, 1.5, 1, 2, 1, 1);
    ExpectPoint(marks.closes[0], 0, -0.25, 0);
}

struct Boxes {
    std::map<BoxPart, std::vector<Segment>> lines;
    std::map<BoxPart, std::vector<Prism>> boxes;
    std::vector<std::array<point3Dtype, 5>> medians;
    std::vector<point3Dtype> means;
    void Line(BoxPart part, const point3Dtype& p, const point3Dtype& q) {
        lines[part].push_back({p, q});
    }
    void Box(BoxPart part, const Prism& box) { boxes[part].push_back(box); }
    void Median(const std::array<point3Dtype, 5>& loop) { medians.push_back(loop); }
    void Mean(const point3Dtype& place) { means.push_back(place); }
};

TEST(BoxesGeometry, BoxesSpanTheQuartilesAndWhiskersReachTheExtremes) {
    constexpr double values[] = {1, 1, 1, 2, 2, 2, 4, 4, kNaN, 7, 7, 7, 9, 9, 9, 5, kNaN, 5};
    Boxes drawn;
    WalkBoxes(Linear(), Series(values, 6), true, drawn);
    EXPECT_EQ(drawn.medians.size(), 2U);
    EXPECT_EQ(drawn.means.size(), 2U);  // two faces of the first box; the second has no mean
    ExpectPrism(drawn.boxes[kLowerBox].at(0), 1.5, 4, 2, 1, 2, 2);
    ExpectPrism(drawn.boxes[kUpperBox].at(0), 1.5, 4, 4, 1, 2, 3);
    ExpectPoint(drawn.lines[kLowerWhisker].at(0).q, 2, 5, 1);
    ExpectPoint(drawn.lines[kLowerWhisker].at(1).p, 1.75, 5, 1);
    ExpectPoint(drawn.lines[kUpperWhisker].at(0).p, 2, 5, 7);
    ExpectPoint(drawn.lines[kUpperWhisker].at(1).q, 2.25, 5, 9);
    ExpectPoint(drawn.medians[0][0], 1.49, 3.99, 4);
    ExpectPoint(drawn.medians[0][2], 2.51, 6.01, 4);
    ExpectPoint(drawn.means[0], -0.3, -0.1, 0);
    ExpectPoint(drawn.means[1], -0.3, 0.1, 0);

    Boxes without;
    Data25D data = Series(values, 6);
    data.indAxis = 1;
    WalkBoxes(Linear(), data, false, without);
    EXPECT_TRUE(without.means.empty());
    EXPECT_EQ(without.boxes[kLowerBox].at(0).y, 1.5);
    ExpectPoint(without.lines[kUpperWhisker].at(1).q, 5, 2.25, 9);
}

TEST(SurfacesGeometry, PointsAreFlattenedBeforeTheyAreConverted) {
    constexpr double z[] = {1, 10, 100, 1000, kNaN, 1};
    const CPolysurface surface(3, 2, 1, 1, 2, 3, z, 0);
    const CTransform3D t = Scaled({0, 0, 1, 0}, {10, 10, 1000, 0}, 2);
    const auto third = [&](const Flattening& flat) {
        point3Dtype p[5];
        EXPECT_TRUE(std::isnan(SurfaceMesh(t, surface, flat).Points(0, 5, p)[4].x))
            << "no data stays none on a plane";
        return p[3];
    };
    ExpectPoint(third({}), 2, 2, 3);
    ExpectPoint(third({0, 100}), 2, 2, 2);
    ExpectPoint(third({2, 7}), 7, 2, 3);
    ExpectPoint(third({3, 7}), 2, 2, 3);
    const SurfaceMesh asItIs(Linear(), surface, {});
    point3Dtype room;
    EXPECT_EQ(asItIs.Points(2, 1, &room), surface.GetPSPoints() + 2);
    int n = 0;
    EXPECT_EQ(asItIs.Polygon(1, n)[2], 5);
    EXPECT_EQ(n, 4);
}

}  // namespace
}  // namespace varnel::test
