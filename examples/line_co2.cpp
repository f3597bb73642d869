// Carbon dioxide on Mauna Loa, month by month, and the mean of the twelve months around each.
#include <cmath>
#include <numeric>

#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    const Table table = picture.Read("co2_mauna_loa.csv");
    const std::vector<double> days = table.Days("date"), ppm = table.Numbers("co2_ppm");
    // The mean of the six months before and after each; no value where some are missing.
    std::vector<double> trend(ppm.size(), std::nan(""));
    for (std::size_t i = 6; i + 6 < ppm.size(); ++i)
        trend[i] = std::accumulate(&ppm[i - 5], &ppm[i + 6], (ppm[i - 6] + ppm[i + 6]) / 2) / 12;

    const Theme theme;
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    CLegend3D* legend = picture.View().NewLegend3D(LEGEND_LEAST_DATA);
    for (const bool mean : {false, true}) {
        CChartObj3D* line = chart.NewChartObj(transform);
        line->LineChart25D(days, mean ? trend : ppm, 0, LINE_SOLID, picture.Pixels(2),
                           theme.SeriesColor(mean ? 2 : 0), INDAXIS_X);
        legend->AddChartObj(line, mean ? "12 months" : "month");
    }
    chart.AutoFrame(transform,
                    {.axes = {AxisFrame{.dates = true}, AxisFrame{}, AxisFrame{.title = "ppm"}},
                     .title = "Carbon dioxide on Mauna Loa",
                     .subtitle = "by month, and the mean of twelve",
                     .footer = "Scripps CO₂ Program"});
    picture.Save("line_co2");
}
