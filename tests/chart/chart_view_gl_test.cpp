#include "tests/support/view_test.h"

#include <thread>

#include "tests/support/record_bytes.h"

namespace varnel::test {
namespace {

using ChartView = ViewTest;

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
    Draw(view);
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
    Draw(view);
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

TEST_F(ChartView, FilesHoldTheImageOrSayWhyNot) {
    CWnd window(33, 20, 24);
    CChartView3D view(&window, 33, 20);
    AddBar(view, kRed);
    view.SaveToFile(Path("a.bmp"));
    EXPECT_EQ(ReadAll(Path("a.bmp")).size(), 14U + 40 + 1024 + 100 * 20);
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
    Draw(view);
    EXPECT_TRUE(IsColor(Pixel(view, 25, 10), 255, 0, 0));
}

TEST_F(ChartView, ImpossibleImagesAreErrors) {
    CWnd window(10, 10);
    for (const auto& [w, h] : {std::pair{-5, 10}, {0, 10}, {1 << 30, 1 << 30}, {100000, 1}})
        ExpectError(ERR3D_OBJECT_NEW, ERR3DCLASS_CHARTVIEW3D, "MakeCompatibleBitmap",
                    [&, w = w, h = h] { CChartView3D view(&window, w, h); });
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
    chart.SetFillDepth(0.5);
    ExpectFreshAfter(chart, &CChart3D::InitChartDefaults);
}

TEST_F(ChartView, DefaultsComeBackWhole) {
    constexpr std::size_t kFixedBytes = 4 * 4 + 9 + 32 + 4 + 8 + 32 + 4;
    CChartView3D view(&m_Window, 160, 120);
    view.SetFont("Courier New", 300, 1);
    view.SetFontItalics(1);
    view.SetFontUnderline(1);
    view.SetViewBkColor(kRed);
    view.SetViewBorderColor(kRed);
    view.SetViewBorderThickness(9);
    view.SetViewBkMode(1);
    view.EnableBorder(0);
    view.SetPrintScaleMode(3);
    view.SetNormPrintRect({0.5, 0.5, 0.1, 0.1});
    view.SetPrintResolution(1);
    view.SetAntialiasing(4);
    view.SetFrameOffset(0);
    view.SetHeaderOnTop(1);
    view.InitChartViewDefaults();
    CChartView3D fresh;
    fresh.Save(Path("fresh.chart"));
    view.Save(Path("a.chart"));
    EXPECT_EQ(ReadAll(Path("a.chart")).substr(0, kFixedBytes),
              ReadAll(Path("fresh.chart")).substr(0, kFixedBytes));
    EXPECT_EQ(ReadAll(Path("a.chart")).size(), ReadAll(Path("fresh.chart")).size());
    EXPECT_EQ(view.GetPrintScaleMode(), 1);
    EXPECT_EQ(view.GetNormPrintRect().width, 1);
    EXPECT_EQ(view.GetPrintResolution() + view.GetAntialiasing() + view.GetHeaderOnTop(), 0);
    EXPECT_EQ(view.GetFrameOffset(), 1);
    const auto without = Draw(view);
    view.GetHeader()->SetTitle1("drawn");
    EXPECT_NE(Draw(view), without) << "the new header is bound";
}

TEST_F(ChartView, AnySizeAndAnyFontOptionDraws) {
    CChartView3D view(&m_Window, 160, 120);
    AddBar(view, kRed);
    view.DrawView();
    EXPECT_TRUE(IsColor(Pixel(view, 40, 30), 255, 0, 0)) << "before a size was set";
    view.GetChart(0)->GetHeader()->SetTitle1("Title");
    const int counts[][2] = {{-1, 128}, {0, 128}, {300, 256}};
    for (const auto& [option, same] : counts) {
        view.SetFont("Arial", 700, option);
        const auto image = Draw(view);
        view.SetFont("Arial", 700, same);
        EXPECT_EQ(Draw(view), image) << option;
    }
}

TEST_F(ChartView, AHeaderOnTopIsSeenOverTheCharts) {
    CChartView3D view(&m_Window, 160, 120);
    AddBar(view, kRed)->EnableBorder(0);
    const auto bare = Draw(view);
    view.GetHeader()->SetTitle1("Title");
    EXPECT_EQ(Draw(view), bare) << "the chart covers it";
    view.SetHeaderOnTop(1);
    EXPECT_NE(Draw(view), bare);
    EXPECT_TRUE(IsColor(Pixel(view, 40, 30), 255, 0, 0));
}

TEST_F(ChartView, WhatShowsNothingIsTold) {
    CChartView3D view(&m_Window, 160, 120);
    EXPECT_EQ(Told([&] { Draw(view); }), "DrawView: the view has no chart that is enabled\n");
    CTransform3D* t = nullptr;
    CAxes3D* axes = nullptr;
    view.NewChart3D({0, 0, 0, 0}, {1, 1, 1, 0}, &t, &axes);
    EXPECT_EQ(Told([&] { Draw(view); }),
              "DrawChart: the chart has no data, and no axes that are enabled\n");
    axes->EnableAxis(0, 1);
    EXPECT_EQ(Told([&] { Draw(view); }), "");
}

TEST_F(ChartView, AThemeIsOneCall) {
    CChartView3D view(&m_Window, 160, 120);
    CChart3D* const chart = AddBar(view, {0.8, 0.4, 0.2, 1});
    chart->GetChartObj(0)->SetColorMode(1);
    CAxes3D* const axes = chart->AutoAxes(chart->GetTransform(0));
    CTextObj3D* const text = chart->NewChartTextObj("default");
    CTextObj3D* const red = chart->NewChartTextObj("red");
    red->SetColor(kRed);
    ApplyTheme(view, Theme::Light());
    EXPECT_EQ(axes->GetWallEnable(0) + axes->GetWallEnable(1) + axes->GetWallEnable(2), 3);
    ApplyTheme(view, Theme::Dark());
    view.SetAntialiasing(0);
    Draw(view);
    const Theme dark = Theme::Dark();
    EXPECT_EQ(chart->GetChartBkColor().b, dark.background.b);
    EXPECT_EQ(view.GetViewBkColor().b, dark.background.b);
    EXPECT_EQ(text->GetColor().g, dark.text.g);
    EXPECT_EQ(red->GetColor().g, 0);
    EXPECT_EQ(axes->GetWallColor(1).r, dark.wall.r) << "the walls of the theme before";
    const RGBQUAD bar = Pixel(view, 40, 30);
    EXPECT_NEAR(bar.rgbRed, 0.8 * 255, 2) << "lit from the front, it has its own colour";
    EXPECT_NEAR(bar.rgbGreen, 0.4 * 255, 2);
    EXPECT_LE(bar.rgbRed, 0.8 * 255);
    ApplyTheme(*chart, Theme::Print());
    EXPECT_EQ(axes->GetWallEnable(1) + axes->GetGridEnable(1), 0);
}

}  // namespace
}  // namespace varnel::test
