// Three species of penguins by three of their measures, one symbol and colour a species.
#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    const Theme theme;
    const Table table = picture.Read("penguins.csv");

    CChart3D& chart = *picture.View().NewChart3D();
    ApplyTheme(chart, theme);  // the light of the symbols in the legend, too
    CTransform3D* transform = chart.NewTransform();
    CLegend3D* legend = picture.View().NewLegend3D(LEGEND_OUTSIDE_RIGHT);
    const char* names[] = {"Adelie", "Chinstrap", "Gentoo"};
    const int solids[] = {SYMBOL_CUBE, SYMBOL_PYRAMID, SYMBOL_DIAMOND};
    for (int s = 0; s < 3; ++s) {
        const std::vector<point3Dtype> points =
            table.Points("bill_length_mm", "flipper_length_mm", "body_mass_g", "species", names[s]);
        CChartObj3D* symbols = chart.NewChartObj(transform);
        symbols->ScatterChart3D(points, 0.3, solids[s], theme.SeriesColor(s), theme.outline,
                                PROJECTION_NONE, 0);
        legend->AddChartObj(symbols, names[s]);
    }
    chart.AutoFrame(transform,
                    {.axes = {AxisFrame{.title = "bill, mm"}, AxisFrame{.title = "flipper, mm"},
                              AxisFrame{.title = "mass, g"}},
                     .title = "Penguins of the Palmer Archipelago",
                     .footer = "Palmer Station LTER"});
    picture.Save("scatter_penguins");
}
