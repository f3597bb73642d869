#include "varnel/render/opengl.h"

#include <cmath>
#include <limits>

#include "tests/support/gl_fixture.h"
#include "tests/support/values.h"
#include "varnel/foundation/notice.h"
#include "varnel/render/aux_shapes.h"
#include "varnel/render/detail/scene.h"
#include "varnel/render/font.h"

namespace varnel::test {
namespace {

class OpenGL : public GLFixture {
 protected:
    void ExpectPixel(int x, int y, int r, int g, int b, int tolerance = 1) {
        const RGBQUAD p = Pixel(x, y);
        EXPECT_NEAR(p.rgbRed, r, tolerance) << x << ", " << y;
        EXPECT_NEAR(p.rgbGreen, g, tolerance) << x << ", " << y;
        EXPECT_NEAR(p.rgbBlue, b, tolerance) << x << ", " << y;
    }
    /// Looks at a box from above and from the side, as charts do.
    void ViewFromAbove() {
        GL().LoadIdentity();
        GL().Rotate3D(-90, 0);
        GL().Rotate3D(-20, 0);
        GL().Rotate3D(25, 2);
    }
    bool Enabled(GLenum cap) {
        GL().MakeCurrent();
        return glIsEnabled(cap) != 0;
    }
};

TEST_F(OpenGL, FramesAreSeenWholeOnTiltedFills) {
    // A fan of tilted quadrilaterals: every frame pixel must win against the fills beside it.
    const auto draw = [&](void (COpenGL::*drawQuad)(const point3Dtype*, int)) {
        for (int i = 0; i < 12; ++i) {
            const double x = -0.9 + 0.15 * i;
            const point3Dtype quad[5] = {{x, -0.8, 0.1 * (i % 3), 0},
                                         {x, 0.8, 0.5, 0},
                                         {x + 0.15, 0.8, 0.5, 0},
                                         {x + 0.15, -0.8, 0.1 * ((i + 1) % 3), 0},
                                         {x, -0.8, 0.1 * (i % 3), 0}};
            GL().SetFillStyle3D(kRed, kRed, kBlack);
            (GL().*drawQuad)(quad, 5);
        }
    };
    const auto blackPixels = [&] {
        int n = 0;
        for (int y = 0; y < kSize; ++y)
            for (int x = 0; x < kSize; ++x)
                n += Pixel(x, y).rgbRed == 0 ? 1 : 0;
        return n;
    };
    GL().SetFrameFilled(1);
    Draw([&] { draw(&COpenGL::PolyFillAbs3D); });
    const int offset = blackPixels();
    // Frames alone, nothing to lose against.
    Draw([&] { draw(&COpenGL::Frame3D); });
    EXPECT_GE(offset, blackPixels() * 98 / 100);
    GL().SetFrameOffset(0);
    Draw([&] { draw(&COpenGL::PolyFillAbs3D); });
    EXPECT_LT(blackPixels(), offset);
}

TEST_F(OpenGL, CollectingDrawsTheSamePicture) {
    const auto draw = [&] {
        ViewFromAbove();
        GL().SetColorMode(1);
        GL().SetLineWidth3D(1.0);
        for (int i = -2; i <= 2; ++i) {
            GL().SetFrameFilled(1);
            GL().DrawPrism3D(0.3 * i - 0.1, -0.2, -0.4, 0.2, 0.4, 0.2 + 0.1 * (i + 2), kRed,
                             kBlack);
            GL().SetLineStyle3D(i & 1 ? 3 : 0, 2.0, kGreen);
            GL().LineAbs3D({0.3 * i, -0.5, -0.5, 0}, {0.3 * i, 0.5, 0.5, 0});
            GL().SetFrameFilled(0);
            GL().PushMatrix();
            GL().Translate3D(0.3 * i, 0.5, 0.0);
            GL().Scale3D(0.2, 0.2, 0.2);
            GL().DrawDiamondSolidObject3D(1, 1, 2, kGreen, kBlack);
            GL().PopMatrix();
        }
        GL().SetColorMode(0);
    };
    Draw(draw);
    const std::vector<BYTE> direct = Image();
    Draw([&] {
        const CollectScope scope(GL());
        draw();
    });
    EXPECT_TRUE(Image() == direct);
}

TEST_F(OpenGL, LinesUseTheStippleOfTheirStyle) {
    const auto pixels = [&](int style) {
        GL().SetLineStyle3D(style, 1.0, kBlack);
        Draw([&] { GL().LineAbs3D({-0.99, 0.01, 0, 0}, {0.99, 0.01, 0, 0}); });
        return Inked();
    };
    const int solid = pixels(0);
    EXPECT_EQ(solid, 99);
    EXPECT_NEAR(pixels(3), solid / 2, 1);  // every other pixel
    EXPECT_NEAR(pixels(1), solid / 8, 1);  // one in eight
    EXPECT_EQ(pixels(12), solid);
    EXPECT_EQ(pixels(16), solid);
    EXPECT_EQ(pixels(-1), solid);
}

TEST_F(OpenGL, PolylinesTakeTheColourThatIsCurrentAtEachVertex) {
    GL().SetLineStyle3D(0, 3.0, kRed);
    GL().SetColorMode(1);
    Draw([&] {
        GL().StartLineAbs3D({-0.9, 0, 0, 0});
        GL().SetFillStyle3D(kGreen, kGreen, kGreen);
        GL().AppendLineAbs3D({0, 0, 0, 0});
        GL().EndLineAbs3D({0.9, 0, 0, 0});
    });
    ExpectPixel(6, 50, 252, 2, 0, 8);
    ExpectPixel(50, 50, 0, 255, 0, 6);
    ExpectPixel(80, 50, 0, 255, 0, 1);
    EXPECT_EQ(GL().GetColorMode(), 1);
    EXPECT_TRUE(Enabled(GL_LIGHTING));
}

TEST_F(OpenGL, AnUnfinishedPolylineIsDroppedAndGivesTheColourModeBack) {
    GL().SetColorMode(1);
    const point3Dtype frame[2] = {{-0.5, 0.5, 0, 0}, {0.5, 0.5, 0, 0}};
    Draw([&] {
        GL().StartLineAbs3D({-0.9, 0, 0, 0});
        GL().AppendLineAbs3D({0.9, 0, 0, 0});
        GL().SetFillStyle3D(kRed, kRed, kRed);
        GL().Frame3D(frame, 2);
        GL().EndLineAbs3D({0.9, 0.9, 0, 0});
    });
    EXPECT_NEAR(Inked(), 50, 1);
    EXPECT_EQ(GL().GetColorMode(), 1);
}

TEST_F(OpenGL, WidthsOfZeroAndLessKeepTheLastWidth) {
    const auto thickness = [&](double width) {
        GL().SetLineStyle3D(0, width, kBlack);
        Draw([&] { GL().LineAbs3D({-0.5, 0, 0, 0}, {0.5, 0, 0, 0}); });
        int n = 0;
        for (int y = 0; y < kSize; ++y)
            n += Pixel(50, y).rgbRed == 0 ? 1 : 0;
        return n;
    };
    const double widths[][2] = {{5, 5}, {0, 5}, {-3, 5}, {kNaN, 5}, {2, 2}};
    for (const auto& [given, drawn] : widths)
        EXPECT_EQ(thickness(given), drawn);
}

TEST_F(OpenGL, NonFiniteVerticesAreNeverDrawn) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const point3Dtype bad[4] = {
        {-0.5, -0.5, 0, 0}, {0.5, nan, 0, 0}, {0.5, 0.5, 0, 0}, {0, 1, 0, 0}};
    GL().SetFrameFilled(1);
    const auto drawn = Feedback([&] {
        GL().PolyFillAbs3D(bad, 4);
        GL().PolyFillAbs3D(bad, 2);
        GL().PolyFillAbs3D(nullptr, 4);
        GL().DrawPrism3D(0, 0, 0, 1, 1, 1.0 / 0.0, kRed, kBlack);
        GL().LineAbs3D({0, 0, nan, 0}, {1, 1, 1, 0});
        GL().StartLineAbs3D({-0.5, 0, 0, 0});
        GL().AppendLineAbs3D({0, 0, 0, 0});
        GL().AppendLineAbs3D({nan, 0, 0, 0});
        GL().EndLineAbs3D({0.5, 0, 0, 0});
    });
    ASSERT_EQ(drawn.size(), 1U);  // the one segment of the polyline before the gap
    EXPECT_TRUE(drawn[0].IsLine());
}

TEST_F(OpenGL, PrismsShowTheFacesTowardsTheViewer) {
    ViewFromAbove();
    const auto prism = [&] { GL().DrawPrism3D(-0.2, -0.2, -0.3, 0.4, 0.4, 0.6, kRed, kBlack); };
    EXPECT_EQ(CountPolygons(Feedback(prism)), 3 * 2);
    GL().SetFrameFilled(1);
    EXPECT_EQ(CountLines(Feedback(prism)), 9);  // the outline of three faces of a box
    // An open or a cut solid shows its inside.
    int faces[6] = {1, 1, 1, 1, 0, 1};
    GL().SetFrameFilled(0);
    EXPECT_EQ(CountPolygons(Feedback(
                  [&] { GL().DrawCubeSolidObject3D(0.4, 0.4, 0.4, kRed, kBlack, faces); })),
              5 * 2);
    int none[6] = {};
    EXPECT_TRUE(Feedback([&] { GL().DrawCubeSolidObject3D(1, 1, 1, kRed, kBlack, none); }).empty());
    EXPECT_EQ(GL().GetFillColor2().a, 1.0);
}

TEST_F(OpenGL, SolidsGivenInsideOutAreTheSameSolids) {
    GL().SetColorMode(1);
    GL().SetFrameFilled(1);
    GL().SetLightPosition({0, 1, 1, 0});
    GL().LoadLight(GL_POSITION);
    ViewFromAbove();
    Draw([&] { GL().DrawPrism3D(-0.3, -0.2, -0.4, 0.6, 0.4, 0.8, kRed, kBlack); });
    const auto upright = Image();
    const RGBQUAD top = Pixel(50, 76);
    EXPECT_GT(top.rgbRed, 150) << "the top is lit";
    Draw([&] { GL().DrawPrism3D(0.3, -0.2, 0.4, -0.6, 0.4, -0.8, kRed, kBlack); });
    EXPECT_EQ(Image(), upright);
    Draw([&] { GL().DrawPrism3D(-0.3, -0.2, 0.4, 0.6, 0.4, -0.8, kRed, kBlack); });
    EXPECT_EQ(Image(), upright);
    // In a mirrored box the picture is mirrored, and lit as before.
    GL().Scale3D(1, 1, -1);
    Draw([&] { GL().DrawPrism3D(-0.3, -0.2, -0.4, 0.6, 0.4, 0.8, kRed, kBlack); });
    EXPECT_EQ(Image(), upright);
    GL().SetColorMode(0);
}

TEST_F(OpenGL, SymbolsHaveTheirExtents) {
    struct Symbol {
        const char* name;
        void (COpenGL::*draw)(double, double, double, const RGBDType&, const RGBDType&);
        double bottom, top;  // along z, of a symbol of size 1
    };
    const Symbol symbols[] = {
        {"diamond", &COpenGL::DrawDiamondSolidObject3D, -0.5, 0.5},
        {"pyramid", &COpenGL::DrawPyramidSolidObject3D, -0.5, 0.5},
        {"plus", &COpenGL::DrawPlusSolidObject3D, -0.5, 0.5},
        {"arrow", &COpenGL::DrawArrowSolidObject3D, -0.5, 0.25},
        {"hourglass", &COpenGL::DrawHourglassSolidObject3D, -0.5, 0.5},
    };
    for (const Symbol& symbol : symbols) {
        SCOPED_TRACE(symbol.name);
        GL().LoadIdentity();
        GL().Rotate3D(-90, 0);  // z up on the screen, which shows -1..1 in 100 pixels
        const auto e = ExtentOf(Feedback([&] { (GL().*symbol.draw)(1, 1, 1, kRed, kBlack); }));
        ExpectNear(Row(e.left, e.right, e.bottom, e.top),
                   Row(25, 75, 50 + 50 * symbol.bottom, 50 + 50 * symbol.top), 0.01);
    }
}

TEST_F(OpenGL, PolyAbsOutlinesFromBothSidesWithoutFilling) {
    const point3Dtype square[4] = {
        {-0.5, -0.5, 0, 0}, {-0.5, 0.5, 0, 0}, {0.5, 0.5, 0, 0}, {0.5, -0.5, 0, 0}};
    GL().SetLineStyle3D(3, 1.0, kRed);
    for (double turn : {0.0, 180.0}) {
        GL().LoadIdentity();
        GL().Rotate3D(turn, 1);
        Draw([&] { GL().PolyAbs3D(square, 4); });
        ExpectPixel(50, 50, 255, 255, 255);
        EXPECT_NEAR(Inked(), 4 * 50, 6) << "four solid edges, whatever the line style";
    }
}

TEST_F(OpenGL, TextureColoursByValue) {
    const RGBDType colors[4] = {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}, {1, 1, 0, 1}};
    GL().SetTextureMode(0);
    GL().SetTextureColorArray(colors, 0.0, 1.0, 4);
    GL().SetColorMode(2);
    GL().EnableTexture(1);
    const point3Dtype square[4] = {
        {0, -0.5, 0, 0}, {0, 0.5, 0, 0}, {0.99, 0.5, 0, 0}, {0.99, -0.5, 0, 0}};
    Draw([&] { GL().PolyFillAbs3D(square, 4); });
    ExpectPixel(56, 50, 255, 0, 0);
    ExpectPixel(68, 50, 0, 255, 0);
    ExpectPixel(81, 50, 0, 0, 255);
    ExpectPixel(93, 50, 255, 255, 0);
    EXPECT_TRUE(Enabled(GL_TEXTURE_1D));
    GL().EnableTexture(0);
    GL().SetColorMode(0);
    EXPECT_FALSE(Enabled(GL_TEXTURE_1D));

