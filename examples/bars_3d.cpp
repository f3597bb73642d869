// Seattle's monthly mean of the daily maximum temperature, month by year, as three-dimensional bars
// coloured by temperature.
#include <algorithm>

#include "examples/support/example.h"

using namespace varnel;

namespace {

constexpr int kMonths = 12;
constexpr int kFirstYear = 2012;
constexpr int kYears = 4;

/// From blue at 7 degrees to red at 28.
RGBDType Warmth(double celsius) {
    const double t = std::clamp((celsius - 7) / 21, 0.0, 1.0);
    const double middle = 4 * t * (1 - t);
    return {0.20 + 0.62 * t + 0.35 * middle, 0.45 - 0.25 * t + 0.36 * middle, 0.75 - 0.55 * t, 1};
}

void Draw(example::Picture& picture) {
    const example::Table table = picture.Read("seattle_weather.csv");
    const std::vector<example::Date> dates = table.Dates("date");
    const std::vector<double> warmest = table.Numbers("temp_max_c");
    double sum[kYears][kMonths] = {};
    double days[kYears][kMonths] = {};
    for (std::size_t i = 0; i < dates.size(); ++i) {
        sum[dates[i].year - kFirstYear][dates[i].month - 1] += warmest[i];
        days[dates[i].year - kFirstYear][dates[i].month - 1] += 1;
    }
    std::vector<point3Dtype> corners;
    std::vector<RGBDType> colors;
    for (int year = 0; year < kYears; ++year)
        for (int month = 0; month < kMonths; ++month) {
            const double mean = sum[year][month] / days[year][month];
            corners.push_back({month + 0.6, kFirstYear + year - 0.3, mean, 0});
            colors.push_back(Warmth(mean));
        }
    const std::vector<double> base(corners.size(), 0.0);

    CChart3D* chart = picture.NewChart("Warm days in Seattle", "mean of the daily maximum",
                                       "National Oceanic and Atmospheric Administration");
    CTransform3D* transform = chart->NewTransform({0.4, 2011.4, 0, 0}, {12.6, 2015.6, 30, 0});
    transform->SetRotate({-24, 0, 32, 0});
    transform->SetChartRect({0.62, 0.42, 0.44, 0});
    transform->SetOffset({0.03, 0, -0.04, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->SetAxisTics(0, 1, 1, 1, 0.02, 0.04, 2);
    axes->SetAxisLabelsStrings(0, example::kMonthInitials.data(), kMonths);
    axes->SetAxisTics(1, kFirstYear, 1, 1, 0.02, 0.04, 3);
    axes->SetAxisTitleString(2, "\260C");
    example::AddWalls(*axes, 0, 0, axes->GetAxisNthTicMajor(2));

    CChartObj3D* bars = chart->NewChartObj(transform);
    bars->BarChart3D(corners.data(), base.data(), static_cast<int>(corners.size()), 0.8, 0.6,
                     colors[0], example::kGrey);
    bars->InitSegmentColorsStorage(colors.data());
    picture.Save("bars_3d");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
