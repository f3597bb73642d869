#include "varnel/render/font.h"

#include <cmath>

#include "tests/support/drawing_test.h"

namespace varnel {
namespace {

class FontDrawing : public test::DrawingTest {
 protected:
    test::Drawn DrawLetters(const CString& text) {
        const int base = GL().GetFont()->GetListBase();
        return Catch([&] {
            glPushMatrix();
            for (const char c : text)
                glCallList(static_cast<GLuint>(base + static_cast<unsigned char>(c)));
            glPopMatrix();
        });
    }
};

TEST_F(FontDrawing, MeasuresAreTheFacesTimesTheSize) {
    ASSERT_NE(GL().RegisterFont("Arial", 0.2, 400, 0, 256), 0);
    LOGFONT described;
    described.lfFaceName = "Arial";
    const auto glyphs = BuildGlyphOutlines(described, 256, 0.1, 0.01);
    double width = 0.0;
    double height = 0.0;
    const CString text = "Volt \x80 gy";
    for (const char c : text) {
        const auto& m = glyphs[static_cast<unsigned char>(c)].metrics;
        width += static_cast<double>(m.gmfCellIncX);
        height = std::max(height, static_cast<double>(m.gmfBlackBoxY));
    }
    const CFont3D& font = *GL().GetFont();
    EXPECT_NEAR(font.TextWidth3D(text), width * 0.2, 1e-12);
    EXPECT_NEAR(font.TextHeight3D(text), height * 0.2, 1e-12);
    EXPECT_NEAR(font.TextDiagonal3D(text), 0.2 * std::hypot(width, height), 1e-12);
    EXPECT_EQ(font.TextWidth3D(""), 0.0);
    EXPECT_EQ(font.TextHeight3D(""), 0.0);
    EXPECT_EQ(font.TextDiagonal3D(""), 0.0);
    // The scale factor multiplies what is measured, at once.
    GL().SetFontScaleFactor(0.4);
    EXPECT_NEAR(font.TextWidth3D(text), width * 0.4, 1e-12);
}

TEST_F(FontDrawing, ListsDrawEmsAndAdvance) {
    ASSERT_NE(GL().RegisterFont("Arial", 0.2, 700, 0, 128), 0);
    GL().Scale3D(0.4, 0.4, 0.4);
    const test::Box one(DrawLetters("I"));
    const test::Box two(DrawLetters("II"));
    const double toDevice = 0.4 / 0.2;
    EXPECT_NEAR(two.right - one.right, GL().GetFont()->TextWidth3D("I") * toDevice, 1e-5);
    EXPECT_NEAR(one.bottom, 0.0, 1e-5);
    EXPECT_NEAR(one.top, GL().GetFont()->TextHeight3D("I") * toDevice, 1e-5);
    // The front is at 0, the depth goes to negative z.
    EXPECT_NEAR(one.back, 0.0, 1e-5);
    EXPECT_NEAR(one.front, -0.01 * 0.4, 1e-5);
}

TEST_F(FontDrawing, ANewFontTakesTheListsOfTheOldOneAlong) {
    ASSERT_NE(GL().RegisterFont("Arial", 0.2, 400, 0, 128), 0);
    const auto first = static_cast<GLuint>(GL().GetFont()->GetListBase());
    EXPECT_TRUE(glIsList(first + 'A'));
    GL().NewFont3D();
    EXPECT_FALSE(glIsList(first + 'A'));
    ASSERT_NE(GL().RegisterFont("Times New Roman", 0.2, 400, 0, 64), 0);
    const auto second = static_cast<GLuint>(GL().GetFont()->GetListBase());
    EXPECT_NE(first, second);
    EXPECT_TRUE(glIsList(second + '0'));
    EXPECT_FALSE(glIsList(second + 'A'));
}

TEST_F(FontDrawing, FailuresKeepTheListsThatWere) {
    ASSERT_NE(GL().RegisterFont("Arial", 0.2, 400, 0, 128), 0);
    const double width = GL().GetFont()->TextWidth3D("A");
    EXPECT_EQ(GL().RegisterFont("Arial", 0.5, 700, 0, 257), 0);
    EXPECT_EQ(GL().RegisterFont("Arial", 0.5, 700, 0, 0), 0);
    EXPECT_EQ(GL().GetFontScaleFactor(), 0.2);
    EXPECT_EQ(GL().GetFont()->TextWidth3D("A"), width);
    EXPECT_FALSE(DrawLetters("A").IsEmpty());

    CFont3D unnumbered(&GL(), &m_Memory, 0);  // 0 is no list
    EXPECT_EQ(unnumbered.RegisterFont("Arial", 0.2, 400, 0, 128), 0);
}

TEST_F(FontDrawing, AFontMayOutliveItsContext) {
    {
        CFont3D font(&GL(), &m_Memory, 5000);
        ASSERT_NE(font.RegisterFont("Arial", 0.2, 400, 0, 128), 0);
        GL().Close();
        EXPECT_EQ(font.RegisterFont("Arial", 0.3, 400, 0, 128), 0);
        EXPECT_EQ(font.GetFontScaleFactor(), 0.2);
    }
    Close();
}

}  // namespace
}  // namespace varnel