    // By the value w, and wrapped beyond the ends: -0.5 looks like 0.5.
    GL().SetTextureMode(3);
    GL().EnableTexture(1);
    point3Dtype byValue[4] = {
        {-1, -1, 0, -0.45}, {-1, 1, 0, -0.45}, {1, 1, 0, -0.45}, {1, -1, 0, -0.45}};
    Draw([&] { GL().PolyFillAbs3D(byValue, 4); });
    ExpectPixel(50, 50, 0, 0, 255);
    GL().EnableTexture(0);
}

TEST_F(OpenGL, TextureTablesAreStretchedToPowersOfTwo) {
    const std::vector<RGBDType> colors(5, SetRGBD(0.2, 0.4, 0.6, 1));
    RGBDType out[256];
    GL().SetTextureColorArray(colors.data(), 0, 10, 5);
    GLint width = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_1D, 0, GL_TEXTURE_WIDTH, &width);
    EXPECT_EQ(width, 8);
    GL().SetTextureColorArray(colors.data(), 0, 10, 1);
    glGetTexLevelParameteriv(GL_TEXTURE_1D, 0, GL_TEXTURE_WIDTH, &width);
    EXPECT_EQ(width, 2);
    GL().SetTextureColorArray(colors.data(), 0, 10, 257);
    GL().SetTextureColorArray(colors.data(), 0, 10, 0);
    glGetTexLevelParameteriv(GL_TEXTURE_1D, 0, GL_TEXTURE_WIDTH, &width);
    EXPECT_EQ(width, 2) << "numbers outside 1..256 change nothing";

    GL().SetTextureEndpointColors(SetRGBD(1, 0, 0, 0), SetRGBD(0, 0, 1, 0), 0, 1, 1);
    GL().CopyTextureArray(out);
    for (int i : {0, 1, 100, 255}) {
        EXPECT_DOUBLE_EQ(out[i].r, i / 255.0);
        EXPECT_DOUBLE_EQ(out[i].b, i / 255.0);
        EXPECT_EQ(out[i].a, i == 0 || i == 255 ? 0.0 : 1.0);
    }
}

