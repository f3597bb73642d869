// Iowa's electricity: three ribbons behind each other, one a source, their names on the axis of
// depth.
#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    const Theme theme;
    const Table table = picture.Read("iowa_electricity.csv");
    const char* columns[] = {"fossil_fuels_gwh", "renewables_gwh", "nuclear_energy_gwh"};
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    for (int source = 0; source < 3; ++source) {
        chart.NewChartObj(transform)->RibbonChart25D(
            table.Numbers("year"), table.Numbers({columns[source]}, 0.001), source + 1, 0.7,
            theme.SeriesColor(source), theme.outline, WIDTH_CENTERED, INDAXIS_X);
    }
    chart.AutoFrame(transform,
                    {.axes = {AxisFrame{}, AxisFrame{.names = {"fossil", "renewable", "nuclear"}},
                              AxisFrame{.title = "TWh"}},
                     .title = "Iowa's electricity",
                     .subtitle = "three sources behind each other",
                     .footer = "U.S. Energy Information Administration",
                     .azimuth = 62,
                     .elevation = 22,
                     .proportions = point3Dtype{1, 0.7, 0.7, 0}});
    picture.Save("ribbons_depth");
}
