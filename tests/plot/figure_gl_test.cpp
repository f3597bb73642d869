// Figures: every kind reaches the picture and the legend, and what is wrong is told in a sentence.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <functional>

#include "tests/support/x_server.h"
#include "varnel/axes/axes.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/chart_view.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/foundation/error.h"
#include "varnel/legend/legend.h"
#include "varnel/platform/dib_section.h"
#include "varnel/plot.h"
#include "varnel/transform/transform.h"

namespace varnel::plot {
namespace {

const Values kX{1, 2, 3, 4}, kY{3, 1, 4, 1}, kHigher{5, 5, 6, 7};
const Values kNames{"a", "b", "a", "b"};
constexpr RGBDType kPure{1, 0, 0, 1};
const Grid kHill{{0, 1, 0, 1, 3, 1, 0, 1, 0}, 3, 3};

#define DRAW(...) [](Figure& f) { return f.__VA_ARGS__; }

/// Pixels of the middle of the picture that are neither white nor grey: walls, lines and texts are.
int Colored(Figure& figure) {
    CChartView3D& view = figure.View();
    view.DrawView();
    const HBITMAP bitmap = view.GetDIBSectionPntr()->GetBitmap();
    int colored = 0;
    for (int y = 0; y < bitmap->Height(); ++y)
        for (int x = 0; x < bitmap->Width() * 3 / 4; ++x) {
            const RGBQUAD p = bitmap->PixelFromTop(x, y);
            colored += std::abs(p.rgbRed - p.rgbBlue) > 40 || std::abs(p.rgbGreen - p.rgbRed) > 40;
        }
    return colored;
}

TEST(Figure, EveryKindIsSeenAndNamed) {
    struct Case {
        const char* kind;
        int entries;  ///< of the legend
        std::function<Objects(Figure&)> draw;
    };
    const auto lines = [](Figure& f) {
        f.Line(kX, kY, {.color = RGBDType{0.5, 0.5, 0.5, 1}});
        f.BandAtX(2, 3, {.color = kPure});
        return f.LineAtY(2, {.name = "two"});
    };
    const Case cases[] = {
        {"Line", 1, DRAW(Line(kX, kY, {.name = "n", .width = 4}))},
        {"Line by", 2, DRAW(Line(kX, kY, {.width = 4, .by = kNames}))},
        {"Scatter", 2, DRAW(Scatter(kX, kY, {.size = 12, .by = kNames}))},
        {"Bars", 1, DRAW(Bars({"x", "y"}, {1, 2}, {.name = "n"}))},
        {"Floating", 0, DRAW(Bars(kX, kHigher, {.from = kY}))},
        {"Side by side", 2, DRAW(Bars(kX, {kY, kHigher}, {.names = {"p", "q"}}))},
        {"Histogram", 0, DRAW(Histogram(kY))},
        {"Area", 0, DRAW(Area(kX, kY))},
        {"Range", 1, DRAW(Area(kX, kHigher, {.name = "n", .from = kY}))},
        {"Stacked", 2, DRAW(Area(kX, {kY, kHigher}, {.names = {"p", "q"}}))},
        {"Candles", 0, DRAW(Candles(kX, kY, kHigher, {0, 0, 0, 0}, {4, 4, 4, 4}))},
        {"Boxes", 0, DRAW(Boxes(kNames, kHigher))},
        {"Quartiles", 0,
         DRAW(Boxes({"a", "b"}, Quartiles{{0, 1}, {1, 2}, {2, 3}, {3, 4}, {4, 5}}))},
        {"Planes", 1, DRAW(Planes(kX, kY, {.name = "n"}))},
        {"Planes3D", 1, DRAW(Planes3D(kX, kNames, kHigher, {.name = "n"}))},
        {"ErrorBars", 0, DRAW(ErrorBars(kX, kY, kY, kY, {.color = kPure, .width = 4}))},
        {"Line3D", 0, DRAW(Line3D(kX, kY, kHigher, {.width = 4}))},
        {"Scatter3D", 2, DRAW(Scatter3D(kX, kY, kHigher, {.size = 12, .by = kNames}))},
        {"Bars3D", 1, DRAW(Bars3D(kX, kNames, kHigher, {.name = "n"}))},
        {"Surface", 0, DRAW(Surface(kHill))},
        {"Triangles", 0, DRAW(Surface(kX, kY, kHigher))},
        {"Function", 0, DRAW(Surface([](double x, double y) { return x * y; }, 0, 1, 0, 1))},
        {"Mesh", 0, DRAW(Surface(kX, kY, kHigher, {0, 1, 2, 1, 2, 3}))},
        {"Values", 0, DRAW(Surface(kX, kY, kHigher, {.color_by = kY}))},
        {"Counts", 0, DRAW(Histogram(kX, kY, {.bins = 2}))},
        {"Ribbons", 0, DRAW(Ribbons(kX, {kY, kHigher}))},
        {"Text", 0, DRAW(Text({0, 1}, {0, 1}, {"MMM", "MMM"}, {.color = kPure}))},
        {"Arrows", 0, DRAW(Arrows(kX, kY, kY, kX, {.width = 4}))},
        {"Arrows3D", 0, DRAW(Arrows3D(kX, kY, kHigher, kY, kX, kY, {.width = 4}))},
        {"Lines", 1, lines},
        {"Contours", 2, DRAW(Contours(kHill, {.levels = {0.5, 1.5}, .labels = false}))},
        {"Bands", 0, DRAW(Contours(kHill, {.filled = true}))},
        {"HeatMap", 0, DRAW(HeatMap(kHill))},
    };
    for (const Case& c : cases) {
        Figure figure({.title = "t", .size = {200, 150}, .samples = 0});
        const Objects objects = c.draw(figure);
        ASSERT_FALSE(objects.empty()) << c.kind;
        EXPECT_GT(Colored(figure), 60) << c.kind;
        const CLegend3D* legend = figure.View().GetLegend(0);
        EXPECT_EQ(legend != nullptr ? legend->GetNumLegendObjs() : 0, c.entries) << c.kind;
        // Drawn again it is the same picture with the same legend.
        const int before = Colored(figure);
        EXPECT_EQ(Colored(figure), before) << c.kind;
    }
}

TEST(Figure, PointsHaveTheColoursOfTheirValues) {
    Figure figure({.size = {60, 40}, .samples = 0});
    const Objects points =
        figure.Scatter(kX, kY, {.by = kNames, .color_by = {0, 10, NAN, 5}, .map = "grey"});
    EXPECT_EQ(points[0]->GetSegmentColor(0).r, 0);
    EXPECT_EQ(points[1]->GetSegmentColor(0).r, 1);
    EXPECT_EQ(points[0]->GetSegmentColor(1).r, 0.6) << "no value";
    EXPECT_EQ(figure.View().GetLegend(0)->GetScaleType(), 1);
}

TEST(Figure, NamesShareAnAxisAndChartsAFigure) {
    Figure figure({.size = {200, 100}});
    Chart& left = figure.At(1, 1, 1, 2);
    left.Bars({"a", "b"}, {1, 2});
    const Objects second = left.Line({"b", "c"}, {1, 2});
    EXPECT_EQ(second[0]->GetIndData(0), 2) << "b is where it was";
    EXPECT_EQ(second[0]->GetIndData(1), 3);
    EXPECT_EQ(&figure.At(1, 1, 1, 2), &left);
    figure.At(1, 2, 1, 2).Surface(kHill);
    figure.View();
    EXPECT_EQ(figure.View().GetNumCharts(), 2);
    EXPECT_EQ(left.GetChart()->GetTransform(0)->GetScaleMax().x, 3.5);
    left.y({.min = -5, .max = 10});
    figure.View();
    EXPECT_EQ(left.GetChart()->GetTransform(0)->GetScaleMin().z, -5);
}

TEST(Figure, FramesOfAGridAreAlignedAndShareTitles) {
    Figure figure({.title = "t", .size = {300, 300}, .samples = 0});
    Chart& upper = figure.At(1, 1, 2, 1);
    Chart& lower = figure.At(2, 1, 2, 1);
    upper.Bars(kX, {100000, 300000, 200000, 500000}, {.name = "long"});
    lower.Line(kX, kY);
    const std::pair<Chart*, const char*> titles[] = {{&upper, ""}, {&lower, "x"}};
    for (const auto& [chart, title] : titles)
        chart->x({.title = "x"});
    figure.View().DrawView();
    const PixelRect above = upper.GetChart()->GetBoxArea(), below = lower.GetChart()->GetBoxArea();
    EXPECT_NEAR(above.left, below.left, 1.0);
    EXPECT_NEAR(above.right, below.right, 1.0);
    for (const auto& [chart, expected] : titles) {
        CString title;
        chart->GetChart()->GetAxes(0)->GetAxisTitleString(0, title);
        EXPECT_EQ(title, expected);
    }
}

TEST(Figure, TurnsOnceAndFilesTellOfIt) {
    using test::ReadAll;
    const test::TemporaryFolder folder;
    Figure figure({.title = "Tü", .size = {60, 40}, .dpi = 254, .samples = 0});
    figure.Surface(kHill);
    figure.Save(folder.File("a.PNG"));
    figure.SaveTurn(folder.File("%02d.png"), 2);
    figure.Save(folder.File("b.png"));
    const std::string first = ReadAll(folder.File("01.png")), back = ReadAll(folder.File("02.png"));
    EXPECT_FALSE(first.empty());
    EXPECT_NE(first, back);
    const std::string png = ReadAll(folder.File("a.PNG"));
    EXPECT_EQ(png, ReadAll(folder.File("b.png"))) << "as before the turn";
    // 10,000 pixels a metre, twice; texts are UTF-8.
    for (const std::string& part : {std::string("pHYs\0\0\x27\x10\0\0\x27\x10\1", 13),
                                    std::string("Tü"), std::string("Varnel 1.")})
        EXPECT_NE(png.find(part), std::string::npos) << part;
    figure.Save(folder.File("a.svg"));
    EXPECT_NE(ReadAll(folder.File("a.svg")).find("<svg"), std::string::npos);
}

TEST(Figure, WhatIsWrongIsToldInASentence) {
    CErr3D::SetErrorReportMode(0);
    const std::pair<std::function<void(Figure&)>, const char*> cases[] = {
        {DRAW(Line(kX, {1, 2})), "Line: y has 2 values, not 4"},
        {DRAW(Line({}, {})), "Line: x is empty"},
        {DRAW(Line(kX, kY, {.by = {"a"}})), "Line: by has 1 values, not 4"},
        {DRAW(Bars(kX, {kY, {1}})), "Bars: series 2 has 1 values, not 4"},
        {DRAW(Candles(kX, kY, kY, kY, {})), "Candles: close is empty"},
        {[](Figure& f) {
             f.Line(kX, kY);
             f.Surface(kHill);
         },
         "Surface: it is spatial, and the chart is flat already"},
        {[](Figure& f) {
             f.Line(kX, kY);
             f.Line(kNames, kY);
         },
         "Line: x is names, its axis has numbers"},
        {DRAW(Surface(Grid{{1, 2, 3}, 2, 2})), "Surface: z has 3 values, not 4"},
        {DRAW(Surface(kHill, {.map = "red"})),
         "Surface: there is no colour map \"red\"; there are viridis, magma, inferno, plasma, "
         "cividis, turbo, "
         "coolwarm, RdBu, terrain, grey"},
        {DRAW(Surface(kX, kX, kX)), "Surface: the 4 points lie on one line"},
        {DRAW(Surface(kX, kY, kHigher, {0, 1, 4})), "Surface: there is no point 4 of 4"},
        {DRAW(SaveTurn("turn.png", 3)), "SaveTurn: turn.png has to be like turn-%03d.png"},
        {DRAW(Histogram(kX, {.bins = -1})), "Histogram: bins is -1"},
        {[](Figure& f) { f.At(3, 1, 2, 2); }, "At: row 3 of 2, column 1 of 2"},
        {[](Figure&) {
             Figure({.size = {0, 5}});
         },
         "Figure: the size is 0 x 5"},
        {DRAW(Save("x.jpg")), "Save: x.jpg has to end in .png, .bmp, .pdf, .svg or .chart"},
    };
    for (const auto& [draw, said] : cases) {
        Figure figure({.size = {60, 40}, .samples = 0});
        try {
            draw(figure);
            ADD_FAILURE() << said;
        } catch (const Error& e) {
            EXPECT_STREQ(e.what(), said);
        }
    }
}

}  // namespace
}  // namespace varnel::plot
