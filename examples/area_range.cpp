// Seattle's days of a year, each from its lowest to its highest temperature.
#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    const Table table = picture.Read("seattle_weather.csv");
    const std::vector<double> days = table.Days("date");
    const std::vector<double> warmest = table.Numbers("temp_max_c");
    const std::vector<double> coldest = table.Numbers("temp_min_c");
    std::vector<double> day, high, range;
    for (std::size_t i = 0; i < days.size(); ++i) {
        if (days[i] < DaysOf(2015, 1, 1)) continue;
        day.push_back(days[i]);
        high.push_back(warmest[i]);
        range.push_back(warmest[i] - coldest[i]);  // the band hangs from the first value
    }

    const Theme theme;
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    CChartObj3D* band = chart.NewChartObj(transform);
    band->AreaRangeChart25D(day, high, range, 0, 1, theme.SeriesColor(1), theme.outline,
                            WIDTH_CENTERED, INDAXIS_X);
    band->SetOutlineMode(0);
    chart.AutoFrame(transform,
                    {.axes = {AxisFrame{.dates = true}, AxisFrame{}, AxisFrame{.title = "°C"}},
                     .title = "Seattle, 2015",
                     .subtitle = "the temperatures of each day",
                     .footer = "National Oceanic and Atmospheric Administration"});
    picture.Save("area_range");
}