TEST_F(OpenGL, ClipLimitsFollowTheComparisonOfX) {
    const auto left = [&](const point3Dtype& a, const point3Dtype& b) {
        GL().LoadIdentity();
        GL().SetClipLimits(a, b);
        GL().EnableClipping(1);
        const point3Dtype big[4] = {{-1, -1, 0, 0}, {-1, 1, 0, 0}, {1, 1, 0, 0}, {1, -1, 0, 0}};
        const auto e = ExtentOf(Feedback([&] { GL().PolyFillAbs3D(big, 4); }));
        GL().EnableClipping(0);
        return e;
    };
    auto e = left({-0.5, -0.5, -0.5, 0}, {0.5, 0.5, 0.5, 0});
    EXPECT_NEAR(e.left, 25 + 50 * 0.00123456, 1e-3) << "a little inside the minimum";
    EXPECT_NEAR(e.right, 75 + 50 * 0.00123456, 1e-3);
    EXPECT_NEAR(e.top, 75 + 50 * 0.00123456, 1e-3);
    // x decides: with p1.x > p2.x the low plane of y lies at p2.y, above the high one.
    EXPECT_EQ(left({0.5, -0.5, -0.5, 0}, {-0.5, 0.5, 0.5, 0}).right, -1e9F);
    EXPECT_NEAR(left({0.5, 0.5, 0.5, 0}, {-0.5, -0.5, -0.5, 0}).bottom, 25 - 50 * 0.00123456, 1e-3);
}

