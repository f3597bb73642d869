// Normals at the points of a mesh: weights, edges that stay sharp, and what is no data.
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "varnel/render/detail/mesh_normals.h"

namespace varnel::detail {
namespace {

/// Two quadrilaterals that meet along x = 0, the left one in the plane z = 0 and `width` wide, the
/// right one rising to z = rise at x = 1.
struct Fold : MeshSource {
    Fold(double width, double rise)
        : points{{-width, 0, 0, 0}, {0, 0, 0, 0}, {1, 0, rise, 0},
                 {-width, 1, 0, 0}, {0, 1, 0, 0}, {1, 1, rise, 0}} {}

    std::vector<point3Dtype> points;
    std::vector<std::vector<int>> polygons = {{0, 1, 4, 3}, {1, 2, 5, 4}};

    int NumPoints() const override { return static_cast<int>(points.size()); }
    int NumPolygons() const override { return static_cast<int>(polygons.size()); }
    const point3Dtype* Points(int first, int, point3Dtype*) const override {
        return points.data() + first;
    }
    const int* Polygon(int k, int& n) const override {
        const std::vector<int>& polygon = polygons[static_cast<std::size_t>(k)];
        n = static_cast<int>(polygon.size());
        return polygon.data();
    }
    void Colors(int, RGBDType&, RGBDType&) const override {}
};

TEST(MeshNormals, AreWeightedAndSharpBeyondTheCrease) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    struct Case {
        const char* name;
        double width, rise, scaleZ, crease;
        double left, right;  ///< slope -x / z of the normal at the fold, by polygon
    };
    for (const Case& c :
         {Case{"flat", 1, 0, 1, 60, 0, 0},
          // The right side's area vector is (-rise, 0, 1), the left one's (0, 0, width).
          Case{"even", 1, 1, 1, 60, 0.5, 0.5}, Case{"by area", 3, 1, 1, 60, 0.25, 0.25},
          Case{"an edge", 1, 2, 1, 60, 0, 2}, Case{"a wider crease", 1, 2, 1, 80, 1, 1},
          Case{"as high as it is drawn", 1, 2, 0.5, 60, 1, 1},
          Case{"a hole", 1, kNaN, 1, 60, 0, 0}}) {
        SCOPED_TRACE(c.name);
        const MeshNormals normals(Fold(c.width, c.rise), {1.0, 1.0, c.scaleZ}, c.crease);
        const Vec3 left = normals.At(0, 4);
        const Vec3 right = normals.At(1, 4);
        EXPECT_GT(left.z, 0.0);
        EXPECT_NEAR(-left.x / left.z, c.left, 1e-6);
        EXPECT_NEAR(-right.x / right.z, c.right, 1e-6);
        EXPECT_NEAR(normals.At(0, 0).x, 0.0, 1e-6) << "away from the fold";
    }
}

}  // namespace
}  // namespace varnel::detail
