// The months of Seattle by temperature, rain and wind: each name stands at its values and on a line
// down to the floor; a line joins the months.
#include "examples/support/example.h"

using namespace varnel;

namespace {

void Draw(example::Picture& picture) {
    const example::Table table = picture.Read("seattle_weather.csv");
    const std::vector<example::Date> dates = table.Dates("date");
    const std::vector<double> warmest = example::MonthlyMeans(dates, table.Numbers("temp_max_c"));
    const std::vector<double> wind = example::MonthlyMeans(dates, table.Numbers("wind_m_s"));
    const std::vector<double> rain =
        example::MonthlyMeans(dates, table.Numbers("precipitation_mm"));
    std::vector<point3Dtype> months;
    for (std::size_t m = 0; m < 12; ++m)
        months.push_back({warmest[m], wind[m], rain[m], 0});

    CChart3D* chart = picture.NewChart("The year in Seattle", "warmth, wind and rain of each month",
                                       "National Oceanic and Atmospheric Administration");
    CTransform3D* transform = chart->NewTransform({5, 2, 0, 0}, {30, 4, 7, 0});
    transform->SetRotate({-22, 0, 26, 0});
    transform->SetChartRect({0.6, 0.42, 0.48, 0});
    transform->SetOffset({-0.08, 0, 0, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->SetAxisTitleString(0, "daily maximum, \260C");
    example::SetDepthTitle(*axes, "wind, m/s");
    axes->SetAxisTitleString(2, "rain, mm a day");
    example::AddWalls(*axes, axes->GetAxisNthTicMajor(0), axes->GetAxisNthTicMajor(1),
                      axes->GetAxisNthTicMajor(2));

    months.push_back(months[0]);
    CChartObj3D* line = chart->NewChartObj(transform);
    line->LineChart3D(months.data(), 13, 0, picture.Pixels(2), {0.65, 0.75, 0.88, 1});
    CChartObj3D* text = chart->NewChartObj(transform);
    text->ScatterText3D(months.data(), example::kMonths.data(), 12, 0.75, 3, example::Color(3), 0,
                        0.0);
    picture.Save("scatter_text");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
