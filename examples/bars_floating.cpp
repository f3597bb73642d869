// The daily range of an index, from its low to its high, as floating bars.
#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    const Theme theme;
    const Table table = picture.Read("vix_ohlc.csv");
    const std::vector<double> open = table.Numbers("open"), high = table.Numbers("high");
    const std::vector<double> low = table.Numbers("low"), close = table.Numbers("close");
    std::vector<double> range;
    std::vector<RGBDType> colors;
    for (std::size_t i = 0; i < high.size(); ++i) {
        range.push_back(high[i] - low[i]);
        colors.push_back(theme.SeriesColor(close[i] >= open[i] ? 0 : 2));
    }

    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    CChartObj3D* bars = chart.NewChartObj(transform);
    bars->FloatingBarChart25D(table.Days("date"), high, range, 0, 0.8, 1, {}, theme.outline,
                              WIDTH_CENTERED, WIDTH_CENTERED, INDAXIS_X);
    bars->InitSegmentColorsStorage(colors.data());
    CLegend3D* legend = picture.View().NewLegend3D(LEGEND_LEAST_DATA);
    for (const bool rose : {true, false}) {
        CLegendObj3D* entry = legend->NewLegendObj();
        entry->SetString(rose ? "rose" : "fell");
        entry->SetRectangleSample(theme.SeriesColor(rose ? 0 : 2), theme.outline);
    }
    chart.AutoFrame(transform,
                    {.axes = {AxisFrame{.dates = true}, AxisFrame{}, AxisFrame{.title = "points"}},
                     .title = "Volatility index, summer 2009",
                     .subtitle = "daily low to high"});
    picture.Save("bars_floating");
}
