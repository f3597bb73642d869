// The transform, against matrices and places computed here step by step.
#include "varnel/transform/transform.h"

#include <array>
#include <cmath>
#include <cstring>
#include <numbers>

#include "tests/support/gl_fixture.h"
#include "varnel/platform/detail/gl_context.h"
#include "varnel/platform/files.h"

namespace varnel {

struct TransformTestAccess {
    static double PositiveRotate(double angle) { return CTransform3D::PositiveRotate(angle); }
};

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
        EXPECT_NEAR(box.x, v[0], 1e-12);
        EXPECT_NEAR(box.y, v[1], 1e-12);
        EXPECT_NEAR(box.z, v[2], 1e-12);
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
    EXPECT_EQ(out.z, 0.5);
    EXPECT_EQ(t.CVTWS(3, 100), 2);
    EXPECT_EQ(t.CVTWS(5, 100), 100);
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
    EXPECT_EQ(plain.IsScaleInverted(0), 1);
    EXPECT_EQ(plain.IsScaleInverted(4), 0);
    EXPECT_EQ(plain.IsScaleInverted(-1), 0);
    EXPECT_EQ(plain.GetAxisWorkingRange(0), -10);
    EXPECT_EQ(plain.GetAxisRange(7), 0);
    plain.SetAxisScaleMode(6, 1);
    plain.SetAxisScaleMode(-1, 1);
    EXPECT_EQ(plain.GetAxisScaleMode(6), 0);
    test::ExpectError(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_TRANSFORM3D, "InitTransform",
                      [&] { plain.InitTransform(nullptr); });
}

TEST(TransformAngles, NegativeOnesGainOneTurnAndLargeOnesKeepTheSettledFormula) {
    EXPECT_EQ(TransformTestAccess::PositiveRotate(-30), 330);
    EXPECT_EQ(TransformTestAccess::PositiveRotate(-400), -40);
    EXPECT_EQ(TransformTestAccess::PositiveRotate(360), 360);
    EXPECT_NEAR(TransformTestAccess::PositiveRotate(450), 450 - 129600, 1e-9);
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

    CTransform3D back;
    MemoryFile copy(file.GetBytes());
    back.Load(&copy);
    EXPECT_EQ(back.GetSelfID(), t.GetSelfID());
    MemoryFile again;
    back.Save(&again);
    EXPECT_EQ(again.GetBytes(), file.GetBytes());

    back.Save(nullptr);
    const auto full = OpenOutputFile("/dev/full");
    ASSERT_NE(full, nullptr);
    test::ExpectError(ERR3D_DISK_IO, ERR3DCLASS_TRANSFORM3D, "Save", [&] {
        for (int i = 0; i < 200; ++i)
            back.Save(full.get());  // more than any buffer
    });
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
