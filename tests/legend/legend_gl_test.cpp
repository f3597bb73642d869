// Legends in pictures: samples look like what they stand for at every size, and a legend touches
// nothing but its box.
#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

#include "tests/support/gl_fixture.h"
#include "tests/support/memory_target.h"
#include "tests/support/values.h"
#include "varnel/varnel.h"

namespace varnel::test {
namespace {

constexpr unsigned kWhitePixel = 0xFFFFFF;
constexpr int kSizes[][2] = {{400, 300}, {1024, 768}, {2000, 1500}};

using Count = std::map<unsigned, int>;

/// A view with an image of its own size, drawn without antialiasing.
struct View {
    View(int w, int h) : width(w), height(h), window(w, h), view(&window, w, h) {
        CErr3D::SetErrorReportMode(0);
        view.EnableBorder(0);
        view.SetViewSizePrinter();
    }
    ~View() {
        view.GetOpenGLPntr()->MakeCurrent();
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    }

    /// x, y from the lower left.
    unsigned Pixel(int x, int y) const {
        return Rgb(view.GetDIBSectionPntr()->GetBitmap()->PixelFromTop(x, height - 1 - y));
    }
    std::vector<unsigned> Draw() {
        view.DrawView();
        std::vector<unsigned> pixels;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                pixels.push_back(Pixel(x, y));
        return pixels;
    }
    static bool IsInside(const GLViewportType& box, int x, int y) {
        return x >= box.x && x < box.x + box.width && y >= box.y && y < box.y + box.height;
    }
    /// How often each colour stands inside a box, or outside of it.
    Count Colors(const GLViewportType& box, bool inside) const {
        Count count;
        const int h = inside ? box.y + box.height : height;
        for (int y = inside ? box.y : 0; y < h; ++y) {
            unsigned color = Pixel(0, y);
            int run = 0;  // counted by runs: pictures are large
            for (int x = 0; x < width; ++x) {
                if (IsInside(box, x, y) != inside) continue;
                const unsigned pixel = Pixel(x, y);
                if (pixel != color) {
                    if (run > 0) count[color] += run;
                    run = 0;
                    color = pixel;
                }
                ++run;
            }
            if (run > 0) count[color] += run;
        }
        return count;
    }
    /// Expects the ring of pixels inside the border to be free: nothing was cut off at the edges.
    void ExpectFreeRing(const GLViewportType& b) const {
        for (int x = b.x + 1; x < b.x + b.width - 1; ++x) {
            ASSERT_EQ(Pixel(x, b.y + 1), kWhitePixel) << x;
            ASSERT_EQ(Pixel(x, b.y + b.height - 2), kWhitePixel) << x;
        }
        for (int y = b.y + 1; y < b.y + b.height - 1; ++y) {
            ASSERT_EQ(Pixel(b.x + 1, y), kWhitePixel) << y;
            ASSERT_EQ(Pixel(b.x + b.width - 2, y), kWhitePixel) << y;
        }
    }

