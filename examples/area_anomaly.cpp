// The world's temperature against its mean of 1951 to 1980: what lies above in red, below in blue.
#include <cmath>

#include "examples/support/example.h"

using namespace varnel;

namespace {

void Draw(example::Picture& picture) {
    const example::Table table = picture.Read("global_temperature_anomaly.csv");
    const std::vector<double> year = table.Numbers("year");
    const std::vector<double> anomaly = table.Numbers("anomaly_c");

    // Two areas with a point on the base wherever the line crosses it; what is not theirs is no
    // data, and leaves a gap.
    std::vector<double> when, above, below;
    for (std::size_t i = 0; i < year.size(); ++i) {
        if (i > 0 && anomaly[i - 1] * anomaly[i] < 0) {
            const double part = anomaly[i - 1] / (anomaly[i - 1] - anomaly[i]);
            when.push_back(year[i - 1] + part * (year[i] - year[i - 1]));
            above.push_back(0);
            below.push_back(0);
        }
        when.push_back(year[i]);
        above.push_back(anomaly[i] >= 0 ? anomaly[i] : std::nan(""));
        below.push_back(anomaly[i] <= 0 ? anomaly[i] : std::nan(""));
    }
    const int n = static_cast<int>(when.size());

    CChart3D* chart = picture.NewChart("A warmer world", "against the mean of 1951 to 1980",
                                       "Goddard Institute for Space Studies");
    CTransform3D* transform = chart->NewTransform({1880, 0, -0.6, 0}, {2025, 1, 1.2, 0});
    transform->SetRotate({-18, 0, 20, 0});
    transform->SetChartRect({0.74, 0.12, 0.52, 0});
    transform->SetOffset({0.06, 0, -0.03, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->EnableAxis(1, 0);
    axes->EnableAxisLabels(1, 0);
    axes->SetAxisTitleString(0, "year");
    axes->SetAxisTitleString(2, "\260C");
    example::AddWalls(*axes, 0, 0, axes->GetAxisNthTicMajor(2));

    for (const auto* part : {&below, &above}) {
        CChartObj3D* area = chart->NewChartObj(transform);
        area->AreaFillChart25D(when.data(), part->data(), 0.0, 0.5, n, 0.6,
                               example::Color(part == &above ? 3 : 0), example::kGrey, 1, 0);
        area->SetOutlineMode(0);
    }
    example::AddKey(*chart, {"warmer", "colder"}, {example::Color(3), example::Color(0)});
    picture.Save("area_anomaly");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
