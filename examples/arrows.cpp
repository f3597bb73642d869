// Where water runs: arrows downhill over a map of a volcano in bands of 10 m.
#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    CPolysurface surface = picture.ReadVolcano();
    const ColorScale scale{.map = "terrain", .min = 90, .max = 200, .bands = 11};
    std::vector<double> limits = scale.BandLimits();
    for (double& limit : limits)
        limit -= 0.5;  // the heights are whole metres: borders between them run smoothly
    CPolysurface bands = FilledContours(surface, limits, scale.Colors());
    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    CChartObj3D* map = chart.NewChartObj(transform);
    map->PolysurfaceChart2D(&bands, 0, PROJECTION_ALONG_Z);
    map->SetOutlineMode(0);
    map->SetColorMode(COLOR_MODE_FLAT);

    const std::vector<double> heights = picture.ReadMatrix("volcano.csv");
    // A row of the file for each 10 m further east, from south to north.
    constexpr int kEast = 61, kNorth = 87, kStep = 5;
    const auto height = [&](int east, int north) {
        return heights.at(static_cast<std::size_t>(east * kNorth + north));
    };
    std::vector<point3Dtype> places, downhill;
    for (int x = kStep; x < kEast - 1; x += kStep)
        for (int y = kStep; y < kNorth - 1; y += kStep) {
            places.push_back({10.0 * x, 10.0 * y, 1, 0});
            downhill.push_back({(height(x - 1, y) - height(x + 1, y)) / 20,
                                (height(x, y - 1) - height(x, y + 1)) / 20, 0, 0});
        }
    CChartObj3D* arrows = chart.NewChartObj(transform);
    arrows->Vectors3D(places, downhill, 80, 0.45, 1, picture.Pixels(2), Theme().outline);
    arrows->SetClipping(1);
    CLegend3D* legend = picture.View().NewLegend3D(LEGEND_OUTSIDE_RIGHT);
    legend->SetLegendTitle("m");
    legend->SetColorBar(scale);
    chart.AutoFrame(transform, {.axes = {AxisFrame{.title = "east, m", .min = 0, .max = 600},
                                         AxisFrame{.title = "north, m", .min = 0, .max = 860},
                                         AxisFrame{.show = false}},
                                .title = "Downhill on Maunga Whau",
                                .footer = "digitised by Ross Ihaka",
                                .azimuth = -90,
                                .elevation = 90,
                                .asData = true});
    picture.Save("arrows");
}
