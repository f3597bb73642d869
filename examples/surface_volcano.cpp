// The heights of a volcano on a 10 m grid: a lit surface, the same coloured by height, as a wire
// frame, as a flat map above its contour lines, and in the colours of its contour bands.
#include "examples/support/example.h"

using namespace varnel;

namespace {

constexpr RGBDType kGrass{0.62, 0.74, 0.44, 1};
constexpr RGBDType kWire{0.32, 0.45, 0.22, 1};

/// The file has a row for each 10 m further east, from south to north: seen from the east, where y
/// points to the viewer, nothing is mirrored. Triangles, which contour lines need.
CPolysurface ReadVolcano(example::Picture& picture) {
    const std::vector<double> heights = picture.ReadMatrix("volcano.csv");
    constexpr int rows = 61, columns = 87, triangles = 1;
    return {rows, columns, 0, 0, 10 * (columns - 1), 10 * (rows - 1), heights.data(), triangles};
}

void SetColor(CPolysurface& surface, const RGBDType& color) {
    for (int i = 0; i < surface.GetPSNumPolygons(); ++i)
        surface.SetPolysurfaceColors(i, color, color);
}

CChart3D* NewVolcanoChart(example::Picture& picture, const std::string& subtitle, double floor) {
    CChart3D* chart =
        picture.NewChart("Maunga Whau, Auckland", subtitle, "digitised by Ross Ihaka");
    chart->SetLightPosition({1, 0.6, 0.9, 0});  // the north-east
    constexpr int diffuse = 4609;
    chart->SetLightComponent(diffuse, {0.75, 0.75, 0.75, 1});
    CTransform3D* transform = chart->NewTransform({0, 0, floor, 0}, {860, 600, 200, 0});
    transform->SetRotate({-36, 0, 26, 0});
    transform->SetChartRect({0.58, 0.46, 0.0026 * (200 - floor), 0});
    transform->SetOffset({-0.03, 0, 0, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->SetAxisTics(0, 0, 100, 2, 0.02, 0.04, 0);
    axes->SetAxisTics(1, 0, 100, 2, 0.02, 0.04, 0);
    axes->SetAxisTitleString(0, "north, m");
    example::SetDepthTitle(*axes, "east, m");
    axes->SetAxisTitleString(2, "height, m");
    example::AddWalls(*axes, 2, 2, axes->GetAxisNthTicMajor(2));
    return chart;
}

CChartObj3D* AddSurface(CChart3D& chart, CPolysurface& surface) {
    CChartObj3D* object = chart.NewChartObj(chart.GetTransform(0));
    object->PolysurfaceChart3D(&surface);
    object->SetOutlineMode(0);
    return object;
}

CLegend3D* AddLegend(example::Picture& picture) {
    CLegend3D* legend = picture.View().NewLegend3D();
    legend->SetLegendTitle("height, m");
    legend->SetFontHeightSF(0.85);
    legend->EnableBorder(0);
    legend->EnableBackground(0);
    return legend;
}

/// Levels every 10 m, a hair above whole metres: lines are whole where no point lies on them.
constexpr double kLevels[] = {100.001, 110.001, 120.001, 130.001, 140.001,
                              150.001, 160.001, 170.001, 180.001, 190.001};
constexpr int kNumLevels = 10;

CChartObj3D* AddContours(CChart3D& chart, CPolysurface& surface, const RGBDType* colors, double z) {
    CChartObj3D* contours = chart.NewChartObj(chart.GetTransform(0));
    contours->ContourPolysurface3D(&surface, kLevels, colors, kNumLevels, z, 0);
    return contours;
}

/// The map has no heights of its own: it is coloured by the value of its points.
void DrawMap(example::Picture& picture, CPolysurface& surface) {
    CChart3D* chart = NewVolcanoChart(picture, "a map above its contour lines", 70);
    surface.CopyXYorZtoV(1, 0, 2);
    CChartObj3D* map = AddSurface(*chart, surface);
    chart->ColorSurfaceByHeight(map, "viridis");
    constexpr int byValue = 3;
    chart->SetTextureMode(byValue);
    map->PolysurfaceChart2D(&surface, 190, 0);
    RGBDType colors[kNumLevels + 1];
    ColorMap("viridis", kNumLevels + 1, colors);
    AddLegend(picture)->SetContours(AddContours(*chart, surface, colors, 70.5), 0, 0, 0);
    picture.Save("surface_volcano_flat");
}

void DrawBands(example::Picture& picture, CPolysurface surface) {
    RGBDType colors[kNumLevels + 1];
    ColorMap("magma", kNumLevels + 1, colors);
    for (int i = 0; i < surface.GetPSNumPolygons(); ++i) {
        const int band = static_cast<int>((surface.GetPSPMean(i, 2) - 90) / 10);
        surface.SetPolysurfaceColors(i, colors[band], example::kGrey);
    }
    CChart3D* chart = NewVolcanoChart(picture, "in bands of 10 m, above its contour lines", 40);
    AddSurface(*chart, surface);
    AddLegend(picture)->SetContours(AddContours(*chart, surface, colors, 40.5), 1, 0, 0);
    picture.Save("surface_volcano_bands");
}

void Draw(example::Picture& picture) {
    CPolysurface surface = ReadVolcano(picture);
    SetColor(surface, kGrass);
    CChart3D* chart = NewVolcanoChart(picture, "in the light of the morning", 90);
    AddSurface(*chart, surface);
    picture.Save("surface_volcano_lit");

    chart = NewVolcanoChart(picture, "coloured by height", 90);
    chart->ColorSurfaceByHeight(AddSurface(*chart, surface), "viridis");
    AddLegend(picture)->SetColorBar(chart);
    picture.Save("surface_volcano_height");

    chart = NewVolcanoChart(picture, "a wire frame of every second point", 90);
    CPolysurface wire(&surface, 2);
    wire.SetWireFrame(1);
    SetColor(wire, kWire);
    AddSurface(*chart, wire);
    picture.Save("surface_volcano_wire");

    DrawMap(picture, surface);
    DrawBands(picture, surface);
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
