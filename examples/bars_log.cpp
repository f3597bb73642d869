// A week of earthquakes: how many of each magnitude, on a logarithmic axis with its grid; and the
// energy that they set free. The rain of months against the mean, as bars that stand on 1.
#include <algorithm>
#include <cmath>
#include <numeric>

#include "examples/support/example.h"

using namespace varnel;

namespace {

constexpr double kLowest = -1, kWidth = 0.5;  // classes of half a magnitude

void DrawClasses(example::Picture& picture, const std::vector<double>& values, int color,
                 const AxisFrame& axis, const std::string& subtitle, const std::string& name) {
    const Theme theme;
    const std::vector<double> middles = example::Count(kLowest + kWidth / 2, values.size(), kWidth);
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    CChartObj3D* bars = chart.NewChartObj(transform);
    bars->BarChart25D(middles, values, axis.min.value_or(0), 0, 0.8 * kWidth, 1,
                      theme.SeriesColor(color), theme.outline, WIDTH_CENTERED, WIDTH_CENTERED,
                      INDAXIS_X);
    chart.AutoFrame(transform, {.axes = {AxisFrame{.title = "magnitude"}, AxisFrame{}, axis},
                                .title = "A week of earthquakes",
                                .subtitle = subtitle,
                                .footer = "U.S. Geological Survey"});
    picture.Save(name);
}

void DrawRain(example::Picture& picture) {
    const example::Table table = picture.Read("seattle_weather.csv");
    std::vector<double> rain =
        example::MonthlyMeans(table.Dates("date"), table.Numbers("precipitation_mm"));
    const double mean = std::accumulate(rain.begin(), rain.end(), 0.0) / 12;
    std::transform(rain.begin(), rain.end(), rain.begin(), [=](double r) { return r / mean; });
    const Theme theme;
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    CChartObj3D* bars = chart.NewChartObj(transform);
    bars->BarChart25D(example::Count(1, 12), rain, 1, 0, 0.8, 1, theme.SeriesColor(0),
                      theme.outline, WIDTH_CENTERED, WIDTH_CENTERED, INDAXIS_X);
    chart.AutoFrame(transform, {.axes = {AxisFrame{.names = example::kMonths}, AxisFrame{},
                                         AxisFrame{.title = "times the mean", .logarithmic = true}},
                                .title = "Rain in Seattle",
                                .subtitle = "wet and dry months as far from 1",
                                .footer = "National Oceanic and Atmospheric Administration"});
    picture.Save("bars_ratio");
}

}  // namespace

void example::Draw(Picture& picture) {
    std::vector<double> count(15), joules(15);
    for (double magnitude : picture.Read("earthquakes_week.csv").Numbers("magnitude")) {
        const auto c = static_cast<std::size_t>((magnitude - kLowest) / kWidth);
        count.at(c) += 1;
        joules.at(c) += std::pow(10.0, 4.8 + 1.5 * magnitude);
    }
    DrawClasses(picture, count, 1, {.title = "count", .logarithmic = true, .min = 0.5},
                "how many of each magnitude", "bars_log");
    DrawClasses(picture, joules, 2, {.title = "joules", .logarithmic = true, .min = 1e3},
                "the energy that they set free", "bars_engineering");
    DrawRain(picture);
}
