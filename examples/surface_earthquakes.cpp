// A week of earthquakes deep under southern Alaska: their places, joined by triangles, make a
// surface of their depth. It dips to the north-west: the floor of the Pacific sinks below the land.
#include <algorithm>

#include "examples/support/example.h"

using namespace varnel;

namespace {

void Draw(example::Picture& picture) {
    const example::Table table = picture.Read("earthquakes_week.csv");
    const std::vector<double> east = table.Numbers("longitude_deg");
    const std::vector<double> north = table.Numbers("latitude_deg");
    const std::vector<double> depth = table.Numbers("depth_km");
    std::vector<point3Dtype> quakes;
    for (std::size_t i = 0; i < east.size(); ++i)
        if (east[i] >= -156 && east[i] <= -146 && north[i] >= 58 && north[i] <= 65 &&
            depth[i] >= 30)
            quakes.push_back({east[i], north[i], depth[i], 0});

    // Seen from the north: x runs west and y north. West and depth run against their numbers, so
    // that minimum and maximum are exchanged.
    CChart3D* chart = picture.NewChart(
        "Earthquakes under Alaska", "a week of those deeper than 30 km", "U.S. Geological Survey");
    CTransform3D* transform = chart->NewTransform({-145, 58, 150, 0}, {-157, 65, 0, 0});
    transform->SetRotate({-42, 0, 24, 0});
    transform->SetChartRect({0.56, 0.48, 0.34, 0});
    transform->SetOffset({-0.02, 0, -0.02, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->SetAxisTics(0, -157, 1, 4, 0.02, 0.04, 0);
    axes->SetAxisTitleString(0, "east");
    example::SetDepthTitle(*axes, "north");
    axes->SetAxisTitleString(2, "km deep");
    example::AddWalls(*axes, axes->GetAxisNthTicMajor(0), axes->GetAxisNthTicMajor(1),
                      axes->GetAxisNthTicMajor(2));

    CPolysurface surface(quakes.data(), 0, static_cast<int>(quakes.size()));
    surface.DelaunaySurface(0);
    for (int i = 0; i < surface.GetPSNumPolygons(); ++i)
        surface.SetPolysurfaceColors(i, example::Color(0), example::kGrey);
    CChartObj3D* object = chart->NewChartObj(transform);
    object->PolysurfaceChart3D(&surface);
    chart->ColorSurfaceByHeight(object, "viridis");

    CLegend3D* legend = picture.View().NewLegend3D();
    legend->SetLegendTitle("km deep");
    RGBDType colors[256];  // turned around: the deepest at the bottom
    double shallowest = 0, deepest = 0;
    chart->GetTextureColorArray(colors, &shallowest, &deepest);
    std::reverse(std::begin(colors), std::end(colors));
    legend->SetColorBar(colors, 256, deepest, shallowest);
    legend->EnableBorder(0);
    legend->EnableBackground(0);
    legend->SetScaleLength(0.3);
    picture.Save("surface_earthquakes");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
