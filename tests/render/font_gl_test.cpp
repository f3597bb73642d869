#include "varnel/render/font.h"

#include <cmath>

#include "tests/support/drawing_test.h"
#include "varnel/render/detail/text_measure.h"

namespace varnel::test {
namespace {

using FontDrawing = DrawingTest;

TEST_F(FontDrawing, MeasuresAreTheFacesTimesTheSize) {
    // The number of characters that was asked for limits nothing.
    for (const int number : {-1, 0, 1, 128, 256, 300}) {
        ASSERT_NE(GL().RegisterFont("Arial", 0.2, 400, 0, number), 0);
        EXPECT_EQ(GL().GetFont()->GetNumFontChars(), number);
        LOGFONT described;
        described.lfFaceName = "Arial";
        const CString text = "Volt \x80 gy";
        const detail::TextSize size = detail::TextMeasurer(described).Measure(text);
        const CFont3D& font = *GL().GetFont();
        EXPECT_NEAR(font.TextWidth3D(text), size.width * 0.2, 1e-12);
        EXPECT_NEAR(font.TextHeight3D(text), size.height * 0.2, 1e-12);
        EXPECT_NEAR(font.TextDiagonal3D(text), 0.2 * std::hypot(size.width, size.height), 1e-12);
        EXPECT_EQ(font.TextDiagonal3D(""), 0.0);
        // The scale factor multiplies what is measured, at once.
        GL().SetFontScaleFactor(0.4);
        EXPECT_NEAR(font.TextWidth3D(text), size.width * 0.4, 1e-12);
    }
}

TEST_F(FontDrawing, FailuresKeepTheLettersThatWere) {
    ASSERT_NE(GL().RegisterFont("Arial", 0.2, 400, 0, 128), 0);
    CFont3D& font = *GL().GetFont();
    const auto face = font.GetFace();
    font.SetFontExtrusion(-0.01);
    EXPECT_EQ(GL().RegisterFont("Arial", 0.5, 700, 0, 128), 0);
    EXPECT_EQ(GL().GetFontScaleFactor(), 0.2);
    EXPECT_EQ(font.GetFace(), face);

    CFont3D unnumbered(&GL(), &m_Memory, 0);
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
}  // namespace varnel::test
