// A function of two variables as a surface: three hills and three hollows around a saddle, in blue
// below zero and red above.
#include <cmath>

#include "examples/support/example.h"

using namespace varnel;

namespace {

/// Over -3..3 each way, n points a side.
CPolysurface Hills(int n) {
    return {n, n, -3, -3, 3, 3, [](double x, double y) {
                return (x * x * x - 3 * x * y * y) * std::exp(-x * x - y * y);
            }};
}

}  // namespace

void example::Draw(Picture& picture) {
    CPolysurface surface = Hills(41);
    for (int i = 0; i < surface.GetPSNumPolygons(); ++i)
        surface.SetPolysurfaceColors(i, {}, {0.62, 0.62, 0.65, 1});
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    CChartObj3D* object = chart.NewChartObj(transform);
    object->PolysurfaceChart3D(&surface);
    chart.ColorSurfaceByHeight(object, "coolwarm");
    CLegend3D* legend = picture.View().NewLegend3D(LEGEND_OUTSIDE_RIGHT);
    legend->SetColorBar(&chart);
    chart.AutoFrame(transform, {.axes = {AxisFrame{.title = "x"}, AxisFrame{.title = "y"},
                                         AxisFrame{.title = "z"}},
                                .title = "Three hills and three hollows",
                                .subtitle = "(x³ - 3xy²) exp(-x² - y²)"});
    picture.Save("surface_function");

    CChart3D& below = *picture.View().NewChart3D();
    transform = below.NewTransform();
    CPolysurface fine = Hills(121);
    for (int i = 0; i < fine.GetPSNumPolygons(); ++i)
        fine.SetPolysurfaceColors(i, {0.55, 0.68, 0.86, 1}, {});
    object = below.NewChartObj(transform);
    object->PolysurfaceChart3D(&fine);
    object->SetOutlineMode(0);
    below.AutoFrame(transform, {.axes = {AxisFrame{.title = "x"}, AxisFrame{.title = "y"},
                                         AxisFrame{.title = "z"}},
                                .title = "The same from below",
                                .subtitle = "lit on both of its sides",
                                .elevation = -25});
    picture.Save("surface_function_below");
}
