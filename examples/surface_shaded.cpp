// Light on surfaces: a volcano lit smoothly, the same in the colours of its heights, and in bands
// with labelled contour lines on its floor; and a function seen from below.
#include <cmath>

#include "examples/support/example.h"

using namespace varnel;

namespace {

constexpr RGBDType kGrass{0.62, 0.74, 0.44, 1};
constexpr double kFloor = 40;

CPolysurface ReadVolcano(example::Picture& picture) {
    const std::vector<double> heights = picture.ReadMatrix("volcano.csv");
    constexpr int rows = 61, columns = 87;
    CPolysurface surface(rows, columns, 0, 0, 10 * (columns - 1), 10 * (rows - 1), heights,
                         GRID_TRIANGLES);
    surface.CreateRGAdjacentPolygonList();
    for (int i = 0; i < surface.GetPSNumPolygons(); ++i)
        surface.SetPolysurfaceColors(i, kGrass, kGrass);
    return surface;
}

CChart3D* NewVolcanoChart(example::Picture& picture, const std::string& subtitle, double floor) {
    CChart3D* chart =
        picture.NewChart("Maunga Whau, Auckland", subtitle, "digitised by Ross Ihaka");
    chart->SetLight();
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
    object->SetShading(1);
    object->SetTwoSided(1);
    return object;
}

void AddColorBar(example::Picture& picture, CChart3D* chart, const CString& title) {
    CLegend3D* legend = picture.View().NewLegend3D();
    legend->SetLegendTitle(title);
    legend->SetFontHeightSF(0.85);
    legend->EnableBorder(0);
    legend->EnableBackground(0);
    legend->SetColorBar(chart);
}

/// Cut along the levels, so that bands and lines agree.
void DrawBands(example::Picture& picture, CPolysurface& surface) {
    const std::vector<double> levels = {100, 110, 120, 130, 140, 150, 160, 170, 180, 190};
    std::vector<RGBDType> colors(levels.size() + 1);
    ColorMap("plasma", static_cast<int>(colors.size()), colors.data());
    CChart3D* chart = NewVolcanoChart(picture, "in bands of 10 m above its contour lines", kFloor);
    CPolysurface bands = FilledContours(surface, levels, colors);
    AddSurface(*chart, bands);
    CChartObj3D* contours = chart->NewChartObj(chart->GetTransform(0));
    contours->ContourPolysurface3D(&surface, levels, colors, kFloor + 0.5, 0);
    ContourStyle style;
    style.lineWidth = picture.Pixels(1.5);
    style.labels = 1;
    contours->SetContourStyle(style);
    picture.Save("surface_shaded_bands");
}

double Ripple(double x, double y) {
    const double r = std::hypot(x, y);
    return std::cos(2 * r) * std::exp(-r / 3);
}

void DrawFromBelow(example::Picture& picture) {
    CChart3D* chart = picture.NewChart("A ripple from below", "lit on both of its sides",
                                       "a function of two variables");
    chart->SetLight({-0.5, 0.2, 1, 0}, 0.3, 0.65, 0.25, 40);
    CTransform3D* transform = chart->NewTransform({-5, -5, -1, 0}, {5, 5, 1, 0});
    transform->SetRotate({30, 0, 30, 0});
    transform->SetChartRect({0.52, 0.52, 0.3, 0});
    CAxes3D* axes = chart->AutoAxes(transform);
    axes->SetAxisTitleString(0, "x");
    axes->SetAxisTitleString(2, "z");
    CPolysurface surface(91, 91, -5, -5, 5, 5, Ripple);
    constexpr RGBDType color{0.55, 0.68, 0.86, 1};
    for (int i = 0; i < surface.GetPSNumPolygons(); ++i)
        surface.SetPolysurfaceColors(i, color, color);
    AddSurface(*chart, surface);
    picture.Save("surface_shaded_below");
}

void Draw(example::Picture& picture) {
    CPolysurface surface = ReadVolcano(picture);
    AddSurface(*NewVolcanoChart(picture, "lit smoothly", 90), surface);
    picture.Save("surface_shaded_smooth");

    CChart3D* chart = NewVolcanoChart(picture, "coloured by height and lit", 90);
    CChartObj3D* object = AddSurface(*chart, surface);
    chart->ColorSurfaceByHeight(object, "viridis");
    object->SetTextureLighting(1);
    AddColorBar(picture, chart, "height, m");
    picture.Save("surface_shaded_height");

    DrawBands(picture, surface);
    DrawFromBelow(picture);
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