TEST_F(OpenGL, DataFarFromTheOriginKeepsItsShape) {
    // One year of days as time stamps in seconds: a float would be 128 s off.
    const double start = 1.7e9;
    const double range = 3600.0;
    GL().LoadIdentity();
    GL().Scale3D(1.0 / range, 1, 1);
    GL().Translate3D(-(start + range / 2), 0, 0);
    const auto e = ExtentOf(Feedback([&] {
        GL().LineAbs3D({start, 0, 0, 0}, {start + range / 2 + 1.0, 0, 0, 0});
    }));
    EXPECT_NEAR(e.left, 25.0, 1e-4);
    EXPECT_NEAR(e.right, 50.0 + 50.0 / range, 1e-4);
}

TEST_F(OpenGL, ClosedContextsDrawNothing) {
    GL().Close();
    GL().LineAbs3D({0, 0, 0, 0}, {1, 1, 1, 0});
    GL().DrawPrism3D(0, 0, 0, 1, 1, 1, kRed, kBlack);
    GL().SetColorMode(1);
    GL().Clear(16640);
    GL().ReadBack();
    GL().Close();
    m_GL.reset();
}

TEST_F(OpenGL, EightBitTargetsHaveAPalette) {
    Open(8);
    LOGPALETTE palette;
    PIXELFORMATDESCRIPTOR format;
    ASSERT_TRUE(CDC::DescribePixelFormat(GL().GetClientDC()->GetPixelFormat(), &format));
    EXPECT_TRUE(format.dwFlags & PFD_NEED_PALETTE);
    GL().CreateLogPalette(&format, &palette, 256);
    EXPECT_EQ(palette.palNumEntries, 256);
    EXPECT_EQ(palette.palPalEntry[3].peRed, 128);   // a system colour
    EXPECT_EQ(palette.palPalEntry[5].peRed, 0xB6);  // the ramp of three bits
    GL().CreateRGBPalette();
    EXPECT_NE(GL().GetClientDC()->SelectPalette(nullptr, 0), nullptr);
    EXPECT_EQ(GL().ComponentFromIndex(7, 4, 0), 0);
    Draw([&] {
        GL().SetClearColor(1, 0, 0, 0);
        GL().Clear(16640);
    });
    EXPECT_EQ(*m_Section->FindDIBBits(), 7);
    ExpectPixel(5, 5, 255, 0, 0);
}

