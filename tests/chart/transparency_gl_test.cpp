// What can be seen through: mixed from the back to the front whatever the order of drawing, behind
// what is opaque, and only where the view's switch is on.
#include <gtest/gtest.h>

#include <string>

#include "tests/support/files.h"
#include "tests/support/gl_fixture.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

struct Sheet {
    double height;  ///< the higher, the nearer
    RGBDType color;
};

struct Case {
    const char* name;
    int transparency;
    Sheet sheets[2];
    int red, green, blue;
};

constexpr RGBDType kRed{1, 0, 0, 0.5}, kBlue{0, 0, 1, 0.5}, kGreen{0, 1, 0, 1};
constexpr Case kCases[] = {
    {"far first", 1, {{1, kBlue}, {2, kRed}}, 191, 64, 128},
    {"near first", 1, {{2, kRed}, {1, kBlue}}, 191, 64, 128},
    {"before what is opaque", 1, {{2, kRed}, {1, kGreen}}, 128, 128, 0},
    {"behind what is opaque", 1, {{2, kGreen}, {1, kRed}}, 0, 255, 0},
    {"not at all", 1, {{2, {1, 0, 0, 0}}, {1, kGreen}}, 0, 255, 0},
    {"without the switch", 0, {{2, kRed}, {1, kGreen}}, 255, 0, 0},
};

/// Sheets over each other, seen from above.
class Transparency : public testing::Test {
 protected:
    Transparency() : window(200, 200), view(&window, 200, 200) {}

    void Fill(const Case& c, int outlines) {
        view.DeleteCharts();
        view.SetTransparency(c.transparency);
        CChart3D* const chart = view.NewChart3D();
        chart->EnableBorder(0);
        CTransform3D* const transform = chart->NewTransform({-1, -1, 0, 0}, {1, 1, 3, 0});
        transform->SetRotate({-90, 0, 0, 0});
        transform->SetChartRect({0.9, 0.9, 0.5, 0});
        for (const Sheet& sheet : c.sheets) {
            const double z[] = {sheet.height, sheet.height, sheet.height, sheet.height};
            CPolysurface surface(2, 2, -1, -1, 1, 1, z, GRID_QUADRILATERALS);
            surface.SetPolysurfaceColors(0, sheet.color, sheet.color);
            CChartObj3D* const object = chart->NewChartObj(transform);
            object->PolysurfaceChart3D(&surface);
            object->SetColorMode(COLOR_MODE_FLAT);
            object->SetOutlineMode(outlines);
        }
        view.SetViewSizePrinter();
    }

    CWnd window;
    CChartView3D view;
};

TEST_F(Transparency, MixesFromTheBack) {
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.name);
        Fill(c, 0);
        view.DrawView();
        // Sheets of 180 pixels are drawn in pieces: no seam may show.
        for (int x = 20; x < 180; x += 7)
            for (int y = 20; y < 180; y += 7) {
                const RGBQUAD p = view.GetDIBSectionPntr()->GetBitmap()->PixelFromTop(x, y);
                ASSERT_NEAR(p.rgbRed, c.red, 2) << x << ' ' << y;
                ASSERT_NEAR(p.rgbGreen, c.green, 2) << x << ' ' << y;
                ASSERT_NEAR(p.rgbBlue, c.blue, 2) << x << ' ' << y;
            }
    }
}

TEST_F(Transparency, LinesAndSolidsMixToo) {
    Fill({"", 1, {{1, kGreen}, {1, {0, 0, 0, 0}}}, 0, 0, 0}, 0);
    CChart3D& chart = *view.GetChart(0);
    const point3Dtype bend[] = {{-0.8, -0.5, 2, 0},
                                {0, -0.5, 2, 0},
                                {0.6, 0.1, 2, 0},
                                {0.6, -0.9, 2, 0},
                                {-0.4, 0.3, 2, 0}};
    CChartObj3D* const line = chart.NewChartObj(chart.GetTransform(0));
    line->LineChart3D(bend, 5, LINE_SOLID, 20, kRed);
    line->SetLineJoins(LINE_JOINS_ROUND);
    CAuxObj3D* const cube = chart.NewAuxObj(chart.GetTransform(0), AUX_CUBE);
    cube->SetScale(0.2);
    cube->SetColor(kRed);
    cube->SetColorMode(COLOR_MODE_FLAT);
    cube->SetLocation({-0.5, 0.5, 2, 0});
    view.DrawView();
    const auto pixel = [this](int x, int y) {
        return view.GetDIBSectionPntr()->GetBitmap()->PixelFromTop(x, y);
    };
    // Around its bend and where it crosses itself the line is as dense as elsewhere.
    EXPECT_NEAR(pixel(114, 64).rgbRed, 128, 2);
    for (int x = 94; x < 107; ++x)
        for (int y = 52; y < 59; ++y)
            ASSERT_NEAR(pixel(x, y).rgbRed, 128, 2) << x << ' ' << y;
    EXPECT_NEAR(pixel(55, 145).rgbGreen, 64, 2) << "through the front and the back";
}

TEST_F(Transparency, IsInVectorFilesAndChartFiles) {
    Fill(kCases[0], 1);
    const test::TemporaryFolder folder;
    const std::string file = folder.File("a.svg");
    view.SaveToSVG(file);
    const std::string svg = test::ReadAll(file);
    const std::size_t blue = svg.find("#00f\" fill-opacity=\"");
    const std::size_t red = svg.find("#f00\" fill-opacity=\"");
    EXPECT_NE(red, std::string::npos);
    EXPECT_LT(blue, red) << "the far sheet is painted first";
    EXPECT_NE(svg.find("stroke-opacity=\""), std::string::npos);
    view.Save(file);
    CChartView3D loaded(&window, 200, 200);
    loaded.Load(file);
    EXPECT_EQ(loaded.GetTransparency(), 1);
}

}  // namespace
}  // namespace varnel
