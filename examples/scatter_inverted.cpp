// A week of earthquakes on the map and in the depth: the axis of depth runs downward, and that of
// latitude away from the viewer, so that north is at the back.
#include "examples/support/example.h"

using namespace varnel;

namespace {

void Draw(example::Picture& picture) {
    const example::Table table = picture.Read("earthquakes_week.csv");
    const std::vector<double> longitude = table.Numbers("longitude_deg");
    const std::vector<double> latitude = table.Numbers("latitude_deg");
    const std::vector<double> depth = table.Numbers("depth_km");
    const std::vector<double> magnitude = table.Numbers("magnitude");
    std::vector<point3Dtype> weak, strong;
    for (std::size_t i = 0; i < depth.size(); ++i)
        (magnitude[i] < 4.5 ? weak : strong).push_back({longitude[i], latitude[i], depth[i], 0});

    CChart3D* chart =
        picture.NewChart("A week of earthquakes", "where, and how deep", "U.S. Geological Survey");
    // Minimum and maximum exchanged: the scale runs backwards.
    CTransform3D* transform = chart->NewTransform({-180, 90, 600, 0}, {180, -90, 0, 0});
    transform->SetRotate({-28, 0, 24, 0});
    transform->SetChartRect({0.62, 0.40, 0.4, 0});
    transform->SetOffset({0, 0, -0.03, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->SetAxisTics(0, 0, 30, 2, 0.02, 0.04, 2);
    axes->SetAxisTics(1, 0, 15, 3, 0.02, 0.04, 3);
    axes->SetAxisTitleString(0, "east");
    example::SetDepthTitle(*axes, "north");
    axes->SetAxisTitleString(2, "km deep");
    example::AddWalls(*axes, 2, 3, axes->GetAxisNthTicMajor(2));

    CChartObj3D* symbols = chart->NewChartObj(transform);
    symbols->ScatterChart3D(weak.data(), 0.1, static_cast<int>(weak.size()), 10, example::Color(0),
                            example::kGrey, -1, 0);
    symbols->SetOutlineMode(0);
    symbols = chart->NewChartObj(transform);
    symbols->ScatterChart3D(strong.data(), 0.3, static_cast<int>(strong.size()), 12,
                            example::Color(3), example::kGrey, 0, 0);
    example::AddKey(*chart, {"below 4.5", "4.5 and more"}, {example::Color(0), example::Color(3)});
    picture.Save("scatter_inverted");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
