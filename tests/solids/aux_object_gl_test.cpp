#include "varnel/solids/aux_object.h"

#include "tests/support/drawing_test.h"
#include "tests/support/record_bytes.h"
#include "tests/support/values.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

TEST(AuxObject, RecordLeavesTheOutlineOut) {
    const auto record = test::RecordBytes().Distinct("5i 4d 12d 4d d");
    test::ExpectRecordRules<CAuxObj3D>(record, ERR3DCLASS_AUXOBJ3D);
    CAuxObj3D object;
    object.SetOutlineMode(1);
    test::ExpectLoadsAndSaves(object, record);
    const int ints[] = {CAuxObj3D::nSelfID, object.GetTransformID(), object.GetAuxObjType(),
                        object.GetSolidType(0), object.GetColorMode()};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(ints[i], i + 1);
    EXPECT_EQ(test::Row(object.GetScale(), object.GetLocation().y, object.GetRotation().z,
                        object.GetColor().b, object.GetLineWidth(), object.GetOutlineMode()),
              test::Row(9, 11, 20, 24, 26, 1));
    test::ExpectFreshAfter(object, &CAuxObj3D::InitAuxObjDefaults);
    EXPECT_EQ(object.GetOutlineMode(), 0);
}

class AuxObjects : public test::DrawingTest {
 protected:
    static constexpr double kTolerance = 1e-5;

    AuxObjects() : m_Transform(&GL(), {0, 0, 0, 0}, {10, 10, 10, 0}) {}

    test::Drawn DrawObject(CAuxObj3D& object) {
        return Catch([&] { object.DrawAuxObj(); });
    }

    CTransform3D m_Transform;
};

TEST_F(AuxObjects, StandsWhereItWasPut) {
    CAuxObj3D sphere(&GL(), &m_Transform, 1);
    EXPECT_EQ(sphere.GetTransformID(), m_Transform.GetSelfID());
    sphere.SetLocation({7.5, 5.0, 2.5, 0.0});
    const test::Box box(DrawObject(sphere));
    EXPECT_NEAR(box.CentreX(), 0.25, kTolerance);
    EXPECT_NEAR(box.CentreY(), -0.25, kTolerance);
    EXPECT_NEAR(box.right - box.left, 0.1, 1e-3);

    CAuxObj3D bar(&GL(), &m_Transform, 3);
    bar.SetSizeParameters(2.0, 4.0, 8.0);
    bar.SetScale(0.1);
    bar.SetRotation({0.0, 90.0, 0.0, 0.0});
    const test::Box turned(DrawObject(bar));
    test::ExpectNear(test::Row(turned.right, turned.top, turned.back), test::Row(0.4, 0.1, 0.2),
                     kTolerance);
}

TEST_F(AuxObjects, OutlinesAreBlackAndForEdgedShapesOnly) {
    for (int type = 0; type <= 11; ++type) {
        SCOPED_TRACE(type);
        CAuxObj3D object(&GL(), &m_Transform, type);
        object.SetSizeParameters(0.5, 1.0, 1.0);
        object.SetColor(SetRGBD(1, 0, 0, 1));
        object.SetColorMode(0);
        object.SetOutlineMode(1);
        const test::Drawn drawn = DrawObject(object);
        const bool edged = type == 2 || type == 3 || (type >= 5 && type <= 9);
        EXPECT_EQ(drawn.triangles.empty(), type == 0 || type == 11);
        EXPECT_EQ(!drawn.lines.empty(), edged);
        for (const auto& line : drawn.lines)
            EXPECT_EQ(line[0].r, 0.0);
        for (const auto& t : drawn.triangles)
            EXPECT_NEAR(t[0].r, 1.0, 1e-6);
    }
}

TEST_F(AuxObjects, ColorModeStaysOrEndsFlatAfterAWire) {
    CAuxObj3D object(&GL(), &m_Transform, 6);
    object.DrawAuxObj();
    EXPECT_EQ(GL().GetColorMode(), 1);
    object.SetOutlineMode(1);
    object.DrawAuxObj();
    EXPECT_EQ(GL().GetColorMode(), 0);
    GL().SetColorMode(1);
    object.SetSolidType(0);
    object.SetColor(SetRGBD(0, 1, 0, 1));
    const test::Drawn wire = DrawObject(object);
    EXPECT_TRUE(wire.triangles.empty());
    ASSERT_EQ(wire.lines.size(), 60U);
    EXPECT_NEAR(wire.lines[0][0].g, 1.0, 1e-6);
    EXPECT_EQ(GL().GetColorMode(), 0);
}

TEST_F(AuxObjects, OutlinesAreSeenWhole) {
    CAuxObj3D cube(&GL(), &m_Transform, 2);
    cube.SetColor(SetRGBD(1, 0, 0, 1));
    cube.SetColorMode(0);
    cube.SetOutlineMode(1);
    cube.SetScale(1.0);
    m_Transform.SetRotate({-20, 0, 25, 0});
    const auto blackPixels = [&] {
        Draw([&] { cube.DrawAuxObj(); });
        int black = 0;
        for (int y = 0; y < kSize; ++y)
            for (int x = 0; x < kSize; ++x) {
                const RGBQUAD p = Pixel(x, y);
                black += p.rgbRed == 0 && p.rgbGreen == 0 && p.rgbBlue == 0;
            }
        return black;
    };
    const int withOffset = blackPixels();
    GL().SetFrameOffset(0);
    const int without = blackPixels();
    cube.SetSolidType(0);
    cube.SetColor(SetRGBD(0, 0, 0, 1));
    const int wire = blackPixels();
    // Of the wire's twelve edges the solid hides three, which are seen shorter or longer.
    EXPECT_GT(withOffset, wire * 7 / 10);
    EXPECT_LT(withOffset, wire * 8 / 10);
    EXPECT_LT(without, withOffset);
}

TEST_F(AuxObjects, BindingChecksContextThenTransform) {
    CAuxObj3D object;
    test::ExpectError(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_AUXOBJ3D, "InitAuxObj",
                      [&] { object.InitAuxObj(nullptr, &m_Transform); });
    test::ExpectError(ERR3D_TRANSFORM_PARAMETER, ERR3DCLASS_AUXOBJ3D, "InitAuxObj",
                      [&] { object.InitAuxObj(&GL(), nullptr); });
    object.SetLocation({1, 2, 3, 0});
    object.DrawAuxObj();
    EXPECT_EQ(object.GetLocation().x, 1.0);
}

}  // namespace
}  // namespace varnel
