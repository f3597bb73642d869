// Carbon dioxide on Mauna Loa, month by month, and the mean of the twelve months around each.
#include <cmath>

#include "examples/support/example.h"

using namespace varnel;

namespace {

/// The mean of the six months before and after each; no value where some are missing.
std::vector<double> YearlyMean(const std::vector<double>& monthly) {
    std::vector<double> mean(monthly.size(), std::nan(""));
    for (std::size_t i = 6; i + 6 < monthly.size(); ++i) {
        double sum = (monthly[i - 6] + monthly[i + 6]) / 2;
        for (std::size_t k = i - 5; k <= i + 5; ++k)
            sum += monthly[k];
        mean[i] = sum / 12;
    }
    return mean;
}

void Draw(example::Picture& picture) {
    const example::Table table = picture.Read("co2_mauna_loa.csv");
    const std::vector<double> ppm = table.Numbers("co2_ppm");
    const std::vector<double> trend = YearlyMean(ppm);
    std::vector<double> year;
    for (const example::Date& date : table.Dates("date"))
        year.push_back(date.year + (date.month - 0.5) / 12);
    const int n = static_cast<int>(year.size());

    CChart3D* chart = picture.NewChart("Carbon dioxide on Mauna Loa",
                                       "by month, and the mean of twelve", "Scripps CO2 Program");
    CTransform3D* transform = chart->NewTransform({1955, 0, 300, 0}, {2025, 1, 420, 0});
    transform->SetRotate({-16, 0, 18, 0});
    transform->SetChartRect({0.74, 0.1, 0.52, 0});
    transform->SetOffset({0.05, 0, -0.03, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->EnableAxis(1, 0);
    axes->EnableAxisLabels(1, 0);
    axes->SetAxisTitleString(0, "year");
    axes->SetAxisTitleString(2, "ppm");
    example::AddWalls(*axes, axes->GetAxisNthTicMajor(0), 0, axes->GetAxisNthTicMajor(2));

    CChartObj3D* line = chart->NewChartObj(transform);
    line->LineChart25D(year.data(), ppm.data(), 0.5, n, 0, picture.Pixels(2), example::Color(0), 0);
    line = chart->NewChartObj(transform);
    line->LineChart25D(year.data(), trend.data(), 0.55, n, 0, picture.Pixels(2), example::Color(3),
                       0);
    example::AddKey(*chart, {"month", "12 months"}, {example::Color(0), example::Color(3)});
    picture.Save("line_co2");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
