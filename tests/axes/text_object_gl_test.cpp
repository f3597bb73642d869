#include "varnel/axes/text_object.h"

#include <cmath>

#include "tests/support/drawing_test.h"
#include "tests/support/values.h"
#include "varnel/render/font.h"
#include "varnel/transform/transform.h"

namespace varnel::test {
namespace {

constexpr double kFontSize = 0.2;
constexpr double kTolerance = 2e-5;

point3Dtype Point(double x, double y, double z) {
    return {x, y, z, 0.0};
}

class TextDrawing : public DrawingTest {
 protected:
    TextDrawing() : m_Transform(&GL()) {
        EXPECT_NE(GL().RegisterFont("Arial", kFontSize, 700, 0, 128), 0);
        m_Transform.ChartTransform();
        m_Text.InitTextObj(&GL(), GL().GetFont(), &m_Transform);
    }

    Drawn DrawText() {
        return Catch([this] { m_Text.OutTextNorm(); });
    }
    Box DrawnBox() { return Box(DrawText()); }

    CTransform3D m_Transform;
    CTextObj3D m_Text;
};

TEST_F(TextDrawing, JustificationPutsTheCornersThere) {
    constexpr double aspect = 0.75;
    m_Transform.SetFontAspect(aspect);
    m_Text.SetString("HH");
    m_Text.SetNormLocation(Point(0.1, 0.0, -0.2));
    const double width = m_Text.TextWidth();
    const double height = m_Text.TextHeight();
    EXPECT_NEAR(width, GL().GetFont()->TextWidth3D("HH") * aspect, 1e-12);
    // An H does not fill its cell: there is a little air at its sides.
    const double bearing = DrawnBox().left - 0.1;
    EXPECT_GT(bearing, 0.0);
    EXPECT_LT(bearing, 0.02);
    const double shift[] = {0.0, 0.5, 1.0, 0.0};  // other codes as 0
    for (int x = 0; x < 4; ++x)
        for (int y = 0; y < 4; ++y) {
            m_Text.SetJustify(x, y);
            const Box box = DrawnBox();
            EXPECT_NEAR(box.left, 0.1 - width * shift[x] + bearing, kTolerance);
            EXPECT_NEAR(box.bottom, -0.2 - height * shift[y], kTolerance);
            EXPECT_NEAR(box.top, -0.2 - height * shift[y] + height, kTolerance);
        }
}

TEST_F(TextDrawing, SizeIsFontTimesTransformTimesCharacterSize) {
    m_Text.SetString("HH");
    const Box plain = DrawnBox();
    m_Transform.SetFontHeightSF(1.5);
    m_Text.SetCharSize(2.0);
    const Box large = DrawnBox();
    EXPECT_NEAR(large.right - large.left, 3.0 * (plain.right - plain.left), kTolerance);
    EXPECT_NEAR(large.top - large.bottom, 3.0 * (plain.top - plain.bottom), kTolerance);
    // What is measured leaves the character size out.
    EXPECT_NEAR(m_Text.TextHeight(), 1.5 * GL().GetFont()->TextHeight3D("HH"), 1e-12);
}

TEST_F(TextDrawing, AHaloSurroundsTheLettersAllAround) {
    m_Text.SetString("o");
    const Box letter = DrawnBox();
    m_Text.SetHalo(0.12);
    const Drawn drawn = DrawText();
    const Box all(drawn);
    const double width = 0.12 * kFontSize;
    EXPECT_NEAR(all.left, letter.left - width, 0.1 * width);
    EXPECT_NEAR(all.right, letter.right + width, 0.1 * width);
    EXPECT_NEAR(all.bottom, letter.bottom - width, 0.1 * width);
    EXPECT_NEAR(all.top, letter.top + width, 0.1 * width);
}

TEST_F(TextDrawing, AspectTurnsWithTheText) {
    constexpr double a = 0.5;
    m_Transform.SetFontAspect(a);
    point3Dtype scale;
    m_Text.CalcComplexAspectRatio(scale);
    ExpectNear(Row(scale.x, scale.y, scale.z), Row(a * kFontSize, kFontSize, a * kFontSize), 1e-12);
    m_Text.SetRotation(90);
    m_Text.CalcComplexAspectRatio(scale);
    const double c = std::cos(90 * 0.01745);
    const double s = std::sin(90 * 0.01745);
    EXPECT_GT(c, 0.00029);
    EXPECT_NEAR(scale.x, (a * c + s) * kFontSize, 1e-12);
    EXPECT_NEAR(scale.y, (a * s + c) * kFontSize, 1e-12);
    m_Text.SetTextPlane(4);
    scale = Point(2.0, 3.0, 4.0);
    m_Text.CalcComplexAspectRatio(scale);
    EXPECT_NEAR(scale.y, 3.0 * kFontSize, 1e-12);

    // On the screen an upright text keeps its length along the window's height.
    m_Text.SetTextPlane(3);
    m_Text.SetString("HH");
    const Box box = DrawnBox();
    EXPECT_NEAR(box.top - box.bottom, GL().GetFont()->TextWidth3D("HH"), 0.2 * kFontSize);
    EXPECT_NEAR(box.right - box.left, a * GL().GetFont()->TextHeight3D("HH"), 0.01 * kFontSize);
    // Turned counter-clockwise it rises above its location and lies to its left.
    EXPECT_GT(box.bottom, 0.0);
    EXPECT_LT(box.CentreX(), 0.0);
}

/// How a text lies on the screen: where its x and y axes point.
struct Lie {
    double xx, xy, yx, yy;
    double Handedness() const { return xx * yy - xy * yx; }
};

class TextPlanes : public TextDrawing {
 protected:
    Lie Measure() {
        m_Text.SetJustify(0, 0);
        m_Text.SetString("I");
        const Box first = DrawnBox();
        m_Text.SetString("    I");
        const Box further = DrawnBox();
        m_Text.SetString("I");
        m_Text.SetYJustify(2);
        const Box hanging = DrawnBox();
        return {further.CentreX() - first.CentreX(), further.CentreY() - first.CentreY(),
                first.CentreX() - hanging.CentreX(), first.CentreY() - hanging.CentreY()};
    }
    void ExpectUpright(const Lie& lie) {
        EXPECT_NEAR(lie.xx, 4.0 * GL().GetFont()->TextWidth3D(" "), kTolerance);
        EXPECT_NEAR(lie.xy, 0.0, kTolerance);
        EXPECT_NEAR(lie.yx, 0.0, kTolerance);
        EXPECT_NEAR(lie.yy, GL().GetFont()->TextHeight3D("I"), kTolerance);
    }
    /// The view that looks straight at a plane of the box.
    static point3Dtype ViewOf(int plane) {
        if (plane == 0) return Point(-90, 0, 0);
        return plane == 2 ? Point(0, 0, 90) : Point(0, 0, 0);
    }
};

TEST_F(TextPlanes, ThirdPlaneFacesTheViewerInAnyView) {
    for (const point3Dtype& view : {Point(0, 0, 0), Point(-20, 15, 25), Point(70, -40, 200)}) {
        m_Transform.SetRotate(view);
        ExpectUpright(Measure());
    }
}

TEST_F(TextPlanes, PlanesLieInTheBoxAndTextTurnsInThem) {
    for (int plane = 0; plane < 4; ++plane) {
        SCOPED_TRACE(plane);
        m_Transform.SetRotate(ViewOf(plane));
        m_Text.SetTextPlane(plane);
        m_Text.SetRotation(0);
        ExpectUpright(Measure());
        m_Text.SetRotation(90);
        const Lie turned = Measure();
        EXPECT_NEAR(turned.xx, 0.0, 2e-3);
        EXPECT_NEAR(std::abs(turned.xy), 4.0 * GL().GetFont()->TextWidth3D(" "), 2e-3);
        EXPECT_GT(turned.Handedness(), 0.0);
    }
}

TEST_F(TextPlanes, FlipsTurnTheTextOver) {
    for (const auto& [x, y] : {std::pair{1, 0}, {1, 1}, {0, 1}}) {
        m_Text.SetFlipX(x);
        m_Text.SetFlipY(y);
        const Lie lie = Measure();
        EXPECT_EQ(lie.xx < 0.0, y == 1);
        EXPECT_EQ(lie.yy < 0.0, x == 1);
    }
}

TEST_F(TextDrawing, OnlyFacesTowardTheViewerAreDrawn) {
    m_Text.SetString("R8");
    for (const auto& t : DrawText().triangles) {
        const double area =
            (t[1].x - t[0].x) * (t[2].y - t[0].y) - (t[2].x - t[0].x) * (t[1].y - t[0].y);
        EXPECT_GE(area, -1e-7);
    }
}

TEST_F(TextDrawing, DrawsFlatInItsColorAndLeavesTheContextAsItWas) {
    GL().SetColorMode(1);
    GL().LoadIdentity();
    GL().Translate3D(0.25, 0.0, 0.0);
    double before[16];
    double after[16];
    GL().GetModelView(before);
    m_Text.SetColor(SetRGBD(0.25, 0.5, 0.75, 1.0));
    m_Text.SetString("Q");
    const Drawn drawn = DrawText();
    ASSERT_FALSE(drawn.IsEmpty());
    drawn.ForEachVertex(
        [](const DrawnVertex& v) { ExpectNear(Row(v.r, v.g, v.b), Row(0.25, 0.5, 0.75), 0.002); });
    EXPECT_EQ(GL().GetColorMode(), 1);
    GL().GetModelView(after);
    double sent[16];
    glGetDoublev(GL_MODELVIEW_MATRIX, sent);
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(before[i], after[i]);
        EXPECT_NEAR(before[i], sent[i], 1e-6);
    }
}

TEST_F(TextDrawing, DisabledTextChangesNothing) {
    GL().SetFillStyle3D(SetRGBD(1, 0, 0, 1), SetRGBD(1, 0, 0, 1), SetRGBD(1, 0, 0, 1));
    GL().LoadIdentity();
    m_Text.SetNormLocation(Point(0.5, 0.5, 0.5));
    m_Text.SetString("X");
    m_Text.EnableTextObj(0);
    EXPECT_TRUE(Catch([this] {
                    m_Text.OutText();
                    m_Text.OutTextNorm();
                }).IsEmpty());
    EXPECT_EQ(GL().GetFillColor().r, 1.0);
    EXPECT_EQ(m_Text.GetNormLocation().x, 0.5);
}

TEST_F(TextDrawing, EmptyTextDrawsNothing) {
    EXPECT_TRUE(DrawText().IsEmpty());
    EXPECT_EQ(m_Text.TextWidth(), 0.0);
    EXPECT_EQ(m_Text.TextHeight(), 0.0);
}

TEST_F(TextDrawing, DataLocationsGoThroughTheTransform) {
    m_Transform.SetScale(Point(0, 0, 1), Point(10, 10, 1000));
    m_Transform.SetAxisScaleMode(2, 1);
    m_Transform.ChartTransform();
    m_Text.SetString("HH");
    m_Text.SetLocation(Point(7.5, 5.0, 10.0));
    const Box box(Catch([this] { m_Text.OutText(); }));
    EXPECT_NEAR(m_Text.GetNormLocation().x, 0.25, 1e-12);
    EXPECT_NEAR(m_Text.GetNormLocation().z, -0.5 + 1.0 / 3.0, 1e-12);
    EXPECT_NEAR(box.bottom, -0.5 + 1.0 / 3.0, kTolerance);
    EXPECT_NEAR(box.left, 0.25, 0.02);
}

TEST_F(TextDrawing, UsesTheFontThatTheContextHasNow) {
    m_Text.SetString("Wide");
    const double before = m_Text.TextWidth();
    GL().NewFont3D();
    ASSERT_NE(GL().RegisterFont("Courier New", kFontSize, 400, 0, 128), 0);
    EXPECT_NE(m_Text.TextWidth(), before);
    EXPECT_NEAR(m_Text.TextWidth(), 4.0 * GL().GetFont()->TextWidth3D("i"), 1e-9);
    EXPECT_FALSE(DrawText().IsEmpty());
    GL().SetCurrentFont(3);
    EXPECT_EQ(m_Text.TextWidth(), 0.0);
    EXPECT_TRUE(DrawText().IsEmpty());
}

TEST_F(TextDrawing, TransformRecomputesBothMatrices) {
    m_Transform.SetRotate(Point(-20, 0, 25));
    m_Transform.SetScale(Point(0, 0, 0), Point(2, 4, 8));
    CTransform3D expected = m_Transform;
    expected.ChartTransform();
    expected.TextTransform();
    m_Text.Transform();
    double current[16];
    GL().GetModelView(current);
    for (int i = 0; i < 16; ++i) {
        EXPECT_NEAR(m_Transform.GetGraphTransform()[i], expected.GetGraphTransform()[i], 1e-12);
        EXPECT_NEAR(m_Transform.GetFontTransform()[i], expected.GetFontTransform()[i], 1e-12);
        EXPECT_EQ(current[i], m_Transform.GetGraphTransform()[i]);
    }
}

TEST_F(TextDrawing, BindingChecksContextFontAndTransformInThisOrder) {
    CTextObj3D text;
    const auto expect = [&](CErr3DTypes type, COpenGL* gl, CFont3D* font, CTransform3D* transform) {
        ExpectError(type, ERR3DCLASS_TEXTOBJ3D, "InitTextObj",
                    [&] { text.InitTextObj(gl, font, transform); });
    };
    expect(ERR3D_OPENGL_PARAMETER, nullptr, nullptr, nullptr);
    expect(ERR3D_FONT_PARAMETER, &GL(), nullptr, nullptr);
    expect(ERR3D_TRANSFORM_PARAMETER, &GL(), GL().GetFont(), nullptr);
    // What passed stays bound: the context is enough to move the matrix.
    GL().LoadIdentity();
    text.repostextstart3D(Point(0.5, 0, 0));
    double matrix[16];
    GL().GetModelView(matrix);
    EXPECT_EQ(matrix[12], 0.5);
    EXPECT_EQ(text.GetTransform(), nullptr);
    const CTextObj3D bound(&GL(), GL().GetFont(), &m_Transform, "x");
    EXPECT_EQ(bound.GetTransformID(), m_Transform.GetSelfID());
    EXPECT_EQ(bound.GetString(), "x");
}

}  // namespace
}  // namespace varnel::test
