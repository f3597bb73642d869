// Light on a folded surface: smooth or flat, from both sides, over colours by value.
#include <gtest/gtest.h>

#include "tests/support/files.h"
#include "tests/support/gl_fixture.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

/// A roof with its ridge along y in the middle of the picture, seen from above or from below, in
/// light from straight ahead: each side has less of it than the ridge of a smooth roof.
class Light : public testing::Test {
 protected:
    Light() : window(200, 100), view(&window, 200, 100), chart(view.NewChart3D()) {
        const double z[] = {0, 1, 0, 0, 1, 0};
        CPolysurface surface(2, 3, -1, -1, 1, 1, z, 0);
        for (int i = 0; i < 2; ++i)
            surface.SetPolysurfaceColors(i, {1, 1, 1, 1}, {1, 1, 1, 1});
        transform = chart->NewTransform({-1, -1, -1, 0}, {1, 1, 1, 0});
        transform->SetRotate({-90, 0, 0, 0});
        transform->SetChartRect({1, 1, 0.5, 0});
        chart->EnableBorder(0);
        chart->SetLight({0, 0, 1, 0}, 0.2, 0.8);
        roof = chart->NewChartObj(transform);
        roof->PolysurfaceChart3D(&surface);
        roof->SetOutlineMode(0);
    }
    /// The red of a column of the picture, of 255.
    int Red(int x) {
        view.SetViewSizePrinter();
        view.DrawView();
        return view.GetDIBSectionPntr()->GetBitmap()->PixelFromTop(x, 50).rgbRed;
    }

    CWnd window;
    CChartView3D view;
    CChart3D* chart;
    CTransform3D* transform;
    CChartObj3D* roof;
};

TEST_F(Light, RunsOverTheRidgeWhenSmooth) {
    const int side = Red(50);
    EXPECT_GT(side, 60);
    EXPECT_EQ(Red(98), side) << "facets";
    roof->SetShading(1, 120.0);
    EXPECT_EQ(Red(99), 255) << "the ridge faces the light";
    EXPECT_NEAR(Red(50), (255 + side) / 2, 4) << "halfway between ridge and edge";
    chart->SetLight({0, 0, 1, 0}, 0.2, 0.5);
    const int dull = Red(2);
    EXPECT_NEAR(Red(99), 0.7 * 255, 3);
    chart->SetLight({0, 0, 1, 0}, 0.2, 0.5, 0.3, 100);
    EXPECT_EQ(Red(99), 255) << "gloss";
    EXPECT_NEAR(Red(2), dull, 4) << "but not at the edge";
    roof->SetPolysurfacePoint(1, {0, -1, 0, 0});
    roof->SetPolysurfacePoint(4, {0, 1, 0, 0});
    EXPECT_EQ(Red(50), 255) << "a surface that was flattened has new normals";
}

TEST_F(Light, FallsOnBothSides) {
    const int above = Red(50);
    transform->SetRotate({90, 0, 0, 0});
    EXPECT_EQ(Red(50), 51) << "a back has the ambient light";
    roof->SetTwoSided(1);
    EXPECT_NEAR(Red(50), above, 1);
    roof->SetShading(1, 120.0);
    EXPECT_EQ(Red(99), 255);
}

TEST_F(Light, DarkensColorsByValue) {
    ASSERT_TRUE(chart->ColorSurfaceByHeight(roof, "grey"));
    const int plain = Red(80);
    roof->SetTextureLighting(1, 0.5, 1.0);
    const int lit = Red(80);
    EXPECT_LT(lit, plain - 5);
    EXPECT_GT(lit, plain / 2);
    roof->SetShading(1, 120.0);
    EXPECT_GT(Red(99), 250) << "what faces the viewer has the map's own colour";
}

TEST_F(Light, IsKeptInTheChartFile) {
    roof->SetShading(1, 30.0);
    roof->SetTwoSided(1);
    roof->SetTextureLighting(1, 0.5, 0.9);
    const int before = Red(80);
    const test::TemporaryFolder folder;
    view.Save(folder.File("a.chart"));
    CChartView3D loaded(&window, 200, 100);
    loaded.Load(folder.File("a.chart"));
    const CChartObj3D& object = *loaded.GetChart(0)->GetChartObj(0);
    EXPECT_EQ(object.GetCreaseAngle(), 30.0);
    EXPECT_TRUE(object.GetShading() && object.GetTwoSided() && object.GetTextureLighting());
    loaded.SetViewSizePrinter();
    loaded.DrawView();
    EXPECT_EQ(loaded.GetDIBSectionPntr()->GetBitmap()->PixelFromTop(80, 50).rgbRed, before);
}

}  // namespace
}  // namespace varnel
