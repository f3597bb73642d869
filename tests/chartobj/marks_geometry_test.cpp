#include "varnel/chartobj/detail/marks_geometry.h"

#include <cmath>

#include "tests/chartobj/geometry_fixture.h"

namespace varnel::test {
namespace {

using namespace detail;

struct Lines : std::vector<std::array<point3Dtype, 2>> {
    void operator()(std::size_t, const point3Dtype& p, const point3Dtype& q) { push_back({p, q}); }
};

TEST(MarksGeometry, ErrorBarsReachTheirConvertedEndsAndHaveCaps) {
    constexpr point3Dtype points[] = {{5, 2, 100, 0}, {6, 2, 10, 0}, {7, 2, 10, 0}};
    constexpr double below[] = {90, 20, kNaN}, above[] = {-900, 90, 1};
    const CTransform3D t = Scaled({0, 0, 1, 0}, {10, 10, 1000, 0}, 2);
    Lines lines;
    WalkErrorBars(t, points, below, above, 2, 2, lines);
    ASSERT_EQ(lines.size(), 6U);  // the third has no error below
    ExpectPoint(lines[0][0], 5, 2, 1);
    ExpectPoint(lines[0][1], 5, 2, 3);
    ExpectPoint(lines[1][0], 4, 2, 1);  // a cap is 0.2 of the box's device unit, which is 10 here
    ExpectPoint(lines[2][1], 6, 2, 3);
    ExpectPoint(lines[3][0], 6, 2, 0);  // what has no logarithm ends at the axis

    Lines across;
    WalkErrorBars(Linear(), std::span(points, 1), below, above, 0, 2, across);
    ExpectPoint(across[1][0], -85, 2, 99);
    WalkErrorBars(t, points, below, above, 3, 2, across);
    EXPECT_EQ(across.size(), 3U);
}

TEST(MarksGeometry, ArrowHeadsAreClosedAndTurnedOutward) {
    const CTransform3D t = Scaled({0, 0, 0, 0}, {10, 100, -10, 0});
    for (const point3Dtype& vector :
         {point3Dtype{4, 0, 0, 0}, {0, 40, 0, 0}, {0, 0, -4, 0}, {1, 5, -2, 0}}) {
        const Arrow arrow(t, {1, 2, -3, 0}, vector, 1.0, 0.1);
        std::vector<std::vector<point3Dtype>> faces;
        const auto keep = [&](std::span<const point3Dtype> ring) {
            faces.emplace_back(ring.begin(), ring.end());
        };
        arrow.WalkCone(keep);
        ASSERT_EQ(faces.size(), 13U);
        point3Dtype sum, middle;
        for (const auto& ring : faces) {
            ExpectPoint(ring.back(), ring.front().x, ring.front().y, ring.front().z);
            // The vector areas of a closed solid add up to nothing.
            for (std::size_t k = 1; k + 2 < ring.size(); ++k) {
                point3Dtype normal;
                CalcNormal(ring[0], ring[k], ring[k + 1], normal);
                sum = Moved(sum, normal);
            }
            middle = Moved(middle, ring[1], 1.0 / 13);
        }
        ExpectPoint(sum, 0, 0, 0);
        for (const auto& ring : faces) {
            point3Dtype normal;
            CalcNormal(ring[0], ring[1], ring[2], normal);
            const point3Dtype out = Moved(ring[0], arrow.GetNeck(), -1.0);
            EXPECT_GT(normal.x * out.x + normal.y * out.y + normal.z * out.z, -1e-9);
        }
        // A tenth of a device unit, which is half the box.
        const point3Dtype tip = {1 + vector.x, 2 + vector.y, -3 + vector.z, 0};
        const point3Dtype neck = arrow.GetNeck();
        EXPECT_NEAR(
            std::hypot((tip.x - neck.x) / 10, (tip.y - neck.y) / 100, (tip.z - neck.z) / 10), 0.1,
            1e-12);
        faces.clear();
        arrow.WalkFlatHead({0, 0, 1, 0}, keep);
        ASSERT_EQ(faces.size(), 1U);
        ExpectPoint(faces[0][0], tip.x, tip.y, tip.z);
    }
    int faces = 0;
    Arrow(t, {1, 2, -3, 0}, {0, 0, 0, 0}, 1.0, 0.1).WalkCone([&](const auto&) { ++faces; });
    EXPECT_EQ(faces, 0);
    CTransform3D fitted = Scaled({0, 0, 0, 0}, {10, 100, -10, 0});
    fitted.SetFit({0.25, 1, 0.5, 0}, {});
    EXPECT_NEAR(Arrow(fitted, {}, {4, 0, 0, 0}, 1.0, 0.1).GetNeck().x, 2.0, 1e-12);
}

TEST(MarksGeometry, WallBandsStayInTheBox) {
    const CTransform3D t = Scaled({0, 0, 1, 0}, {10, 20, 1000, 0}, 2);
    WallBand band;
    ASSERT_TRUE(FindWallBand(t, 2, 100, -5, 4, band));  // on the far x-z wall
    ExpectPoint(band.corners[0], 0, 20, 0);
    ExpectPoint(band.corners[1], 10, 20, 0);
    ExpectPoint(band.corners[2], 10, 20, 2);
    ExpectPoint(band.corners[3], 0, 20, 2);
    ASSERT_TRUE(FindWallBand(t, 0, 8, 99, 0, band));  // on the floor
    ExpectPoint(band.corners[0], 8, 0, 0);
    ExpectPoint(band.corners[2], 10, 20, 0);
    EXPECT_FALSE(FindWallBand(t, 0, 11, 12, 0, band));
    EXPECT_FALSE(FindWallBand(t, 2, 10, 20, 0, band));
    EXPECT_FALSE(FindWallBand(t, 2, 10, 20, 6, band));
    EXPECT_FALSE(FindWallBand(t, 3, 10, 20, 1, band));
}

}  // namespace
}  // namespace varnel::test
