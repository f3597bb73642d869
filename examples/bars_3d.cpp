// Seattle's monthly mean of the daily maximum temperature, month by year, as three-dimensional bars
// coloured by temperature.
#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    const Table table = picture.Read("seattle_weather.csv");
    const std::vector<double> means =
        MonthlyMeansByYear(table.Dates("date"), table.Numbers("temp_max_c"));
    const std::vector<CString> years = {"2012", "2013", "2014", "2015"};
    std::vector<point3Dtype> corners;
    for (std::size_t i = 0; i < means.size(); ++i) {
        const auto month = static_cast<double>(i % 12), year = static_cast<double>(i / 12);
        corners.push_back({month + 0.6, year + 0.7, means[i], 0});
    }

    const ColorScale scale{.map = "coolwarm", .min = 5, .max = 30};
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    CChartObj3D* bars = chart.NewChartObj(transform);
    bars->BarChart3D(corners, std::vector<double>(corners.size()), 0.8, 0.6, {}, Theme().outline);
    bars->InitSegmentColorsStorage(scale.Colors(means.data(), means.size()).data());
    chart.AutoFrame(transform, {.axes = {AxisFrame{.names = kMonths}, AxisFrame{.names = years},
                                         AxisFrame{.title = "°C"}},
                                .title = "Warm days in Seattle",
                                .subtitle = "mean of the daily maximum",
                                .footer = "National Oceanic and Atmospheric Administration"});
    picture.Save("bars_3d");
}
