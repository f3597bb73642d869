// The months of Seattle by temperature, rain and wind: each name stands at its values and on a line
// down to the floor; a line joins the months.
#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    const Theme theme;
    const Table table = picture.Read("seattle_weather.csv");
    const std::vector<Date> dates = table.Dates("date");
    const std::vector<double> warmest = MonthlyMeans(dates, table.Numbers("temp_max_c"));
    const std::vector<double> wind = MonthlyMeans(dates, table.Numbers("wind_m_s"));
    const std::vector<double> rain = MonthlyMeans(dates, table.Numbers("precipitation_mm"));
    std::vector<point3Dtype> months;
    for (std::size_t m = 0; m <= 12; ++m)
        months.push_back({warmest[m % 12], wind[m % 12], rain[m % 12], 0});

    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    chart.NewChartObj(transform)->LineChart3D(months, LINE_SOLID, picture.Pixels(2),
                                              theme.SeriesColor(9));
    chart.NewChartObj(transform)->ScatterText3D(std::span(months).first(12), kMonths, 1,
                                                TEXTPLANE_VIEWER, theme.SeriesColor(2),
                                                PROJECTION_ALONG_Z, 0);
    chart.AutoFrame(transform, {.axes = {AxisFrame{.title = "daily maximum, °C"},
                                         AxisFrame{.title = "wind, m/s"},
                                         AxisFrame{.title = "rain, mm a day", .min = 0}},
                                .title = "The year in Seattle",
                                .subtitle = "warmth, wind and rain of each month",
                                .footer = "National Oceanic and Atmospheric Administration"});
    picture.Save("scatter_text");
}