TEST_F(OpenGL, OneFontAtATime) {
    for (const int base : {1000, 1256, 1256}) {
        EXPECT_EQ(GL().GetFont()->GetListBase(), base);
        EXPECT_EQ(GL().NewFont3D(), 1);
    }
    EXPECT_EQ(GL().GetCurrentFont(), 0);
    GL().SetCurrentFont(5);
    EXPECT_EQ(GL().GetFont(), nullptr);
    EXPECT_EQ(GL().GetFontScaleFactor(), 0.0);
}

TEST_F(OpenGL, FollowsAtOnceWhileItIsCurrentAndCollectsNothing) {
    const auto sent = [](GLenum what) {
        float values[16];
        glGetFloatv(what, values);
        return values[what == GL_CURRENT_COLOR ? 0 : 12];  // red, or the move along x
    };
    GL().SetColorMode(COLOR_MODE_LIT);
    Draw([&] {
        GL().PushMatrix();
        GL().Translate3D(0.5, 0, 0);
        GL().SetFillStyle3D(kRed, kBlack, kBlack);
        auxSolidCube(0.2);
        GL().PopMatrix();
        GL().PopMatrix();  // nothing left to pop
    });
    EXPECT_EQ(Inked(), 100);
    EXPECT_GT(Pixel(75, 50).rgbRed, Pixel(75, 50).rgbGreen);
    EXPECT_EQ(sent(GL_MODELVIEW_MATRIX), 0.0F) << "the matrix came back";
    {
        const CollectScope collecting(GL());
        GL().Translate3D(0.25, 0, 0);
        GL().SetCurrentColor(kGreen);
        EXPECT_EQ(sent(GL_MODELVIEW_MATRIX), 0.0F);
        EXPECT_EQ(sent(GL_CURRENT_COLOR), 1.0F);
    }
    EXPECT_EQ(sent(GL_MODELVIEW_MATRIX), 0.25F);
    EXPECT_EQ(sent(GL_CURRENT_COLOR), 0.0F);

    COpenGL other(m_Window->GetDC(), m_Section.get());
    GL().Translate3D(0.5, 0, 0);
    GL().SetCurrentColor(kBlack);
    EXPECT_EQ(sent(GL_MODELVIEW_MATRIX), 0.0F) << "another context is current";
    EXPECT_EQ(sent(GL_CURRENT_COLOR), 1.0F);
    other.Close();
}

