#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/support/gl_fixture.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

using test::ExpectError;

constexpr RGBDType kRed{1, 0, 0, 1};
constexpr RGBDType kBlue{0, 0, 1, 1};
constexpr RGBDType kBlack{0, 0, 0, 1};

/// A chart that shows one red bar on white, seen straight from the front.
CChart3D* AddBar(CChartView3D& view, const RGBDType& color) {
    CTransform3D* t = nullptr;
    CChart3D* const chart = view.NewChart3D({0, 0, 0, 0}, {10, 1, 10, 0}, &t);
    t->SetChartRect({1, 0.5, 1, 0});
    CChartObj3D* const bars = chart->NewChartObj(t);
    double x = 2.5;
    double y = 5;
    bars->BarChart25D(&x, &y, 0, 0, 1, 5, 1, color, color, 0, 0, 0);
    bars->SetColorMode(0);
    bars->SetOutlineMode(0);
    return chart;
}

class ChartView : public ::testing::Test {
 protected:
    void SetUp() override { CErr3D::SetErrorReportMode(0); }
    void TearDown() override { std::filesystem::remove_all(m_Folder); }

    std::string Path(const std::string& name) {
        std::filesystem::create_directories(m_Folder);
        return m_Folder / name;
    }
    static RGBQUAD Pixel(const CChartView3D& view, int x, int y) {
        const Bitmap& image = *view.GetDIBSectionPntr()->GetBitmap();
        return image.PixelFromTop(x, image.Height() - 1 - y);
    }
    static bool IsColor(const RGBQUAD& p, int r, int g, int b) {
        return p.rgbRed == r && p.rgbGreen == g && p.rgbBlue == b;
    }
    static std::vector<BYTE> Image(CChartView3D& view) {
        CDIBSection& section = *view.GetDIBSectionPntr();
        const auto size = static_cast<std::size_t>(section.StorageWidth()) *
                          static_cast<std::size_t>(section.DIBHeight());
        return {section.FindDIBBits(), section.FindDIBBits() + size};
    }

    const std::filesystem::path m_Folder =
        std::filesystem::temp_directory_path() / ("varnel_chart_view_" + std::to_string(getpid()));
};

TEST_F(ChartView, DrawsChartsIntoTheirViewports) {
    CWnd window(200, 100);
    CChartView3D view(&window, 200, 100);
    view.EnableBorder(0);
    CChart3D* const left = AddBar(view, kRed);
    CChart3D* const right = AddBar(view, kBlue);
    left->SetChartPosition({0, 0, 0.5, 1});
    right->SetChartPosition({0.5, 0, 0.5, 0.5});
    right->SetChartBkColor(SetRGBD(0.9, 0.9, 0.5, 1));
    for (CChart3D* chart : {left, right})
        chart->EnableBorder(0);
    view.SetViewBkColor(SetRGBD(0, 1, 0, 1));
    view.SetViewSizePrinter();
    view.DrawView();
    EXPECT_TRUE(IsColor(Pixel(view, 50, 25), 255, 0, 0));
    EXPECT_TRUE(IsColor(Pixel(view, 50, 75), 255, 255, 255));
    EXPECT_TRUE(IsColor(Pixel(view, 150, 12), 0, 0, 255));
    EXPECT_TRUE(IsColor(Pixel(view, 110, 40), 230, 230, 128));
    EXPECT_TRUE(IsColor(Pixel(view, 150, 75), 0, 255, 0)) << "the view's own background";
    EXPECT_EQ(right->GetChartViewport().x, 100);
    EXPECT_EQ(right->GetChartViewport().height, 50);
    left->EnableChart(0);
    view.DrawView();
    EXPECT_TRUE(IsColor(Pixel(view, 50, 25), 0, 255, 0)) << "not even its background";
}

TEST_F(ChartView, ChartsOfOneViewKeepTheirOwnLight) {
    CWnd window(100, 100);
    CChartView3D view(&window, 100, 100);
    view.EnableBorder(0);
    CChart3D* const bright = AddBar(view, kRed);
    CChart3D* const dim = AddBar(view, kRed);
    bright->SetChartPosition({0, 0, 0.5, 1});
    dim->SetChartPosition({0.5, 0, 0.5, 1});
    dim->SetLightComponent(4609, SetRGBD(0, 0, 0, 1));
    dim->SetLightComponent(LIGHT_MODEL_AMBIENT, SetRGBD(0.2, 0.2, 0.2, 1));
    for (CChart3D* chart : {bright, dim})
        chart->GetChartObj(0)->SetColorMode(1);
    view.SetViewSizePrinter();
    view.DrawView();
    const int shone = Pixel(view, 25, 25).rgbRed;
    const int shaded = Pixel(view, 75, 25).rgbRed;
    EXPECT_GT(shone, 150);
    EXPECT_NEAR(shaded, 255 * 0.3, 3) << "the scene's ambient colour and the light's own";
    view.DrawView();
    EXPECT_EQ(Pixel(view, 25, 25).rgbRed, shone) << "drawing again changes nothing";
}

