// A week of earthquakes deep under southern Alaska: their places, joined by triangles, make a
// surface of their depth. It dips to the north-west: the floor of the Pacific sinks below the land.
#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    std::vector<point3Dtype> quakes =
        picture.Read("earthquakes_week.csv").Points("longitude_deg", "latitude_deg", "depth_km");
    std::erase_if(quakes, [](const point3Dtype& p) {
        return p.x < -156 || p.x > -146 || p.y < 58 || p.y > 65 || p.z < 30;
    });

    CPolysurface surface(quakes);
    surface.DelaunaySurface(0);
    for (int i = 0; i < surface.GetPSNumPolygons(); ++i)
        surface.SetPolysurfaceColors(i, {}, Theme().outline);
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    CChartObj3D* object = chart.NewChartObj(transform);
    object->PolysurfaceChart3D(&surface);
    chart.ColorSurfaceByHeight(object, "viridis_r");
    CLegend3D* legend = picture.View().NewLegend3D(LEGEND_OUTSIDE_RIGHT);
    legend->SetLegendTitle("km deep");
    legend->SetColorBar(&chart);
    // Minimum and maximum exchanged: depth runs downward.
    chart.AutoFrame(transform, {.axes = {AxisFrame{.title = "east"}, AxisFrame{.title = "north"},
                                         AxisFrame{.title = "km deep", .min = 150, .max = 0}},
                                .title = "Earthquakes under Alaska",
                                .subtitle = "a week of those deeper than 30 km",
                                .footer = "U.S. Geological Survey"});
    picture.Save("surface_earthquakes");
}
