// The transform, against matrices and places computed here step by step.
#include "varnel/transform/transform.h"

#include <array>
#include <cmath>
#include <cstring>
#include <numbers>

#include "tests/support/gl_fixture.h"
#include "tests/support/record_bytes.h"
#include "tests/support/values.h"
#include "varnel/foundation/planes.h"
#include "varnel/platform/detail/gl_context.h"
#include "varnel/platform/files.h"

namespace varnel {
namespace {

using Vector = std::array<double, 3>;

Vector Turned(const Vector& v, int axis, double degrees) {
    const double s = std::sin(degrees * std::numbers::pi / 180);
    const double c = std::cos(degrees * std::numbers::pi / 180);
    const auto a = static_cast<std::size_t>((axis + 1) % 3);
    const auto b = static_cast<std::size_t>((axis + 2) % 3);
    Vector out = v;
    out[a] = c * v[a] - s * v[b];
    out[b] = s * v[a] + c * v[b];
    return out;
}

Vector Apply(const double* m, const Vector& v) {
    Vector out;
    for (std::size_t row = 0; row < 3; ++row)
        out[row] = m[row] * v[0] + m[row + 4] * v[1] + m[row + 8] * v[2] + m[row + 12];
    return out;
}

class Transform : public test::GLFixture {};

TEST_F(Transform, PointsGoThroughBoxRotationOffsetAndTurn) {
    CTransform3D t(&GL(), {10, -5, 100, 0}, {20, 5, 400, 0});
    t.SetRotate({-20, 7, 25, 0});
    t.SetOffset({0.1, -0.2, 0.05, 0});
    t.SetChartRect({0.7, 0.4, 0.6, 0});
    t.ChartTransform();
    for (const Vector& p : {Vector{10, -5, 100}, {20, 5, 400}, {12.5, 4, 333}}) {
        Vector v = {((p[0] - 10) / 10 * 2 - 1) * 0.7, ((p[1] + 5) / 10 * 2 - 1) * 0.4,
                    ((p[2] - 100) / 300 * 2 - 1) * 0.6};
        point3Dtype box;
        t.NormalizePoint({p[0], p[1], p[2], 8}, box);
        test::ExpectNear(test::Row(box.x, box.y, box.z), test::Row(v[0], v[1], v[2]), 1e-12);
        EXPECT_EQ(box.w, 8);
        v = Turned(Turned(Turned(v, 2, 25), 1, 7), 0, -20);
        v = {v[0] + 0.1, v[1] - 0.2, v[2] + 0.05};
        v = Turned(v, 0, -90);
        const Vector ours = Apply(t.GetGraphTransform(), p);
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_NEAR(ours[i], v[i], 1e-9);
    }
    double current[16];
    GL().GetModelView(current);
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(current[i], t.GetGraphTransform()[i]);

    t.TextTransform();
    const Vector text = Apply(t.GetFontTransform(), {0.3, 0.2, 0.1});
    Vector v = Turned(Turned(Turned({0.3, 0.2, 0.1}, 2, 25), 1, 7), 0, -20);
    v = Turned({v[0] + 0.1, v[1] - 0.2, v[2] + 0.05}, 0, -90);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(text[i], v[i], 1e-12);
}

TEST_F(Transform, LogarithmicAxes) {
    CTransform3D t(&GL(), {0, 1, 0, 0}, {1000, 100, 1, 0});
    t.SetAxisScaleMode(0, 1);
    t.SetAxisScaleMode(1, 7);
    t.ChartTransform();
    point3Dtype lo;
    point3Dtype hi;
    t.GetWorkingScale(lo, hi);
    EXPECT_EQ(lo.x, 0);
    EXPECT_NEAR(hi.x, 3, 1e-12);
    EXPECT_EQ(t.GetAdjustedScaleMin().x, 1) << "a limit of 0 becomes 1";
    EXPECT_NEAR(t.GetAdjustedScaleMax().x, 1000, 1e-9);
    point3Dtype out;
    t.NormalizePoint({10, 10, 0.5, 0}, out);
    EXPECT_NEAR(out.x, -0.5 + 1.0 / 3, 1e-12);
    EXPECT_NEAR(out.y, 0, 1e-12);
    // Back from the box it is interpolated between the raw limits: no inverse on a log axis.
    t.UnNormalizePoint({0, 0, 0, 0}, out);
    EXPECT_EQ(out.y, std::pow(10.0, 50.5));
    EXPECT_EQ(test::Row(out.z, t.CVTWS(3, 100), t.CVTWS(5, 100)), test::Row(0.5, 2, 100));
    EXPECT_NEAR(t.CVFWS(4, 2), 100, 1e-12);
    EXPECT_EQ(t.LogLimits(2, -4), -4);
    EXPECT_EQ(t.LogLimits(0, -4), 1);
    EXPECT_EQ(t.LogLimits(3, -4), -4) << "entry 3 is an entry of its own";
}

TEST_F(Transform, LimitsRangesAndIdentifiers) {
    const CTransform3D first;
    CTransform3D plain;
    EXPECT_EQ(plain.GetSelfID(), first.GetSelfID() + 1);
    EXPECT_EQ(plain.GetScaleMax().x, 1);
    const CTransform3D drawn(&GL());
    EXPECT_EQ(drawn.GetScaleMin().z, -1);
    plain.SetScale({10, 0, 3, 0}, {0, 10, 3, 0});
    plain.ChartTransform();  // without a context: the limits alone
    EXPECT_EQ(
        test::Row(plain.IsScaleInverted(0), plain.IsScaleInverted(4), plain.IsScaleInverted(-1),
                  plain.GetAxisWorkingRange(0), plain.GetAxisRange(7)),
        test::Row(1, 0, 0, -10, 0));
    plain.SetAxisScaleMode(6, 1);
    plain.SetAxisScaleMode(-1, 1);
    EXPECT_EQ(plain.GetAxisScaleMode(6), 0);
    test::ExpectError(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_TRANSFORM3D, "InitTransform",
                      [&] { plain.InitTransform(nullptr); });
}

TEST(TransformAngles, NegativeOnesGainOneTurnAndLargeOnesKeepTheSettledFormula) {
    EXPECT_EQ(CTransform3D::PositiveRotate(-30), 330);
    EXPECT_EQ(CTransform3D::PositiveRotate(-400), -40);
    EXPECT_EQ(CTransform3D::PositiveRotate(360), 360);
    EXPECT_NEAR(CTransform3D::PositiveRotate(450), 450 - 129600, 1e-9);
}

TEST_F(Transform, ViewsAreAzimuthAndElevationOfTheViewer) {
    // Where the ends of the axes stand on the screen: across, up, and away from the viewer.
    const struct {
        int rightHanded;
        double azimuth, elevation;
        Vector x, y, z;
    } views[] = {
        {1, -90, 0, {1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
        {1, -90, 90, {1, 0, 0}, {0, 1, 0}, {0, 0, -1}},
        {1, 0, 0, {0, 0, -1}, {1, 0, 0}, {0, 1, 0}},
        {0, 90, 0, {1, 0, 0}, {0, 0, -1}, {0, 1, 0}},
        {0, 0, 0, {0, 0, -1}, {-1, 0, 0}, {0, 1, 0}},
    };
    for (const auto& view : views) {
        CTransform3D t(&GL());
        t.SetRightHanded(view.rightHanded);
        t.SetChartRect({1, 1, 1, 0});
        t.SetView(view.azimuth, view.elevation);
        t.ChartTransform();
        const Vector expected[3] = {view.x, view.y, view.z};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            Vector end{};
            end[axis] = 1;
            const Vector at = Apply(t.GetGraphTransform(), end);
            for (std::size_t i = 0; i < 3; ++i)
                EXPECT_NEAR(at[i], expected[axis][i], 1e-12) << view.azimuth << " axis " << axis;
        }
        EXPECT_EQ(t.IsScaleInverted(1), view.rightHanded);
        for (const auto& [azimuth, elevation] : {std::pair{-60.0, 30.0}, {135, -20}, {-90, 90}}) {
            double a = 0;
            double e = 0;
            t.SetView(azimuth, elevation);
            t.GetView(a, e);
            EXPECT_NEAR(a, azimuth, 1e-12);
            EXPECT_NEAR(e, elevation, 1e-12);
        }
    }
}

TEST_F(Transform, PixelsAndDataLeadToEachOther) {
    for (const int rightHanded : {0, 1}) {
        CTransform3D t(&GL(), {10, 1, 100, 0}, {20, 1000, 400, 0});
        double x = 0;
        double y = 0;
        point3Dtype data;
        EXPECT_FALSE(t.DataToPixel({10, 10, 100, 0}, x, y)) << "nothing was drawn";
        EXPECT_FALSE(t.PixelToData(10, 10, 0, data));
        t.SetAxisScaleMode(1, SCALE_LOGARITHMIC);
        t.SetRightHanded(rightHanded);
        t.SetTrueProportions(1);
        t.SetView(-60, 30);
        t.SetDrawnViewport({100, 50, 600, 300}, 500);
        t.ChartTransform();
        for (int plane = 0; plane < 6; ++plane) {
            point3Dtype p{12.5, 30, 333, 0};
            coordassign(
                p, GetNormalAxis(plane),
                GetCoord3D(plane < 3 ? t.GetScaleMin() : t.GetScaleMax(), GetNormalAxis(plane)));
            ASSERT_TRUE(t.DataToPixel(p, x, y));
            ASSERT_TRUE(t.PixelToData(x, y, plane, data));
            for (int axis = 0; axis < 3; ++axis)
                EXPECT_NEAR(GetCoord3D(data, axis) / GetCoord3D(p, axis), 1, 1e-10);
        }
        // The middle of the box is that of the viewport, whose upper edge is 150 pixels down.
        ASSERT_TRUE(t.DataToPixel({15, std::sqrt(1000.0), 250, 0}, x, y));
        EXPECT_NEAR(x, 400, 1e-9);
        EXPECT_NEAR(y, 300, 1e-9);
        t.SetView(-90, 0);
        t.ChartTransform();
        EXPECT_FALSE(t.PixelToData(x, y, 0, data)) << "the floor is seen edge-on";
        EXPECT_TRUE(t.PixelToData(x, y, 1, 50.0, data));
        EXPECT_NEAR(data.y, 50, 1e-9);
    }
}

TEST_F(Transform, TheBoxInProportionAndFitted) {
    CTransform3D t(&GL(), {0, 0, 0, 0}, {30, 10, 5, 0});
    t.SetChartRect({0.6, 0.5, 0.5, 0});
    t.SetBoxProportions(1, 1, 0.7);
    EXPECT_NEAR(t.GetDrawnRect().y, 0.6, 1e-12);
    EXPECT_NEAR(t.GetDrawnRect().z, 0.42, 1e-12);
    t.SetBoxProportionsAsData(0.5);
    t.ChartTransform();
    EXPECT_NEAR(t.GetDrawnRect().y, 0.2, 1e-12);
    EXPECT_NEAR(t.GetDrawnRect().z, 0.3, 1e-12);
    t.SetFit({0.9, 0.8, 0.7, 0}, {0.1, 0, -0.1, 0});
    t.ChartTransform();
    EXPECT_NEAR(Apply(t.GetGraphTransform(), {30, 5, 0})[0], 1.0, 1e-12);
    EXPECT_EQ(t.GetChartRect().x, 0.6) << "what was set stays";
    EXPECT_EQ(t.GetOffset().x, 0);
    t.ClearFit();
    t.SetBoxProportions(0, 0, 0);
    EXPECT_EQ(t.GetDrawnRect().y, 0.5);
    test::ExpectError(ERR3D_PARAMETER, ERR3DCLASS_TRANSFORM3D, "SetBoxProportions",
                      [&] { t.SetBoxProportions(1, -1, 1); });
}

TEST_F(Transform, RecordHasItsLayoutAndComesBack) {
    CTransform3D t(&GL(), {1, 2, 3, 0}, {4, 5, 6, 0});
    t.SetRotate({-20, 0, 25, 0});
    t.SetAxisScaleMode(5, 3);
    t.SetFontAspect(0.75);
    t.ChartTransform();
    MemoryFile file;
    t.Save(&file);
    ASSERT_EQ(file.GetBytes().size(), 660U);
    const auto doubleAt = [&](std::size_t offset) {
        double v;
        std::memcpy(&v, file.GetBytes().data() + offset, 8);
        return v;
    };
    EXPECT_EQ(doubleAt(4 + 256 + 64), -20);        // rotation
    EXPECT_EQ(doubleAt(4 + 256 + 5 * 32), 1);      // scale minimum
    EXPECT_EQ(doubleAt(4 + 256 + 7 * 32 + 8), 2);  // working minimum, before the adjusted one
    EXPECT_EQ(file.GetBytes()[4 + 256 + 11 * 32 + 20], 3);
    EXPECT_EQ(doubleAt(644), 0.75);

    test::ExpectRecordRules<CTransform3D>(test::RecordBytes().Distinct("i 76d 6i 3d"),
                                          ERR3DCLASS_TRANSFORM3D);
}

TEST_F(Transform, ComputingMatricesLeavesTheThreadsContextAlone) {
    CTransform3D t(&GL(), {0, 0, 0, 0}, {10, 10, 10, 0});
    GL().MakeNonCurrent();
    t.ChartTransform();
    t.TextTransform();
    t.SetClipping(0);
    EXPECT_EQ(GLContext::Current(), nullptr) << "a host's own context would be gone";
}

TEST_F(Transform, ClippingUsesTheWorkingLimits) {
    CTransform3D t(&GL(), {0, 0, 0, 0}, {10, 10, 10, 0});
    t.SetChartRect({1, 1, 1, 0});
    t.ChartTransform();
    t.SetClipping(1);
    EXPECT_TRUE(glIsEnabled(GL_CLIP_PLANE0));
    GL().SetLineStyle3D(0, 1, {0, 0, 0, 1});
    const auto e = test::ExtentOf(test::Feedback([&] {
        GL().LineAbs3D({-30, 5, 5, 0}, {30, 5, 5, 0});
    }));
    EXPECT_NEAR(e.left, 100 * 0.00123456, 2e-3);
    EXPECT_NEAR(e.right, 100, 0.2);
    t.SetClipping(0);
    EXPECT_FALSE(glIsEnabled(GL_CLIP_PLANE0));
}

}  // namespace
}  // namespace varnel
