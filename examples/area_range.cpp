// Seattle's days of a year, each from its lowest to its highest temperature.
#include "examples/support/example.h"

using namespace varnel;

namespace {

void Draw(example::Picture& picture) {
    const example::Table table = picture.Read("seattle_weather.csv");
    const std::vector<example::Date> dates = table.Dates("date");
    const std::vector<double> warmest = table.Numbers("temp_max_c");
    const std::vector<double> coldest = table.Numbers("temp_min_c");
    std::vector<double> month, high, range;
    for (std::size_t i = 0; i < dates.size(); ++i) {
        if (dates[i].year != 2015) continue;
        month.push_back(dates[i].month + (dates[i].day - 1) / 31.0);
        high.push_back(warmest[i]);
        range.push_back(warmest[i] - coldest[i]);  // the band hangs from the first value
    }

    CChart3D* chart = picture.NewChart("Seattle, 2015", "the temperatures of each day",
                                       "National Oceanic and Atmospheric Administration");
    CTransform3D* transform = chart->NewTransform({1, 0, -10, 0}, {13, 1, 40, 0});
    transform->SetRotate({-18, 0, 20, 0});
    transform->SetChartRect({0.76, 0.08, 0.52, 0});
    transform->SetOffset({0.05, 0, -0.04, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->EnableAxis(1, 0);
    axes->EnableAxisLabels(1, 0);
    axes->SetAxisTics(0, 1, 1, 1, 0.02, 0.03, 2);
    axes->SetAxisLabelsStrings(0, example::kMonths.data(), 12);
    axes->SetAxisLabelsSize(0, 0.7);
    axes->SetAxisLabelsXJust(0, 0);
    axes->SetAxisTitleString(2, "\260C");
    example::AddWalls(*axes, 1, 0, axes->GetAxisNthTicMajor(2));

    CChartObj3D* band = chart->NewChartObj(transform);
    band->AreaRangeChart25D(month.data(), high.data(), range.data(), 0.5,
                            static_cast<int>(month.size()), 0.4, example::Color(1), example::kGrey,
                            1, 0);
    band->SetOutlineMode(0);
    picture.Save("area_range");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