TEST_F(OpenGL, ViewportLightAndMatrixAreThoseOfTheMoment) {
    GLViewportType viewport;
    GL().SetViewport({0, 0, -5, -5});
    GL().GetViewport(viewport);
    EXPECT_EQ(viewport.width, 0);
    GL().SetViewport({0, 0, 50, 50});
    GL().SetLineJoins(1);
    GL().SetLineStyle3D(LINE_SOLID, 8, kBlack);
    Draw([&] { GL().LineAbs3D({-0.5, 0, 0, 0}, {0.5, 0, 0, 0}); });
    const int outside = kSize * kSize - 50 * 50;  // which Clear leaves black
    EXPECT_NEAR(Inked() - outside, 25 * 8 + 3.14 * 16, 25) << "8 pixels wide, with round ends";
    GL().SetLineJoins(0);
    // Less than a pixel about the middle of one of ten, which in a hundred is where four meet.
    GL().SetViewport({0, 0, kSize, kSize});
    Draw([] {});
    GL().SetViewport({0, 0, 10, 10});
    const point3Dtype dot[4] = {
        {0.096, 0.096, 0, 0}, {0.096, 0.104, 0, 0}, {0.104, 0.104, 0, 0}, {0.104, 0.096, 0, 0}};
    Draw([&] { GL().PolyFillAbs3D(dot, 4); });
    EXPECT_EQ(Inked(), 1);
    GL().SetViewport({0, 0, kSize, kSize});

    const point3Dtype square[4] = {{-1, -1, 0, 0}, {-1, 1, 0, 0}, {1, 1, 0, 0}, {1, -1, 0, 0}};
    GL().SetColorMode(COLOR_MODE_LIT);
    GL().SetFillStyle3D(kRed, kBlack, kBlack);
    GL().SetLightPosition({0, 1, 0, 0});
    for (const int component : {LIGHT_AMBIENT, LIGHT_DIFFUSE, LIGHT_POSITION}) {
        if (component != LIGHT_POSITION) GL().SetLightComponent(component, {0.25, 0, 0, 1});
        GL().LoadLight(component);
    }
    float sent[4];
    for (const GLenum what : {GL_AMBIENT, GL_DIFFUSE}) {
        glGetLightfv(GL_LIGHT0, what, sent);
        EXPECT_EQ(sent[0], 0.25F) << "for what a host draws itself";
    }
    Draw([&] { GL().PolyFillAbs3D(square, 4); });
    const auto lit = Image();
    GL().PushMatrix();
    GL().Rotate3D(180, 1);
    GL().PopMatrix();
    Draw([&] { GL().PolyFillAbs3D(square, 4); });
    EXPECT_EQ(Image(), lit);
}