TEST_F(ChartView, ScreenDrawingCopiesTheLowerLeftPart) {
    CWnd window(300, 200);
    CChartView3D view(&window);
    EXPECT_EQ(view.GetDIBSectionPntr()->DIBWidth(), 300) << "the device's resolution";
    view.EnableBorder(0);
    AddBar(view, kRed)->EnableBorder(0);
    view.DrawViewScreen(window.GetDC(), 20, 30, 100, 80);
    const Bitmap& screen = *window.GetPixels();
    EXPECT_TRUE(IsColor(screen.PixelFromTop(20 + 50, 30 + 60), 255, 0, 0));
    EXPECT_TRUE(IsColor(screen.PixelFromTop(20 + 50, 30 + 20), 255, 255, 255));
    EXPECT_TRUE(IsColor(screen.PixelFromTop(10, 10), 0, 0, 0)) << "outside nothing is drawn";
    EXPECT_TRUE(IsColor(screen.PixelFromTop(125, 115), 0, 0, 0));
    view.DrawViewScreen();
    EXPECT_TRUE(IsColor(screen.PixelFromTop(150, 190), 255, 0, 0));
}

TEST_F(ChartView, SeveralViewsDoNotDisturbEachOther) {
    CWnd one(60, 60);
    CWnd two(40, 40);
    CChartView3D first(&one, 60, 60);
    auto second = std::make_unique<CChartView3D>(&two, 40, 40);
    AddBar(first, kRed);
    AddBar(*second, kBlue);
    first.SetViewSizePrinter();
    second->SetViewSizePrinter();
    first.DrawView();
    second->DrawView();
    const auto alone = Image(first);
    second->GetChart(0)->GetTransform(0)->SetRotate({10, 20, 30, 0});
    second->DrawView();
    first.GetChart(0)->SetChartPosition({0, 0, 1, 1});
    first.DrawView();
    EXPECT_EQ(Image(first), alone);
    second.reset();
    first.DrawView();
    EXPECT_EQ(Image(first), alone) << "destroying one leaves the other its context";
}

TEST_F(ChartView, BmpFileHoldsTheImage) {
    CWnd window(33, 20, 24);
    CChartView3D view(&window, 33, 20);
    AddBar(view, kRed);
    view.SaveToFile(Path("a.bmp"));
    std::ifstream in(Path("a.bmp"), std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), {});
    ASSERT_EQ(bytes.size(), 14U + 40 + 1024 + 100 * 20);
    EXPECT_EQ(bytes.substr(0, 2), "BM");
    std::int32_t offset;
    std::memcpy(&offset, bytes.data() + 10, 4);
    EXPECT_EQ(offset, 1078);
    EXPECT_EQ(static_cast<BYTE>(bytes[28]), 24);
    const char* const pixel = bytes.data() + 1078 + 5 * 100 + 16 * 3;
    EXPECT_EQ(static_cast<BYTE>(pixel[0]), 0);
    EXPECT_EQ(static_cast<BYTE>(pixel[2]), 255);
    view.SaveToPNG(Path("a.png"));
    EXPECT_GT(std::filesystem::file_size(Path("a.png")), 60U);
    ExpectError(ERR3D_FILE_OPEN_OUTPUT, ERR3DCLASS_DIBSECTION, "SaveDIB",
                [&] { view.SaveToFile(Path("missing/a.bmp")); });
    ExpectError(ERR3D_FILE_OPEN_OUTPUT, ERR3DCLASS_CHARTVIEW3D, "SaveToPNG",
                [&] { view.SaveToPNG(Path("missing/a.png")); });
    ExpectError(ERR3D_DISK_IO, ERR3DCLASS_DIBSECTION, "SaveDIB",
                [&] { view.SaveToFile("/dev/full"); });
    ExpectError(ERR3D_DISK_IO, ERR3DCLASS_CHARTVIEW3D, "SaveToPNG",
                [&] { view.SaveToPNG("/dev/full"); });
}

TEST_F(ChartView, WindowsWithoutAHandleInitialiseLater) {
    ExpectError(ERR3D_CWND_PARAMETER, ERR3DCLASS_CHARTVIEW3D, "CChartView3D",
                [] { CChartView3D view(nullptr); });
    CWnd window;
    CChartView3D view(&window, 50, 40);
    view.SetFontItalics(1);
    EXPECT_EQ(view.GetOpenGLPntr(), nullptr);
    ExpectError(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_CHARTVIEW3D, "NewChart3D",
                [&] { view.NewChart3D(); });
    ExpectError(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_CHARTVIEW3D, "SaveToFile",
                [&] { view.SaveToFile(Path("never.bmp")); });
    ExpectError(ERR3D_CDC_PARAMETER, ERR3DCLASS_CHARTVIEW3D, "InitDeviceContext",
                [&] { view.DrawViewScreen(); });
    window.CreateInMemory(50, 40);
    AddBar(view, kRed);
    view.SetViewSizePrinter();
    view.DrawView();
    EXPECT_TRUE(IsColor(Pixel(view, 25, 10), 255, 0, 0));
}

