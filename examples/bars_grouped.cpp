// Iowa's electricity by source, year by year: three bars side by side, and the same stacked.
#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    const Theme theme;
    const Table table = picture.Read("iowa_electricity.csv");
    const std::vector<double> terawattHours = table.Numbers(
        {"fossil_fuels_gwh", "nuclear_energy_gwh", "renewables_gwh"}, 0.001);  // source by source
    const CString names[] = {"fossil", "nuclear", "renewable"};

    for (const int type : {GROUPS_SIDE_BY_SIDE, GROUPS_STACKED}) {
        const bool stacked = type == GROUPS_STACKED;
        CChart3D& chart = *picture.View().NewChart3D();
        CTransform3D* transform = chart.NewTransform();
        CChartObj3D* bars = chart.NewChartObj(transform);
        bars->GroupBarChart25D(table.Numbers("year"), terawattHours, 0, 0, type, 0.8, 1,
                               std::span(theme.palette).first(3), theme.outline, WIDTH_CENTERED,
                               WIDTH_CENTERED, INDAXIS_X);
        CLegend3D* legend = picture.View().NewLegend3D(LEGEND_OUTSIDE_RIGHT);
        legend->AddGroups(bars, names);
        chart.AutoFrame(transform, {.axes = {AxisFrame{}, AxisFrame{}, AxisFrame{.title = "TWh"}},
                                    .title = "Iowa's electricity",
                                    .subtitle = stacked ? "three sources stacked"
                                                        : "three sources side by side",
                                    .footer = "U.S. Energy Information Administration"});
        picture.Save(stacked ? "bars_stacked" : "bars_grouped");
    }
}