TEST_F(OpenGL, AContextMadeAgainStartsFromKnownState) {
    const point3Dtype square[4] = {{-1, -1, 0, 0}, {-1, 1, 0, 0}, {1, 1, 0, 0}, {1, -1, 0, 0}};
    const auto use = [&] {
        GL().SetColorMode(COLOR_MODE_LIT);
        GL().SetClipLimits({-0.5, -0.5, -0.5, 0}, {0.5, 0.5, 0.5, 0});
        GL().EnableClipping(1);
        GL().SetLineStyle3D(LINE_SOLID, 5.0, kBlack);
        GL().SetFillStyle3D(kRed, kBlack, kBlack);
        Draw([&] {
            GL().PolyFillAbs3D(square, 4);
            GL().LineAbs3D({-1, 0, 0, 0}, {1, 0, 0, 0});
        });
        return Image();
    };
    const auto first = use();
    EXPECT_NEAR(Inked(), 50 * 50, 100);
    for (void (COpenGL::*again)() : {&COpenGL::InitContext, &COpenGL::SetOpenGLDefaults}) {
        GL().Translate3D(0.3, 0, 0);
        (GL().*again)();
        EXPECT_FALSE(Enabled(GL_CLIP_PLANE0));
        EXPECT_EQ(use(), first);
    }
}

TEST_F(OpenGL, AFailedContextSaysWhyInTheError) {
    CDC memory;
    memory.CreateCompatibleDC(m_Window->GetDC());
    CDIBSection section(m_Window->GetDC(), &memory, 1 << 20, 1, 8);
    memory.SelectObject(section.GetBitmap());
    int notices = 0;
    const NoticeHandler before = SetNoticeHandler([&](const std::string&) { ++notices; });
    const std::string what = WhatOf([&] { COpenGL none(m_Window->GetDC(), &section); });
    SetNoticeHandler(before);
    EXPECT_EQ(what, "InitContext: no framebuffer of 1048576 x 1");
    EXPECT_EQ(notices, 0) << "report mode 0 shows nothing";
}

/// Counts what it is handed and keeps one of each.
struct ListingSink : detail::SceneSink {
    std::vector<detail::PolygonRecord> polygons;
    std::vector<detail::Element> segments;
    std::string text;
    std::string order;
    double corner = 0, lit = 0, dashes = 0, picture = 0, depth = 0;
    bool transparent = true;

    void Clear(const detail::SceneState&, bool, bool) override { order += 'c'; }
    void DrawBatch(const detail::SceneState& state, const detail::PrimitiveBatch& b) override {
        order += 'b';
        transparent = state.transparent;
        polygons = b.Polygons();
        for (const detail::LineRun& run : b.Lines())
            segments.insert(segments.end(), run.elements.begin(), run.elements.end());
        corner = b.Corner(polygons.at(0).first + 1).x;
        lit = b.MeanColor(polygons.at(0)).r;
    }
    void DrawStrip(const detail::SceneState&, const detail::LineStrip& strip) override {
        order += 's';
        dashes = strip.pattern * strip.repeat;
    }
    void DrawText(const detail::SceneState&, const detail::TextRun& run) override {
        order += 't';
        text = std::string(run.text) + (run.color.g == 1.0 ? " in green" : "");
        corner += run.placement.At(0, 3);
    }
    void DrawShape(const detail::SceneState&, const detail::ShadedShape& shape) override {
        for (const detail::ShadedVertex& v : shape.triangles)
            depth = std::max(depth, v.place.z);
    }
    void DrawImage(const detail::SceneState&, const detail::ImageQuad& image) override {
        order += 'i';
        picture = image.corners[2].x * image.repeatX;
    }
};

