// A week of earthquakes: how many of each magnitude, on a logarithmic axis with its grid; and the
// energy that they set free. The rain of months against the mean, as bars that stand on 1.
#include <cmath>
#include <numeric>

#include "examples/support/example.h"

using namespace varnel;

namespace {

constexpr double kLowest = -1, kWidth = 0.5;  // classes of half a magnitude

void DrawBars(example::Picture& picture, const std::vector<double>& places,
              const std::vector<double>& values, double base, int color, const FrameOptions& frame,
              const std::string& name) {
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    chart.NewChartObj(transform)->BarChart25D(
        places, values, base, 0, 0.8 * (places[1] - places[0]), 1, Theme().SeriesColor(color),
        Theme().outline, WIDTH_CENTERED, WIDTH_CENTERED, INDAXIS_X);
    chart.AutoFrame(transform, frame);
    picture.Save(name);
}

void DrawClasses(example::Picture& picture, const std::vector<double>& values, int color,
                 const AxisFrame& axis, const std::string& subtitle, const std::string& name) {
    DrawBars(picture, example::Count(kLowest + kWidth / 2, values.size(), kWidth), values,
             axis.min.value_or(0), color,
             {.axes = {AxisFrame{.title = "magnitude"}, AxisFrame{}, axis},
              .title = "A week of earthquakes",
              .subtitle = subtitle,
              .footer = "U.S. Geological Survey"},
             name);
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
    const Table table = picture.Read("seattle_weather.csv");
    std::vector<double> rain = MonthlyMeans(table.Dates("date"), table.Numbers("precipitation_mm"));
    const double mean = std::accumulate(rain.begin(), rain.end(), 0.0) / 12;
    for (double& month : rain)
        month /= mean;
    DrawBars(picture, Count(1, 12), rain, 1, 0,
             {.axes = {AxisFrame{.names = kMonths}, AxisFrame{},
                       AxisFrame{.title = "times the mean", .logarithmic = true}},
              .title = "Rain in Seattle",
              .subtitle = "wet and dry months as far from 1",
              .footer = "National Oceanic and Atmospheric Administration"},
             "bars_ratio");
}
