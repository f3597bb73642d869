#include "varnel/render/aux_shapes.h"

#include <cmath>
#include <numbers>

#include "tests/support/drawing_test.h"

namespace varnel::test {
namespace {

class AuxShapes : public DrawingTest {
 protected:
    /// The volume that the drawn triangles enclose: right when the solid is closed and every face
    /// runs counter-clockwise seen from outside.
    double Volume(const std::function<void()>& draw) {
        double volume = 0.0;
        for (const auto& t : Catch(draw).triangles)
            volume += t[0].x * (t[1].y * t[2].z - t[1].z * t[2].y) +
                      t[0].y * (t[1].z * t[2].x - t[1].x * t[2].z) +
                      t[0].z * (t[1].x * t[2].y - t[1].y * t[2].x);
        return volume / 6.0;
    }
};

constexpr double kTolerance = 1e-4;

TEST_F(AuxShapes, SolidsAreClosedAndFaceOutward) {
    using std::numbers::pi;
    const double r = 0.5;
    EXPECT_NEAR(Volume([&] { auxSolidCube(0.8); }), 0.512, kTolerance);
    EXPECT_NEAR(Volume([&] { auxSolidBox(0.8, 0.5, 1.2); }), 0.48, kTolerance);
    EXPECT_NEAR(Volume([&] { auxSolidBox(-0.8, 0.5, 1.2); }), 0.48, kTolerance);
    EXPECT_NEAR(Volume([&] { auxSolidOctahedron(r); }), 4.0 / 3.0 * r * r * r, kTolerance);
    EXPECT_NEAR(Volume([&] { auxSolidOctahedron(-r); }), 4.0 / 3.0 * r * r * r, kTolerance);
    const double icosahedronEdge = r / std::sin(2.0 * pi / 5.0);
    EXPECT_NEAR(Volume([&] { auxSolidIcosahedron(r); }),
                5.0 / 12.0 * (3.0 + std::sqrt(5.0)) * std::pow(icosahedronEdge, 3), kTolerance);
    const double tetrahedronEdge = 3.0 * 0.2 * std::sqrt(8.0 / 3.0);
    EXPECT_NEAR(Volume([&] { auxSolidTetrahedron(0.2); }),
                std::pow(tetrahedronEdge, 3) / (6.0 * std::sqrt(2.0)), kTolerance);
    const double dodecahedronEdge = 2.0 * r / 1.73 / std::numbers::phi;
    EXPECT_NEAR(Volume([&] { auxSolidDodecahedron(r); }),
                (15.0 + 7.0 * std::sqrt(5.0)) / 4.0 * std::pow(dodecahedronEdge, 3), kTolerance);
    // Round ones lie inside of what they stand for.
    const double torus = 2.0 * pi * pi * 0.6 * 0.2 * 0.2;
    EXPECT_NEAR(Volume([&] { auxSolidTorus(0.2, 0.6); }), 0.87 * torus, 0.04 * torus);
    const double sphere = 4.0 / 3.0 * pi * r * r * r;
    EXPECT_NEAR(Volume([&] { auxSolidSphere(r); }), 0.96 * sphere, 0.02 * sphere);
}

TEST_F(AuxShapes, WiresAreAsLargeAsTheirSolids) {
    const std::pair<std::function<void()>, std::function<void()>> shapes[] = {
        {[] { auxWireCube(0.8); }, [] { auxSolidCube(0.8); }},
        {[] { auxWireBox(0.8, 0.5, 1.2); }, [] { auxSolidBox(0.8, 0.5, 1.2); }},
        {[] { auxWireTorus(0.2, 0.6); }, [] { auxSolidTorus(0.2, 0.6); }},
        {[] { auxWireSphere(0.5); }, [] { auxSolidSphere(0.5); }},
        {[] { auxWireCylinder(0.3, 0.8); }, [] { auxSolidCylinder(0.3, 0.8); }},
        {[] { auxWireCone(0.3, 0.8); }, [] { auxSolidCone(0.3, 0.8); }},
    };
    GL().Rotate3D(40, 0);
    for (const auto& [wire, solid] : shapes) {
        const Drawn lines = Catch(wire);
        EXPECT_TRUE(lines.triangles.empty());
        const Box is(lines), should(Catch(solid));
        ExpectBox(is, should.left, should.right, should.bottom, should.top, 0.06);
    }
}

TEST_F(AuxShapes, NormalsFollowTheSurface) {
    // Light along +x alone: a vertex is as bright as its normal points there.
    GL().SetLightComponent(GL_AMBIENT, SetRGBD(0, 0, 0, 1));
    GL().SetLightComponent(LIGHT_MODEL_AMBIENT, SetRGBD(0, 0, 0, 1));
    GL().SetLightPosition({1.0, 0.0, 0.0, 0.0});
    GL().LoadLight(GL_AMBIENT);
    GL().LoadLight(GL_DIFFUSE);
    GL().LoadLight(GL_POSITION);
    GL().SetColorMode(1);
    GL().SetCurrentColor(SetRGBD(1, 1, 1, 1));
    const auto expectBrightness = [this](const std::function<void()>& draw, auto normalX) {
        for (const auto& t : Catch(draw).triangles)
            for (const DrawnVertex& v : t)
                EXPECT_NEAR(v.r, std::max(0.0, normalX(t, v)), 0.02);
    };
    const auto flat = [](const auto& t, const DrawnVertex&) {
        const double u[3] = {t[1].x - t[0].x, t[1].y - t[0].y, t[1].z - t[0].z};
        const double w[3] = {t[2].x - t[0].x, t[2].y - t[0].y, t[2].z - t[0].z};
        const double n[3] = {u[1] * w[2] - u[2] * w[1], u[2] * w[0] - u[0] * w[2],
                             u[0] * w[1] - u[1] * w[0]};
        return n[0] / std::hypot(n[0], n[1], n[2]);
    };
    expectBrightness([] { auxSolidCube(0.5); }, flat);
    expectBrightness([] { auxSolidTetrahedron(0.2); }, flat);
    expectBrightness([] { auxSolidOctahedron(0.5); }, flat);
    expectBrightness([] { auxSolidIcosahedron(0.5); }, flat);
    expectBrightness([] { auxSolidDodecahedron(0.5); }, flat);
    expectBrightness([] { auxSolidSphere(0.5); },
                     [](const auto&, const DrawnVertex& v) { return v.x / 0.5; });
    expectBrightness([] { auxSolidTorus(0.2, 0.6); },
                     [](const auto&, const DrawnVertex& v) {
                         const double ring = std::hypot(v.x, v.y);
                         return v.x / ring * (ring - 0.6) / 0.2;
                     });
}

}  // namespace
}  // namespace varnel::test
