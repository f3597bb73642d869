// Means of months with the spread of their days, over a band for what is usual.
#include <cmath>
#include <numeric>

#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    const Table table = picture.Read("seattle_weather.csv");
    const std::vector<double> warmest = table.Numbers("temp_max_c");
    const std::vector<Date> dates = table.Dates("date");
    std::vector<double> squares;
    for (const double t : warmest)
        squares.push_back(t * t);
    const std::vector<double> means = MonthlyMeans(dates, warmest);
    const std::vector<double> meanSquares = MonthlyMeans(dates, squares);
    std::vector<point3Dtype> points;
    std::vector<double> spread;
    for (std::size_t m = 0; m < 12; ++m) {
        points.push_back({static_cast<double>(m + 1), 0, means[m], 0});
        spread.push_back(std::sqrt(meanSquares[m] - means[m] * means[m]));
    }
    const auto days = static_cast<double>(warmest.size());
    const double mean = std::accumulate(warmest.begin(), warmest.end(), 0.0) / days;
    const double square = std::accumulate(squares.begin(), squares.end(), 0.0) / days;
    const double sigma = std::sqrt(square - mean * mean);

    const Theme theme;
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    chart.NewChartObj(transform)->ReferenceBand3D(2, mean - sigma, mean + sigma, 1,
                                                  {0.98, 0.90, 0.72, 1});
    chart.NewChartObj(transform)->ReferenceLine3D(2, mean, 1, LINE_SOLID, picture.Pixels(2),
                                                  theme.SeriesColor(1));
    CChartObj3D* bars = chart.NewChartObj(transform);
    bars->ErrorBars3D(points, spread, spread, 2, 0.35, LINE_SOLID, picture.Pixels(2),
                      theme.outline);
    CChartObj3D* line = chart.NewChartObj(transform);
    line->LineChart3D(points, LINE_SOLID, picture.Pixels(2), theme.SeriesColor(0));
    line->SetMarker(MARKER_CIRCLE, 7);
    chart.AutoFrame(transform,
                    {.axes = {AxisFrame{.names = kMonths}, AxisFrame{}, AxisFrame{.title = "°C"}},
                     .title = "Seattle's warmest hour of the day",
                     .subtitle = "means of the months and of all days, with a standard deviation",
                     .footer = "National Oceanic and Atmospheric Administration",
                     .flat = true});
    picture.Save("error_bars");
}
