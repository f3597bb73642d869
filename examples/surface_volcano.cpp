// The heights of a volcano on a 10 m grid: a lit surface, the same coloured by height, as a wire
// frame, as a flat map above its contour lines, and in the colours of its contour bands.
#include "examples/support/example.h"

using namespace varnel;

namespace {

const ColorScale kScale{.map = "viridis", .min = 90, .max = 200, .bands = 11};

const std::vector<double> kLabelled = {110, 130, 150, 170, 190};

void SetColor(CPolysurface& surface, const RGBDType& color) {
    for (int i = 0; i < surface.GetPSNumPolygons(); ++i)
        surface.SetPolysurfaceColors(i, color, color);
}

CChartObj3D* AddSurface(example::Picture& picture, CPolysurface& surface) {
    CChart3D& chart = *picture.View().NewChart3D();
    CChartObj3D* object = chart.NewChartObj(chart.NewTransform());
    object->PolysurfaceChart3D(&surface);
    object->SetOutlineMode(0);
    return object;
}

void Finish(example::Picture& picture, const std::string& subtitle, const std::string& name,
            std::optional<double> floor = {}, double height = 0.3) {
    CChart3D& chart = *picture.View().GetChart(0);
    chart.AutoFrame(chart.GetTransform(0),
                    {.axes = {AxisFrame{.title = "east, m"}, AxisFrame{.title = "north, m"},
                              AxisFrame{.title = "height, m", .min = floor}},
                     .title = "Maunga Whau, Auckland",
                     .subtitle = subtitle,
                     .footer = "digitised by Ross Ihaka",
                     .proportions = point3Dtype{1, 1, height, 0},
                     .asData = true});
    picture.Save("surface_volcano_" + name);
}

CLegend3D* AddLegend(example::Picture& picture) {
    CLegend3D* legend = picture.View().NewLegend3D(LEGEND_OUTSIDE_RIGHT);
    legend->SetLegendTitle("height, m");
    return legend;
}

CChartObj3D* AddContours(example::Picture& picture, CPolysurface& surface, double z) {
    CChart3D& chart = *picture.View().GetChart(0);
    CChartObj3D* contours = chart.NewChartObj(chart.GetTransform(0));
    const std::vector<double> limits = kScale.BandLimits();
    contours->ContourPolysurface3D(&surface, std::span(limits).subspan(1, 10), kScale.Colors(), z,
                                   0);
    contours->SetContourStyle({.lineWidth = static_cast<double>(picture.Pixels(1.6))});
    return contours;
}

}  // namespace

void example::Draw(Picture& picture) {
    CPolysurface surface = picture.ReadVolcano();
    SetColor(surface, {0.62, 0.74, 0.44, 1});
    AddSurface(picture, surface);
    Finish(picture, "one colour, lit", "lit");

    CChartObj3D* object = AddSurface(picture, surface);
    CChart3D* chart = picture.View().GetChart(0);
    chart->ColorSurfaceByHeight(object, "viridis");
    AddLegend(picture)->SetColorBar(chart);
    Finish(picture, "coloured by height", "height");

    CPolysurface wire(&surface, 2);
    wire.SetWireFrame(1);
    SetColor(wire, {0.32, 0.45, 0.22, 1});
    AddSurface(picture, wire);
    Finish(picture, "a wire frame of every second point", "wire");

    object = AddSurface(picture, surface);
    chart = picture.View().GetChart(0);
    // The map has no heights of its own: it is coloured by the value of its points.
    surface.CopyXYorZtoV(1, 0, 2);
    chart->ColorSurfaceByValue(object, {}, "viridis");
    object->PolysurfaceChart2D(&surface, 190, PROJECTION_ALONG_Z);
    AddLegend(picture)->SetContours(AddContours(picture, surface, 70.5), 0);
    Finish(picture, "a map above its contour lines", "flat", 70);

    AddSurface(picture, surface);
    chart = picture.View().GetChart(0);
    const std::vector<RGBDType> dark(12, Theme().outline);
    const double width = picture.Pixels(2);
    for (const int onSurface : {0, 1}) {
        CChartObj3D* lines = chart->NewChartObj(chart->GetTransform(0));
        lines->ContourPolysurface3D(&surface, std::span(kLabelled), dark, -59.5, 0);
        lines->SetContourStyle({.lineWidth = width,
                                .onSurface = onSurface,
                                .labels = 1,
                                .labelSize = 0.75,
                                .labelSpacing = static_cast<double>(picture.Pixels(250))});
    }
    Finish(picture, "contour lines on it and on its floor", "contours", -60, 0.6);

    const std::vector<double> limits = kScale.BandLimits();
    CPolysurface bands = FilledContours(surface, limits, kScale.Colors());
    AddSurface(picture, bands);
    AddLegend(picture)->SetContours(AddContours(picture, surface, 40.5), 1);
    Finish(picture, "in bands of 10 m, above its contour lines", "bands", 40);
}
