// Seattle's rain, a mean month for each name on the axis.
#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    const Table table = picture.Read("seattle_weather.csv");
    const std::vector<double> rain =
        MonthlyMeans(table.Dates("date"), table.Numbers("precipitation_mm"));
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    CChartObj3D* bars = chart.NewChartObj(transform);
    bars->BarChart25D(Count(1, rain.size()), rain, 0, 0, 0.65, 1, Theme().SeriesColor(0),
                      Theme().outline, WIDTH_CENTERED, WIDTH_CENTERED, INDAXIS_X);
    chart.AutoFrame(transform, {.axes = {AxisFrame{.names = kMonths}, AxisFrame{},
                                         AxisFrame{.title = "mm a day"}},
                                .title = "Rain in Seattle",
                                .subtitle = "mean of 2012 to 2015",
                                .footer = "National Oceanic and Atmospheric Administration"});
    picture.Save("bars_months");
}
