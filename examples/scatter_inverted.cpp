// A week of earthquakes on the map and in the depth: the axis of depth runs downward.
#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    const Theme theme;
    const Table table = picture.Read("earthquakes_week.csv");
    const std::vector<double> magnitude = table.Numbers("magnitude");
    const std::vector<point3Dtype> quakes =
        table.Points("longitude_deg", "latitude_deg", "depth_km");
    std::vector<point3Dtype> weak, strong;
    for (std::size_t i = 0; i < quakes.size(); ++i)
        (magnitude[i] < 4.5 ? weak : strong).push_back(quakes[i]);

    CChart3D& chart = *picture.View().NewChart3D();
    ApplyTheme(chart, theme);  // the light of the symbols in the legend, too
    CTransform3D* transform = chart.NewTransform();
    CLegend3D* legend = picture.View().NewLegend3D(LEGEND_OUTSIDE_RIGHT);
    legend->SetLegendTitle("magnitude");
    for (const bool isWeak : {true, false}) {
        CChartObj3D* symbols = chart.NewChartObj(transform);
        symbols->ScatterChart3D(isWeak ? weak : strong, isWeak ? 0.1 : 0.3,
                                isWeak ? SYMBOL_CUBE : SYMBOL_DIAMOND,
                                theme.SeriesColor(isWeak ? 0 : 2), theme.outline,
                                isWeak ? PROJECTION_NONE : PROJECTION_ALONG_Z, 0);
        symbols->SetOutlineMode(isWeak ? 0 : 1);
        legend->AddChartObj(symbols, isWeak ? "below 4.5" : "4.5 and more");
    }
    // Minimum and maximum exchanged: the scale runs backwards.
    chart.AutoFrame(transform, {.axes = {AxisFrame{.title = "east"}, AxisFrame{.title = "north"},
                                         AxisFrame{.title = "km deep", .min = 600, .max = 0}},
                                .title = "A week of earthquakes",
                                .subtitle = "where, and how deep",
                                .footer = "U.S. Geological Survey"});
    picture.Save("scatter_inverted");
}