TEST_F(OpenGL, AnotherSinkGetsTheWholeScene) {
    ListingSink sink;
    const point3Dtype square[4] = {{-1, -1, 0, 0}, {-1, 1, 0, 0}, {1, 1, 0, 0}, {1, -1, 0, 0}};
    const BYTE pixel[4] = {255, 0, 0, 255};
    GL().Clear(CLEAR_COLOR_AND_DEPTH);
    GL().SetColorMode(COLOR_MODE_LIT);
    GL().SetLightComponent(LIGHT_DIFFUSE, {0.25, 0, 0, 1});
    GL().SetLightPosition({0, 1, 0, 0});
    for (const int component : {LIGHT_AMBIENT, LIGHT_DIFFUSE, LIGHT_POSITION})
        GL().LoadLight(component);
    GL().SetSink(&sink);
    GL().Clear(CLEAR_COLOR);
    GL().Translate3D(0.125, 0, 0);
    {
        const CollectScope collecting(GL());
        GL().SetFrameFilled(1);
        GL().SetFillStyle3D({1, 0, 0, 1}, kBlack, kBlack);
        GL().SetElement(3, 7);
        GL().PolyFillAbs3D(square, 4);
        GL().SetFrameFilled(0);
        GL().SetElement(-1, -1);
        GL().SetTransparency(1);  // of what follows
    }
    GL().SetTransparency(0);
    GL().SetLineStyle3D(LINE_DOTS_WIDE, 1.0, kBlack);
    GL().LineAbs3D({0, 0, 0, 0}, {1, 0, 0, 0});
    GL().SetCurrentColor(kGreen);
    GL().DrawTextRun(*GL().GetFont(), "total");
    GL().DrawPicture(pixel, 1, 1, square, 2, 1);
    GL().DrawAuxObject(AUX_SPHERE, 1, {0.5, 0.5, 0.5, 0});
    GL().SetSink(nullptr);
    GL().ReadBack();
    EXPECT_EQ(Inked(), kSize * kSize) << "the image stays as it was: black";
    EXPECT_EQ(Pixel(50, 50).rgbRed, 0);
    EXPECT_EQ(sink.order, "cbsti");
    EXPECT_FALSE(sink.transparent);
    ASSERT_EQ(sink.polygons.size(), 1U);
    EXPECT_EQ(sink.polygons[0].count, 4U);
    EXPECT_EQ(sink.polygons[0].element, (detail::Element{3, 7}));
    EXPECT_EQ(sink.segments, std::vector<detail::Element>(3, {3, 7}));
    EXPECT_EQ(sink.corner, -1 + 0.125 + 0.125);
    // Ambient light 0.4 and 0.1, and the diffuse light from the viewer's side.
    EXPECT_NEAR(sink.lit, 0.75, 0.002);
    EXPECT_EQ(sink.dashes, 0x0101);
    EXPECT_EQ(sink.text, "total in green");
    EXPECT_EQ(sink.picture, 2 * 1.125);
    EXPECT_NEAR(sink.depth, 0.5, 0.01);
}

TEST_F(OpenGL, ForeignPointersAndMissingDevices) {
    ExpectError(ERR3D_CDC_PARAMETER, ERR3DCLASS_OPENGL, "COpenGL",
                [&] { COpenGL broken(nullptr, m_Section.get()); });
    ExpectError(ERR3D_DIB_HANDLE, ERR3DCLASS_OPENGL, "COpenGL",
                [&] { COpenGL broken(m_Window->GetDC(), nullptr); });
    CDC nothing;
    ExpectError(ERR3D_PIXEL_FORMAT, ERR3DCLASS_OPENGL, "InitContext",
                [&] { COpenGL broken(&nothing, m_Section.get()); });
}

}  // namespace
}  // namespace varnel::test
