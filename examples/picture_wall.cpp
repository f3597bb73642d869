// A cut through a volcano before a map of the whole of it, and a wall papered with a tile. Bitmap
// planes show .bmp files, which are written first.
#include <cmath>
#include <fstream>

#include "examples/support/example.h"

using namespace varnel;

namespace {

constexpr int kRows = 61, kColumns = 87, kCut = 30, kScale = 6;

/// Writes a .bmp file of 24 bits a pixel; colorAt(x, y) counts from the lower left.
template <class ColorAt>
void WriteBitmap(const std::string& path, int width, int height, ColorAt colorAt) {
    const auto stride = static_cast<std::size_t>((width * 3 + 3) / 4 * 4);
    std::string file(54 + stride * static_cast<std::size_t>(height), '\0');
    const auto put = [&file](std::size_t at, std::size_t value) {
        for (std::size_t i = 0; i < 4; ++i)
            file[at + i] = static_cast<char>(value >> 8 * i);
    };
    const std::size_t sizes[] = {file.size(),
                                 0,
                                 54,
                                 40,
                                 static_cast<std::size_t>(width),
                                 static_cast<std::size_t>(height),
                                 1 + (24U << 16)};
    file[0] = 'B';
    file[1] = 'M';
    for (std::size_t i = 0; i < std::size(sizes); ++i)
        put(2 + 4 * i, sizes[i]);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const RGBBType color = RGBDtoRGBB(colorAt(x, y));
            const std::size_t at =
                54 + static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x) * 3;
            file[at] = static_cast<char>(color.b);
            file[at + 1] = static_cast<char>(color.g);
            file[at + 2] = static_cast<char>(color.r);
        }
    std::ofstream(path, std::ios::binary) << file;
}

/// The volcano from above in colours by height, west up; a white line shows the cut.
void WriteMap(const std::string& path, const std::vector<double>& heights) {
    RGBDType colors[256];
    ColorMap("viridis", 256, colors);
    WriteBitmap(path, kColumns * kScale, kRows * kScale, [&](int x, int y) {
        const int row = kRows - 1 - y / kScale;
        if (row == kCut && y % kScale < 4) return RGBDType{1, 1, 1, 1};
        const double height = heights[static_cast<std::size_t>(row * kColumns + x / kScale)];
        return colors[static_cast<int>((height - 90) * 2.4)];
    });
}

/// Two triangles, point to point.
void WriteTile(const std::string& path) {
    WriteBitmap(path, 64, 64, [](int x, int y) {
        const bool inside =
            std::abs(x - 31.5) < 0.6 * std::abs(y - 31.5) && std::abs(y - 31.5) < 24;
        return inside ? RGBDType{0.78, 0.83, 0.74, 1} : RGBDType{0.95, 0.95, 0.91, 1};
    });
}

void Draw(example::Picture& picture) {
    const std::vector<double> heights = picture.ReadMatrix("volcano.csv");
    const std::string map = picture.PictureFile("picture_wall_map.bmp");
    const std::string tile = picture.PictureFile("picture_wall_tile.bmp");
    WriteMap(map, heights);
    WriteTile(tile);

    CChart3D* chart = picture.NewChart("A cut through Maunga Whau", "and where it runs on the map",
                                       "digitised by Ross Ihaka");
    CTransform3D* transform = chart->NewTransform({0, 0, 90, 0}, {860, 600, 260, 0});
    transform->SetRotate({-18, 0, 26, 0});
    transform->SetChartRect({0.64, 0.34, 0.50, 0});
    CAxes3D* axes = chart->AutoAxes(transform);
    axes->SetAxisTics(0, 0, 100, 2, 0.02, 0.04, 0);
    axes->SetAxisTitleString(0, "north, m");
    axes->SetAxisTitleString(2, "height, m");
    axes->EnableAxis(1, 0);
    axes->EnableAxisLabels(1, 0);
    example::AddWalls(*axes, 0, 0, 0);

    std::vector<double> north, cut;
    for (std::size_t i = 0; i < kColumns; ++i) {
        north.push_back(10.0 * static_cast<double>(i));
        cut.push_back(heights[kCut * kColumns + i]);
    }
    CChartObj3D* area = chart->NewChartObj(transform);
    area->AreaFillChart25D(north.data(), cut.data(), 90, 400, kColumns, 200, {0.66, 0.56, 0.42, 1},
                           example::kGrey, 1, 0);
    area->SetOutlineMode(0);

    // Just before the walls: the lower left, upper left and upper right corners.
    CDIBObj3D* wall = chart->NewDIBObj(transform, map);
    wall->SetPlanePoints({180, 6, 140, 0}, {180, 6, 250, 0}, {640, 6, 250, 0});
    CDIBObj3D* paper = chart->NewDIBObj(transform, tile);
    paper->SetPlanePoints({6, 600, 90, 0}, {6, 600, 260, 0}, {6, 0, 260, 0});
    paper->SetRepeatFactors(8, 8);
    picture.Save("picture_wall");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