    int width;
    int height;
    CWnd window;
    CChartView3D view;
};

CChart3D* AddChart(CChartView3D& view, CTransform3D** t, double top) {
    CChart3D* const chart = view.NewChart3D({0, 0, 0, 0}, {6, 1, top, 0}, t);
    chart->EnableBorder(0);
    (*t)->SetRotate({-18, 0, 24, 0});
    (*t)->SetChartRect({0.7, 0.3, 0.5, 0});
    return chart;
}

CChartObj3D* AddGroupedBars(CChartView3D& view) {
    CTransform3D* t = nullptr;
    CChart3D* const chart = AddChart(view, &t, 30);
    const double x[] = {1, 2, 3, 4, 5};
    const double values[] = {5, 7, 9, 8, 12, 6, 5, 4, 6, 5, 3, 4, 6, 8, 9};
    const RGBDType colors[] = {{0.8, 0.2, 0.2, 1}, {0.2, 0.6, 0.4, 1}, {0.2, 0.4, 0.8, 1}};
    CChartObj3D* const bars = chart->NewChartObj(t);
    bars->GroupBarChart25D(x, values, 0.5, 0, 5, 3, 1, 0.7, 0.5, colors, kBlack, 1, 1, 0);
    bars->SetColorMode(0);
    return bars;
}

TEST(Legend, SymbolsAreLitAsInTheChart) {
    for (const auto& size : kSizes) {
        View v(size[0], size[1]);
        for (int symbol = 10; symbol <= 15; ++symbol) {
            v.view.DeleteChartViewObjects();
            CTransform3D* t = nullptr;
            CChart3D* const chart = AddChart(v.view, &t, 6);
            t->SetRotate({-18, 12, 24, 0});
            chart->SetLightPosition({0.5, 1, 0.7, 0});
            chart->SetLightComponent(LIGHT_MODEL_AMBIENT, {0.3, 0.2, 0.3, 1});
            const point3Dtype points[] = {{2, 0.5, 2, 0}, {4, 0.5, 3, 0}};
            CChartObj3D* const scatter = chart->NewChartObj(t);
            scatter->ScatterChart3D(points, 2.0, 2, symbol, {0.6, 0.7, 0.2, 1}, kBlack, -1, 0);
            CLegend3D* const legend = v.view.NewLegend3D();
            legend->AddChartObj(scatter, "A symbol");
            // A chart drawn later has its own light.
            CChart3D* const other = AddChart(v.view, &t, 6);
            other->SetChartPosition({0, 0, 0.1, 0.1});
            other->SetLightPosition({-1, 0, 0, 0});
            v.Draw();
            const GLViewportType box = legend->GetLegendViewport();
            const Count inChart = v.Colors(box, false);
            // Every colour of the symbol in the legend is one of the faces in the chart, up to a
            // step of rounding; its large faces are all there.
            const auto near = [](const Count& colors, unsigned wanted) {
                return std::any_of(colors.begin(), colors.end(), [wanted](const auto& entry) {
                    for (int shift : {0, 8, 16}) {
                        const int a = static_cast<int>(entry.first >> shift & 255);
                        if (std::abs(a - static_cast<int>(wanted >> shift & 255)) > 2) return false;
                    }
                    return true;
                });
            };
            const Count inLegend = v.Colors(box, true);
            for (const auto& [color, count] : inLegend)
                EXPECT_TRUE(near(inChart, color))
                    << "symbol " << symbol << ", " << std::hex << color << ", " << count;
            int large = 0;
            for (const auto& [color, count] : inChart)
                if (color != kWhitePixel && color != 0 && count > size[0] * size[1] / 1000) {
                    EXPECT_TRUE(near(inLegend, color)) << symbol << ", " << std::hex << color;
                    ++large;
                }
            EXPECT_GT(large, 0);
            v.ExpectFreeRing(box);
            if (HasFailure()) return;
        }
    }
}

TEST(Legend, LinesHaveTheirStyleAndRectanglesTheirColour) {
    View v(400, 300);
    CLegend3D* const legend = v.view.NewLegend3D();
    legend->NewLegendObj()->SetLineSample(3, 3, {1, 0, 0, 1});  // every other pixel
    legend->NewLegendObj()->SetLineSample(0, 1, {0, 0, 1, 1});
    legend->NewLegendObj()->SetRectangleSample({0, 1, 0, 1}, kBlack);
    v.Draw();
    const Count colors = v.Colors(legend->GetLegendViewport(), true);
    // 34 pixels, in which a pattern of 16 shows twice.
    EXPECT_EQ(colors.at(0xFF0000), 34 / 2 * 3);
    EXPECT_EQ(colors.at(0x0000FF), 34);
    EXPECT_EQ(colors.at(0x00FF00), 32 * 6) << "0.8 ems of 9.9 high, in a frame of a pixel";
}

TEST(Legend, LeavesThePictureOutsideItsBoxAlone) {
    View v(400, 300);
    AddGroupedBars(v.view);
    v.view.GetHeader()->SetTitle1("Hidden by the chart");
    const std::vector<unsigned> before = v.Draw();
    CLegend3D* const legend = v.view.NewLegend3D();
    legend->SetLegendPosition({0.3, 0.3, 0, 0});
    legend->SetLegendTitle("Over the bars");
    legend->NewLegendObj()->SetString("One");
    legend->SetBorderThickness(3);
    legend->SetBorderColor({0, 0.4, 0, 1});
    legend->SetLegendBkColor({1, 1, 0.8, 1});
    const std::vector<unsigned> after = v.Draw();
    const GLViewportType box = legend->GetLegendViewport();
    EXPECT_EQ(box.x, 120);
    EXPECT_EQ(box.y, 90);
    for (int y = 0; y < 300; ++y)
        for (int x = 0; x < 400; ++x) {
            const std::size_t i = static_cast<std::size_t>(y * 400 + x);
            if (!View::IsInside(box, x, y)) {
                ASSERT_EQ(after[i], before[i]) << x << ", " << y;
                continue;
            }
            const int edge = std::min(
                {x - box.x, box.x + box.width - 1 - x, y - box.y, box.y + box.height - 1 - y});
            if (edge < 3) {
                ASSERT_EQ(after[i], 0x006600u) << x << ", " << y;
            }
            if (edge == 3) {
                ASSERT_EQ(after[i], 0xFFFFCCu) << "nothing of the chart shows through";
            }
        }

    legend->EnableLegend(0);
    EXPECT_EQ(v.Draw(), before);
    legend->EnableLegend(1);
    legend->EnableBackground(0);
    legend->EnableBorder(0);
    legend->DeleteLegendObjs();
    legend->SetLegendTitle("");
    EXPECT_EQ(v.Draw(), before) << "an empty legend draws nothing";
    legend->SetLegendTitle(".");
    const std::vector<unsigned> dot = v.Draw();
    int changed = 0;
    for (std::size_t i = 0; i < dot.size(); ++i)
        changed += dot[i] != before[i] ? 1 : 0;
    EXPECT_GT(changed, 0);
    EXPECT_LT(changed, 20) << "without a background the chart shows through";
}

TEST(Legend, StandsInItsCornerAndKeepsInsideTheView) {
    View v(400, 300);
    CLegend3D* const legend = v.view.NewLegend3D();
    legend->SetLegendTitle("Corner");
    legend->SetLegendMargin(0.1);
    const auto box = [&] {
        v.view.DrawView();
        return legend->GetLegendViewport();
    };
    EXPECT_EQ(box().x + box().width, 370);
    EXPECT_EQ(box().y + box().height, 270);
    legend->SetLegendPlace(LEGEND_LOWER_LEFT);
    EXPECT_EQ(box().x, 30);
    EXPECT_EQ(box().y, 30);
    legend->SetLegendSize(0.5, 0.25);
    EXPECT_EQ(box().width, 200);
    EXPECT_EQ(box().height, 75);
    legend->SetLegendPosition({0.9, 0.9, 0.5, 0.5});
    EXPECT_EQ(box().x, 200);
    EXPECT_EQ(box().y, 150);
}

TEST(Legend, LongTextsAreNotCut) {
    View v(400, 300);
    CLegend3D* const legend = v.view.NewLegend3D();
    legend->SetLegendPosition({0.1, 0.1, 0.4, 0.2});
    for (int i = 0; i < 4; ++i)
        legend->NewLegendObj()->SetString(CString(60, 'W'));
    v.Draw();
    v.ExpectFreeRing(legend->GetLegendViewport());
    EXPECT_LT(v.Colors(legend->GetLegendViewport(), true).at(kWhitePixel), 160 * 60);

    // Nor is anything undefined with absurd attributes.
    const double inf = std::numeric_limits<double>::infinity();
    legend->SetFontHeightSF(1e300);
    legend->SetLegendMargin(inf);
    legend->SetBorderThickness(inf);
    legend->SetLegendPosition({-inf, std::nan(""), inf, -1});
    legend->GetLegendObj(0)->SetSymbolSample(10, kBlack, kBlack);
    legend->GetLegendObj(0)->SetRotation({inf, inf, std::nan(""), 0});
    legend->GetLegendObj(1)->SetLineSample(99, inf, kBlack);
    legend->GetLegendObj(2)->SetOutlineWidth(std::nan(""));
    legend->SetColorBar(&kBlack, 1, 0, 1e-300);
    legend->SetScaleLength(inf);
    v.Draw();
    const GLViewportType box = legend->GetLegendViewport();
    EXPECT_LE(box.width, 400);
    EXPECT_LE(box.height, 300);
}

}  // namespace
}  // namespace varnel::test
