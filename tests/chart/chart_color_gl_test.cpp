// Colouring a surface by height: which colours the heights get, in tables and in the picture.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/support/view_test.h"

namespace varnel::test {
namespace {

/// A surface of one row of cells, all of whose points in column i have height z[i]; in a chart that
/// shows it from above with a column's step every 50 pixels.
class ColorByHeight : public ViewTest {
 protected:
    CChartObj3D* AddSurface(const std::vector<double>& z, double min, double max, int zMode = 0) {
        CTransform3D* transform = nullptr;
        chart = view.NewChart3D();
        chart->EnableBorder(0);
        const double last = static_cast<double>(z.size()) - 1;
        transform = chart->NewTransform({0, 0, min, 0}, {last, 1, max, 0});
        transform->SetAxisScaleMode(2, zMode);
        transform->SetRotate({-90, 0, 0, 0});
        transform->SetChartRect({1, 1, 0.5, 0});
        std::vector<double> grid = z;
        grid.insert(grid.end(), z.begin(), z.end());
        const CPolysurface made(2, static_cast<int>(z.size()), 0, 0, last, 1, grid.data(), 0);
        surface.CopyPolysurface(&made);
        CChartObj3D* const object = chart->NewChartObj(transform);
        object->PolysurfaceChart3D(&surface);
        object->SetOutlineMode(0);
        return object;
    }
    /// The place of the picture's colour at a column of pixels in a map, -1 when it is none.
    int Place(const CString& map, int x) {
        RGBDType colors[256];
        ColorMap(map, 256, colors);
        Draw(view);
        const RGBQUAD p = view.GetDIBSectionPntr()->GetBitmap()->PixelFromTop(x, 50);
        for (int i = 0; i < 256; ++i) {
            const RGBBType c = RGBDtoRGBB(colors[i]);
            if (c.r == p.rgbRed && c.g == p.rgbGreen && c.b == p.rgbBlue) return i;
        }
        return -1;
    }

    /// The limits of the chart's colours.
    void ExpectRange(double min, double max, double tolerance) {
        double is[2] = {};
        chart->GetTextureColorArray(nullptr, &is[0], &is[1]);
        EXPECT_EQ(is[0], min);
        EXPECT_NEAR(is[1], max, tolerance);
    }

