// A helix with its three shadows.
#include <cmath>
#include <numbers>

#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    constexpr int kPoints = 400;
    std::vector<point3Dtype> helix;
    for (int i = 0; i < kPoints; ++i) {
        const double t = static_cast<double>(i) / (kPoints - 1);
        const double angle = 8 * std::numbers::pi * t;
        helix.push_back({std::cos(angle), std::sin(angle), t, 0});
    }

    const Theme theme;
    const double low = -1.5, high = 1.5, floor = -0.1;
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    const double walls[] = {floor + 0.005, high - 0.01, low + 0.01};  // a little in front of them
    for (int plane = 0; plane < 3; ++plane)
        chart.NewChartObj(transform)->ProjectionLineChart3D(helix, LINE_SOLID, picture.Pixels(2),
                                                            RGBDType{0.5, 0.53, 0.58, 1}, plane,
                                                            walls[plane]);
    chart.NewChartObj(transform)->LineChart3D(helix, LINE_SOLID, picture.Pixels(4),
                                              theme.SeriesColor(2));
    chart.AutoFrame(transform, {.axes = {AxisFrame{.title = "x", .min = low, .max = high},
                                         AxisFrame{.title = "y", .min = low, .max = high},
                                         AxisFrame{.title = "z", .min = floor, .max = 1.1}},
                                .title = "A helix",
                                .subtitle = "and its shadows on three planes",
                                .footer = "x = cos t, y = sin t, z = t / 25"});
    picture.Save("line_helix");

    CChart3D& thick = *picture.View().NewChart3D();
    transform = thick.NewTransform();
    CChartObj3D* dashed = thick.NewChartObj(transform);
    dashed->LineChart3D(helix, LINE_DASHES, picture.Pixels(6), theme.SeriesColor(2));
    dashed->SetLineStyleFactor(picture.Pixels(4));
    std::vector<point3Dtype> marked;
    for (int i = 0; i < kPoints; i += 19)
        marked.push_back(helix[static_cast<std::size_t>(i)]);
    CChartObj3D* markers = thick.NewChartObj(transform);
    markers->ScatterChart3D(marked, 1, SYMBOL_NONE, theme.SeriesColor(0), theme.background,
                            PROJECTION_NONE, 0);
    markers->SetMarker(MARKER_CIRCLE, 12);
    thick.AutoFrame(transform, {.axes = {AxisFrame{.title = "x"}, AxisFrame{.title = "y"},
                                         AxisFrame{.title = "z"}},
                                .title = "A helix",
                                .subtitle = "thick and dashed, with a marker every 19 points"});
    picture.Save("line_helix_dashed");
}
