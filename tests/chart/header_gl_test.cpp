#include "varnel/chart/header.h"

#include "tests/support/drawing_test.h"
#include "varnel/render/font.h"

namespace varnel::test {
namespace {

class HeaderDrawing : public DrawingTest {
 protected:
    static constexpr double kTolerance = 2e-5;

    HeaderDrawing() {
        EXPECT_NE(GL().RegisterFont("Arial", 0.2, 700, 0, 128), 0);
        m_Header.InitHeaders(&GL());
    }

    Box DrawnBox() {
        return Box(Catch([this] { m_Header.DrawHeader(); }));
    }
    double Height() { return GL().GetFont()->TextHeight3D("H"); }

    CHeader3D m_Header;
};

TEST_F(HeaderDrawing, LinesHangFromTheTopAndStandOnTheBottom) {
    m_Header.SetTitle1("H");
    Box box = DrawnBox();
    EXPECT_NEAR(box.top, 0.95, kTolerance);
    EXPECT_NEAR(box.bottom, 0.95 - Height(), kTolerance);
    EXPECT_NEAR(box.CentreX(), 0.0, 0.002);

    m_Header.SetTitle2("H");
    box = DrawnBox();
    EXPECT_NEAR(box.top, 0.95, kTolerance);
    EXPECT_NEAR(box.bottom, 0.95 - Height() * 5.0 / 3.0 - Height(), kTolerance);

    m_Header.SetTitle1("");
    m_Header.SetTitle2("");
    m_Header.SetFooter("H");
    box = DrawnBox();
    EXPECT_NEAR(box.bottom, -0.95, kTolerance);
    EXPECT_NEAR(box.top, -0.95 + Height(), kTolerance);
}

TEST_F(HeaderDrawing, TheSecondTitleTakesTheEmptyPlace) {
    m_Header.SetTitle2("H");
    EXPECT_NEAR(DrawnBox().top, 0.95, kTolerance);
}

TEST_F(HeaderDrawing, FactorsArriveFromTheOwner) {
    m_Header.SetTitle1("HHH");
    const Box plain = DrawnBox();
    m_Header.SetViewAspect(0.5);
    m_Header.SetRelSize(1.5);
    const Box scaled = DrawnBox();
    EXPECT_NEAR(scaled.right - scaled.left, 0.75 * (plain.right - plain.left), kTolerance);
    EXPECT_NEAR(scaled.top - scaled.bottom, 1.5 * (plain.top - plain.bottom), kTolerance);
    EXPECT_NEAR(scaled.top, 0.95, kTolerance);
}

TEST_F(HeaderDrawing, EmptyAndDisabledHeadersDrawNothing) {
    EXPECT_GT(DrawnBox().left, DrawnBox().right);
    m_Header.SetTitle1("H");
    m_Header.EnableHeader(0);
    EXPECT_GT(DrawnBox().left, DrawnBox().right);
}

}  // namespace
}  // namespace varnel::test
