#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "tests/support/gl_fixture.h"
#include "varnel/surface/contour.h"
#include "varnel/surface/polysurface.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

class ContourDrawing : public test::GLFixture {};

TEST_F(ContourDrawing, DrawsEachLevelFlatInItsColour) {
    // z = y: level lines are level on the screen too, two pieces a cell.
    std::vector<double> z;
    for (int r = 0; r < 5; ++r)
        z.insert(z.end(), 5, r / 2.0 - 1);
    CPolysurface surface(5, 5, -1.0, -1.0, 1.0, 1.0, z.data(), 1);
    const double levels[3] = {-0.25, 0.3, 7};
    const RGBDType colors[4] = {{1, 0, 0, 1}, {0, 0, 1, 1}, {0, 1, 0, 1}, {}};
    CTransform3D transform(&GL());
    const auto primitives = test::Feedback(
        [&] { CContour3D contour(&GL(), &transform, &surface, levels, colors, 3, 0.5, 1); });
    EXPECT_EQ(test::CountLines(primitives), 16);
    EXPECT_EQ(test::CountPolygons(primitives), 0);
    int red = 0, blue = 0;
    for (const auto& line : primitives) {
        for (const auto& v : line.vertices) {
            const bool isRed = v.r == 1.0F;
            (isRed ? red : blue) += 1;
            EXPECT_NEAR(v.y, kSize / 2.0 * (1 + levels[isRed ? 0 : 1]), 0.01);
            EXPECT_NEAR(v.z, 0.75, 1e-3);
        }
    }
    EXPECT_EQ(red, 16);
    EXPECT_EQ(blue, 16);

    Draw([&] { CContour3D contour(&GL(), &transform, &surface, levels, colors, 3, 0.5, 1); });
    EXPECT_NEAR(Inked(), 2 * kSize, 4);
}

}  // namespace
}  // namespace varnel
