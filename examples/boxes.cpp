// Seattle's daily maxima, month by month: extremes, quartiles, median and mean.
#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    const Theme theme;
    const Table table = picture.Read("seattle_weather.csv");
    const std::vector<Date> dates = table.Dates("date");
    const std::vector<double> warmest = table.Numbers("temp_max_c");
    std::vector<double> samples[12];
    for (std::size_t i = 0; i < dates.size(); ++i)
        samples[dates[i].month - 1].push_back(warmest[i]);
    std::vector<double> six(6 * 12);  // minimum, quartiles and median, maximum, mean
    for (std::size_t m = 0; m < 12; ++m)
        BoxStatistics(samples[m], &six[m], 12);

    const RGBDType lower = theme.SeriesColor(0), upper = theme.SeriesColor(1);
    const RGBDType colors[] = {lower, lower, theme.outline, upper, upper, theme.SeriesColor(2)};
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    CChartObj3D* boxes = chart.NewChartObj(transform);
    boxes->BoxAndWhiskerChart25D(Count(1, 12), six, 0, 0.6, 1, SYMBOL_DIAMOND, 0.25,
                                 picture.Pixels(2), colors, theme.outline, WIDTH_CENTERED,
                                 WIDTH_CENTERED, INDAXIS_X, 1);
    chart.AutoFrame(transform,
                    {.axes = {AxisFrame{.names = kMonths}, AxisFrame{}, AxisFrame{.title = "°C"}},
                     .title = "Daily maxima in Seattle",
                     .subtitle = "extremes, quartiles, median, mean",
                     .footer = "National Oceanic and Atmospheric Administration"});
    picture.Save("boxes");
}
