// A cut through a volcano before a map of the whole of it, and a wall papered with a tile. Bitmap
// planes show .bmp files, which are written first.
#include <cmath>

#include "examples/support/example.h"

using namespace varnel;

namespace {

constexpr int kRows = 61, kColumns = 87, kCut = 30, kScale = 6;

/// The volcano from above in colours by height, west up; a white line shows the cut.
void WriteMap(const std::string& path, const std::vector<double>& heights) {
    RGBDType colors[256];
    ColorMap("viridis", 256, colors);
    example::WriteBitmap(path, kColumns * kScale, kRows * kScale, [&](int x, int y) {
        const int row = kRows - 1 - y / kScale;
        if (row == kCut && y % kScale < 4) return RGBDType{1, 1, 1, 1};
        const double height = heights[static_cast<std::size_t>(row * kColumns + x / kScale)];
        return colors[static_cast<int>((height - 90) * 2.4)];
    });
}

/// Two triangles, point to point.
void WriteTile(const std::string& path) {
    example::WriteBitmap(path, 64, 64, [](int x, int y) {
        const bool inside =
            std::abs(x - 31.5) < 0.6 * std::abs(y - 31.5) && std::abs(y - 31.5) < 24;
        return inside ? RGBDType{0.78, 0.83, 0.74, 1} : RGBDType{0.95, 0.95, 0.91, 1};
    });
}

}  // namespace

void example::Draw(Picture& picture) {
    const std::vector<double> heights = picture.ReadMatrix("volcano.csv");
    const std::string map = picture.PictureFile("picture_wall_map.bmp");
    const std::string tile = picture.PictureFile("picture_wall_tile.bmp");
    WriteMap(map, heights);
    WriteTile(tile);

    CChart3D& chart = *picture.View().NewChart3D();
    CTransform3D* transform = chart.NewTransform();
    CChartObj3D* area = chart.NewChartObj(transform);
    area->AreaFillChart25D(Count(0, kColumns, 10),
                           std::span(heights).subspan(kCut * kColumns, kColumns), 90, 400, 200,
                           {0.66, 0.56, 0.42, 1}, Theme().outline, WIDTH_CENTERED, INDAXIS_X);
    area->SetOutlineMode(0);

    // Just before the walls: the lower left, upper left and upper right corners.
    chart.NewDIBObj(transform, map)
        ->SetPlanePoints({180, 6, 140, 0}, {180, 6, 250, 0}, {640, 6, 250, 0});
    CDIBObj3D* paper = chart.NewDIBObj(transform, tile);
    paper->SetPlanePoints({6, 600, 90, 0}, {6, 600, 260, 0}, {6, 0, 260, 0});
    paper->SetRepeatFactors(8, 8);
    chart.AutoFrame(transform, {.axes = {AxisFrame{.title = "north, m"},
                                         AxisFrame{.min = 0, .max = 600, .show = false},
                                         AxisFrame{.title = "height, m", .min = 90, .max = 260}},
                                .title = "A cut through Maunga Whau",
                                .subtitle = "and where it runs on the map",
                                .footer = "digitised by Ross Ihaka",
                                .azimuth = 64,
                                .elevation = 18,
                                .proportions = point3Dtype{1, 0.55, 0.7, 0},
                                .grids = false});
    picture.Save("picture_wall");
}