    CWnd window{200, 100};
    CChartView3D view{&window, 200, 100};
    CChart3D* chart = nullptr;
    CPolysurface surface;
};

TEST_F(ColorByHeight, LowestToHighest) {
    CChartObj3D* const object = AddSurface({-30, -30, 70, 70}, -50, 100);
    ASSERT_TRUE(chart->ColorSurfaceByHeight(object, "grey"));
    EXPECT_EQ(object->GetColorMode(), 2);
    EXPECT_EQ(chart->GetTextureMode(), 2);
    ASSERT_EQ(chart->GetNumTextureColors(), 256);
    EXPECT_LE(Place("grey", 30), 1);
    EXPECT_NEAR(Place("grey", 100), 128, 2);
    EXPECT_EQ(Place("grey", 170), 255) << "the highest value does not wrap";
    EXPECT_EQ(Place("grey", 199), 255);
    ExpectRange(-30, 70, 1);
}

TEST_F(ColorByHeight, OrByAnotherValue) {
    CChartObj3D* const object = AddSurface({5, 5, 5, 5}, 0, 10);
    const double values[] = {-1, -1, 3, 3, -1, -1, 3, 3};
    ASSERT_TRUE(chart->ColorSurfaceByValue(object, values, "grey"));
    EXPECT_EQ(chart->GetTextureMode(), 3);
    EXPECT_LE(Place("grey", 30), 1);
    EXPECT_NEAR(Place("grey", 100), 128, 2);
    EXPECT_EQ(Place("grey", 170), 255);
    EXPECT_FALSE(chart->ColorSurfaceByValue(object, {}, "jet"));
}

TEST_F(ColorByHeight, WhatHasNoValueIsGreyOrHasTheFirstColour) {
    CChartObj3D* const object = AddSurface({5, 5, 5, 5}, 0, 10);
    const double values[] = {kNaN, 2, 2, 3, kNaN, 2, 2, 3};
    ASSERT_TRUE(chart->ColorSurfaceByValue(object, values, "viridis"));
    EXPECT_GT(Place("viridis", 199), 250);
    const RGBQUAD grey = view.GetDIBSectionPntr()->GetBitmap()->PixelFromTop(25, 50);
    EXPECT_TRUE(grey.rgbGreen == grey.rgbRed && grey.rgbGreen == grey.rgbBlue);
    chart->SetNoDataGrey(0);  // as charts that set a texture mode of their own
    EXPECT_EQ(Place("viridis", 25), 0);
}

TEST_F(ColorByHeight, LogarithmicAxis) {
    CChartObj3D* const object = AddSurface({1, 1, 10000, 10000}, 0, 4, 1);
    ASSERT_TRUE(chart->ColorSurfaceByHeight(object, "grey"));
    ExpectRange(0, 4, 0.04);  // logarithms
    EXPECT_NEAR(Place("grey", 100), 128, 2);
    EXPECT_EQ(Place("grey", 190), 255);
}

TEST_F(ColorByHeight, NoEdgeWrapsWithAntialiasing) {
    // A ridge, whose farther side is seen ever more from the edge: along a row of pixels the
    // colours rise to the ridge's and fall.
    CChartObj3D* const object = AddSurface({0, 1, 0}, 0, 1);
    ASSERT_TRUE(chart->ColorSurfaceByHeight(object, "grey"));
    chart->SetChartBkColor(SetRGBD(0, 0, 0, 1));
    view.SetAntialiasing(4);
    view.SetViewSizePrinter();
    for (double angle = 30; angle < 60; angle += 0.25) {
        object->GetTransform()->SetRotate({-90, angle, 0, 0});
        view.DrawView();
        int highest = 0;
        int lowestAfter = 255;
        for (int x = 0; x < 200; ++x) {
            const int grey = view.GetDIBSectionPntr()->GetBitmap()->PixelFromTop(x, 50).rgbRed;
            if (grey < highest - 8) lowestAfter = std::min(lowestAfter, grey);
            highest = std::max(highest, grey);
            ASSERT_LE(grey, lowestAfter == 255 ? 255 : lowestAfter + 8)
                << "pixel " << x << " at " << angle << " degrees";
        }
        ASSERT_GT(highest, 200);
    }
}

TEST_F(ColorByHeight, FlatAndIncompleteSurfaces) {
    EXPECT_TRUE(chart == nullptr);
    CChartObj3D* const flat = AddSurface({1e6, 1e6, 1e6}, 0, 2e6);
    ASSERT_TRUE(chart->ColorSurfaceByHeight(flat, "grey"));
    EXPECT_NEAR(Place("grey", 100), 128, 2);
    CChartObj3D* const gap = AddSurface({2, kNaN, 5}, 0, 10);
    ASSERT_TRUE(chart->ColorSurfaceByHeight(gap, "viridis"));
    ExpectRange(2, 5, 0.03);
}

TEST_F(ColorByHeight, RefusalsChangeNothing) {
    CChartObj3D* const object = AddSurface({0, 1}, 0, 1);
    EXPECT_FALSE(chart->ColorSurfaceByHeight(nullptr, "grey"));
    EXPECT_FALSE(chart->ColorSurfaceByHeight(object, "no map"));
    CChartObj3D* const bars = chart->NewChartObj(chart->GetTransform(0));
    const double one = 1;
    bars->BarChart25D(&one, &one, 0, 0, 1, 1, 1, {}, {}, 0, 0, 0);
    EXPECT_FALSE(chart->ColorSurfaceByHeight(bars, "grey"));
    object->DeletePolysurfaceStorage();
    EXPECT_FALSE(chart->ColorSurfaceByHeight(object, "grey"));
    object->PolysurfaceChart2D(&surface, 0, 0);
    EXPECT_FALSE(chart->ColorSurfaceByHeight(object, "grey")) << "a flat map has no heights";
    EXPECT_FALSE(chart->ColorSurfaceByHeight(AddSurface({kNaN, kNaN}, 0, 1), "grey"));
    EXPECT_EQ(chart->GetTextureMode(), -1);
    EXPECT_EQ(chart->GetNumTextureColors(), 0);
    EXPECT_EQ(object->GetColorMode(), 1);
}

}  // namespace
}  // namespace varnel::test
