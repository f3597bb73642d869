// The world's temperature against its mean of 1951 to 1980: what lies above in red, below in blue.
#include <cmath>

#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    const Table table = picture.Read("global_temperature_anomaly.csv");
    const std::vector<double> year = table.Numbers("year");
    const std::vector<double> anomaly = table.Numbers("anomaly_c");

    // Two areas with a point on the base wherever the line crosses it; what is not theirs is no
    // data, and leaves a gap.
    std::vector<double> when, above, below;
    for (std::size_t i = 0; i < year.size(); ++i) {
        if (i > 0 && anomaly[i - 1] * anomaly[i] < 0) {
            const double part = anomaly[i - 1] / (anomaly[i - 1] - anomaly[i]);
            when.push_back(year[i - 1] + part * (year[i] - year[i - 1]));
            above.push_back(0);
            below.push_back(0);
        }
        when.push_back(year[i]);
        above.push_back(anomaly[i] >= 0 ? anomaly[i] : std::nan(""));
        below.push_back(anomaly[i] <= 0 ? anomaly[i] : std::nan(""));
    }

    const Theme theme;
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    CLegend3D* legend = picture.View().NewLegend3D(LEGEND_LEAST_DATA);
    for (const bool warm : {true, false}) {
        CChartObj3D* area = chart.NewChartObj(transform);
        area->AreaFillChart25D(when, warm ? above : below, 0, 0, 1, theme.SeriesColor(warm ? 2 : 0),
                               theme.outline, WIDTH_CENTERED, INDAXIS_X);
        area->SetOutlineMode(0);
        legend->AddChartObj(area, warm ? "warmer" : "colder");
    }
    chart.AutoFrame(transform, {.axes = {AxisFrame{}, AxisFrame{}, AxisFrame{.title = "°C"}},
                                .title = "A warmer world",
                                .subtitle = "against the mean of 1951 to 1980",
                                .footer = "Goddard Institute for Space Studies"});
    picture.Save("area_anomaly");
}
