// A week of earthquakes: how many of each magnitude, on a logarithmic axis with its grid; and the
// energy that they set free, with engineering labels.
#include <algorithm>
#include <cmath>

#include "examples/support/example.h"

using namespace varnel;

namespace {

constexpr int kClasses = 15;  // of half a magnitude, from -1
constexpr double kLowest = -1;
constexpr double kWidth = 0.5;

/// Bars over the classes of magnitude, from the lower to the upper limit of a logarithmic axis.
CAxes3D* DrawClasses(CChart3D* chart, const std::vector<double>& values, double min, double max,
                     const RGBDType& color) {
    CTransform3D* transform = chart->NewTransform({-1, 0, min, 0}, {6.5, 1, max, 0});
    transform->SetAxisScaleMode(2, 1);
    transform->SetRotate({-18, 0, 20, 0});
    transform->SetChartRect({0.73, 0.12, 0.54, 0});
    transform->SetOffset({0.08, 0, -0.03, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->EnableAxis(1, 0);
    axes->EnableAxisLabels(1, 0);
    axes->SetAxisNthTicMajor(2, 1);  // a label at each decade
    axes->SetAxisTitleString(0, "magnitude");
    example::AddWalls(*axes, 0, 0, 1);

    std::vector<point3Dtype> corners;
    const std::vector<double> feet(values.size(), min);
    for (std::size_t i = 0; i < values.size(); ++i)
        corners.push_back(
            {kLowest + kWidth * (static_cast<double>(i) + 0.1), 0.2, std::max(values[i], min), 0});
    CChartObj3D* bars = chart->NewChartObj(transform);
    bars->BarChart3D(corners.data(), feet.data(), static_cast<int>(corners.size()), kWidth * 0.8,
                     0.6, color, example::kGrey);
    return axes;
}

void Draw(example::Picture& picture) {
    std::vector<double> count(kClasses), joules(kClasses);
    for (double magnitude : picture.Read("earthquakes_week.csv").Numbers("magnitude")) {
        const auto c = static_cast<std::size_t>((magnitude - kLowest) / kWidth);
        count.at(c) += 1;
        joules.at(c) += std::pow(10.0, 4.8 + 1.5 * magnitude);
    }

    CChart3D* chart = picture.NewChart("A week of earthquakes", "how many of each magnitude",
                                       "U.S. Geological Survey");
    DrawClasses(chart, count, 0.5, 1000, example::Color(1))->SetAxisTitleString(2, "count");
    picture.Save("bars_log");

    chart = picture.NewChart("A week of earthquakes", "the energy that they set free",
                             "U.S. Geological Survey");
    CAxes3D* axes = DrawClasses(chart, joules, 1e3, 9.9e14, example::Color(3));
    axes->SetAxisLabelsFormat(2, 2);  // 10K, 1M, 100B
    axes->SetAxisLabelsSize(2, 0.6);
    axes->SetAxisMinorTicLength(2, 0);
    axes->SetPlaneGridNthTic2(1, 0);  // too many decades for a grid
    axes->SetPlaneGridNthTic2(2, 0);
    axes->SetAxisTitleString(2, "joules");
    picture.Save("bars_engineering");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
