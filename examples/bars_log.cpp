// A week of earthquakes: how many of each magnitude, on a logarithmic axis with its grid; and the
// energy that they set free.
#include <cmath>

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
    bars->SetExactExtents(1);
    chart.AutoFrame(transform, {.axes = {AxisFrame{.title = "magnitude"}, AxisFrame{}, axis},
                                .title = "A week of earthquakes",
                                .subtitle = subtitle,
                                .footer = "U.S. Geological Survey"});
    picture.Save(name);
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
}