TEST_F(ChartView, TheWindowMayGoFirst) {
    auto window = std::make_unique<CWnd>(50, 40);
    CChartView3D view(window.get(), 50, 40);
    AddBar(view, kRed);
    window.reset();
    view.SetViewSizePrinter();
    view.DrawView();
    EXPECT_TRUE(IsColor(Pixel(view, 25, 10), 255, 0, 0));
}

TEST_F(ChartView, ImpossibleImagesAreErrors) {
    CWnd window(10, 10);
    for (const auto& [w, h] : {std::pair{-5, 10}, {0, 10}, {1 << 30, 1 << 30}})
        ExpectError(ERR3D_OBJECT_NEW, ERR3DCLASS_CHARTVIEW3D, "MakeCompatibleBitmap",
                    [&, w = w, h = h] { CChartView3D view(&window, w, h); });
    // Memory there may be, but no context draws that wide.
    ExpectError(ERR3D_PIXEL_FORMAT, ERR3DCLASS_OPENGL, "InitContext",
                [&] { CChartView3D view(&window, 100000, 1); });
}

TEST_F(ChartView, EveryDepthShowsTheColours) {
    for (int bits : {8, 16, 24, 32}) {
        SCOPED_TRACE(bits);
        CWnd window(60, 60, bits);
        CChartView3D view(&window, 60, 60);
        view.EnableBorder(0);
        AddBar(view, kRed)->EnableBorder(0);
        view.SetViewSizePrinter();
        view.DrawView();
        EXPECT_TRUE(IsColor(Pixel(view, 30, 15), 255, 0, 0));
        EXPECT_TRUE(IsColor(Pixel(view, 30, 45), 255, 255, 255));
    }
}

TEST_F(ChartView, FactoriesRaiseTheirErrors) {
    CWnd window(50, 40);
    CChartView3D view(&window, 50, 40);
    CChart3D* const chart = view.NewChart3D();
    const auto transform = [&](const char* name, const auto& call) {
        ExpectError(ERR3D_TRANSFORM_PARAMETER, ERR3DCLASS_CHART3D, name, call);
    };
    transform("NewAUXObj", [&] { chart->NewAuxObj(3); });
    transform("NewAUXObj", [&] { chart->NewAuxObj(nullptr, 3); });
    transform("NewAxes", [&] { chart->NewAxes({0, 0, 0, 0}, {1, 1, 1, 0}); });
    transform("NewAxes", [&] { chart->NewAxes(nullptr); });
    transform("NewChartObj", [&] { chart->NewChartObj(nullptr); });
    transform("NewChartTextObj", [&] { chart->NewChartTextObj("text"); });
    transform("NewDIBObj", [&] { chart->NewDIBObj("file.bmp"); });
    ExpectError(ERR3D_CVIEW_PARAMETER, ERR3DCLASS_CHART3D, "InitChart3D",
                [] { CChart3D orphan(nullptr); });
    EXPECT_EQ(chart->GetNumAuxObjs(), 0);

    CTransform3D* const first = chart->NewTransform({0, 0, 0, 0}, {1, 1, 1, 0});
    CTransform3D* const second = chart->NewTransform({0, 0, 0, 0}, {2, 2, 2, 0});
    EXPECT_EQ(chart->NewAxes({0, 0, 0, 0}, {1, 1, 1, 0})->GetTransform(), second);
    EXPECT_EQ(chart->NewAuxObj(3)->GetTransform(), first);
    EXPECT_EQ(chart->NewChartTextObj("text")->GetTransform(), first);
    EXPECT_EQ(chart->MatchTransformID(second->GetSelfID()), second);
    EXPECT_EQ(chart->MatchTransformID(-7), nullptr);
}

TEST_F(ChartView, ChartAttributes) {
    CChart3D chart;
    EXPECT_EQ(chart.GetLightComponent(4610).a, 0);
    chart.SetLightComponent(4610, kRed);
    chart.SetLightComponent(LIGHT_MODEL_AMBIENT, kBlue);
    EXPECT_EQ(chart.GetLightComponent(LIGHT_MODEL_AMBIENT).b, 1);
    const std::vector<RGBDType> colors(258, kRed);
    chart.SetTextureColorArray(colors.data(), 1, 2, 258);
    EXPECT_EQ(chart.GetNumTextureColors(), 258);
    chart.SetTextureColorArray(colors.data(), 5, 6, 259);
    double min = 0;
    chart.GetTextureColorArray(nullptr, &min, nullptr);
    EXPECT_EQ(min, 1);
    chart.SetChartPosition({0.5, 0, 0.5, 0.5});
    EXPECT_EQ(chart.GetChartViewport().width, 100) << "no view, no pixels";
    chart.SetChartViewport({0, 0, 400, 300});
}

}  // namespace
}  // namespace varnel
