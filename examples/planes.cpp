// Seattle's warmth as planes: a slab for each month of one year, and a terrace of tiles for the
// months of four.
#include "examples/support/example.h"

using namespace varnel;

namespace {

void Finish(example::Picture& picture, CChart3D& chart, CChartObj3D* planes,
            const std::vector<double>& means, const std::vector<CString>& years) {
    const ColorScale scale{.map = "coolwarm", .min = 0, .max = 30};
    planes->InitSegmentColorsStorage(scale.Colors(means.data(), means.size()).data());
    planes->SetColorMode(COLOR_MODE_FLAT);  // the very colours of the legend
    const std::vector<RGBDType> colors = scale.Colors();
    CLegend3D* legend = picture.View().NewLegend3D(LEGEND_OUTSIDE_RIGHT);
    legend->SetLegendTitle("°C");
    legend->SetColorBar(colors.data(), static_cast<int>(colors.size()), scale.min, scale.max);
    const bool one = years.empty();
    chart.AutoFrame(planes->GetTransform(),
                    {.axes = {AxisFrame{.names = example::kMonths}, AxisFrame{.names = years},
                              AxisFrame{.title = "daily maximum, °C"}},
                     .title = one ? "Seattle, 2012" : "Seattle, 2012 to 2015",
                     .subtitle = "the mean of each month",
                     .footer = "National Oceanic and Atmospheric Administration"});
    picture.Save(one ? "planes_25d" : "planes_3d");
}

}  // namespace

void example::Draw(Picture& picture) {
    const Theme theme;
    const Table table = picture.Read("seattle_weather.csv");
    std::vector<double> means =
        MonthlyMeansByYear(table.Dates("date"), table.Numbers("temp_max_c"));
    std::vector<point3Dtype> corners;
    for (std::size_t i = 0; i < means.size(); ++i) {
        const auto month = static_cast<double>(i % 12), year = static_cast<double>(i / 12);
        corners.push_back({month + 0.55, year + 0.55, means[i], 0});
    }
    CChart3D& terrace = *picture.View().NewChart3D();
    CChartObj3D* planes = terrace.NewChartObj(terrace.NewTransform());
    planes->PlaneChart3D(corners, 0.9, 0.9, {}, theme.outline);
    Finish(picture, terrace, planes, means, {"2012", "2013", "2014", "2015"});

    means.resize(12);
    CChart3D& year = *picture.View().NewChart3D();
    planes = year.NewChartObj(year.NewTransform());
    planes->PlaneChart25D(Count(1, 12), means, 0, 0.9, 1, {}, theme.outline, WIDTH_CENTERED,
                          WIDTH_CENTERED, INDAXIS_X);
    Finish(picture, year, planes, means, {});
}
