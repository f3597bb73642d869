// Iowa's electricity by source as stacked areas and as stacked ribbons.
#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    const Theme theme;
    const auto colors = std::span(theme.palette).first(3);
    const CString names[] = {"nuclear", "fossil", "renewable"};
    const Table table = picture.Read("iowa_electricity.csv");
    const std::vector<double> years = table.Numbers("year");
    const std::vector<double> terawattHours = table.Numbers(
        {"nuclear_energy_gwh", "fossil_fuels_gwh", "renewables_gwh"}, 0.001);  // source by source

    for (const bool areas : {true, false}) {
        CChart3D& chart = *picture.View().NewChart3D();
        CTransform3D* transform = chart.NewTransform();
        CChartObj3D* groups = chart.NewChartObj(transform);
        if (areas) {
            groups->GroupAreaFillChart25D(years, terawattHours, 0, 1, colors, theme.outline,
                                          WIDTH_CENTERED, INDAXIS_X);
            groups->SetSegmentOutlines(0);
        } else {
            groups->GroupRibbonChart25D(years, terawattHours, 0, 1, colors, theme.outline,
                                        WIDTH_CENTERED, INDAXIS_X);
        }
        CLegend3D* legend = picture.View().NewLegend3D(LEGEND_OUTSIDE_RIGHT);
        legend->AddGroups(groups, names);
        chart.AutoFrame(transform, {.axes = {AxisFrame{}, AxisFrame{}, AxisFrame{.title = "TWh"}},
                                    .title = "Iowa's electricity",
                                    .subtitle = areas ? "stacked areas" : "stacked ribbons",
                                    .footer = "U.S. Energy Information Administration"});
        picture.Save(areas ? "areas_stacked" : "ribbons_stacked");
    }
}
