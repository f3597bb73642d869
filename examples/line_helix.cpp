// A helix with its three shadows.
#include <cmath>
#include <numbers>

#include "examples/support/example.h"

using namespace varnel;

namespace {

void Draw(example::Picture& picture) {
    constexpr int kPoints = 400;
    constexpr double kTurns = 4;
    std::vector<point3Dtype> helix;
    for (int i = 0; i < kPoints; ++i) {
        const double t = static_cast<double>(i) / (kPoints - 1);
        const double angle = 2 * std::numbers::pi * kTurns * t;
        helix.push_back({std::cos(angle), std::sin(angle), t, 0});
    }

    CChart3D* chart = picture.NewChart("A helix", "and its shadows on three planes",
                                       "X = cos t, Y = sin t, Z = t / 25");
    CTransform3D* transform = chart->NewTransform({-1.5, -1.5, -0.1, 0}, {1.5, 1.5, 1.1, 0});
    transform->SetRotate({-24, 0, 30, 0});
    transform->SetChartRect({0.5, 0.5, 0.46, 0});
    transform->SetOffset({0, 0, -0.02, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->SetAxisTitleString(0, "X");
    example::SetDepthTitle(*axes, "Y");
    axes->SetAxisTitleString(2, "Z");
    example::AddWalls(*axes, 0, 0, 0);

    // A little in front of the walls.
    const double floorBackLeft[] = {-0.095, -1.49, -1.49};
    for (int plane = 0; plane < 3; ++plane) {
        CChartObj3D* shadow = chart->NewChartObj(transform);
        shadow->ProjectionLineChart3D(helix.data(), 0, kPoints, 0, picture.Pixels(2),
                                      {0.55, 0.58, 0.63, 1}, plane, floorBackLeft[plane]);
    }
    CChartObj3D* line = chart->NewChartObj(transform);
    line->LineChart3D(helix.data(), kPoints, 0, picture.Pixels(4), example::Color(3));
    picture.Save("line_helix");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
