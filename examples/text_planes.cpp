// Free text in the planes of the box and facing the viewer; turned in its plane, and turned over.
#include "examples/support/example.h"

using namespace varnel;

namespace {

CTextObj3D* AddText(CChart3D& chart, const char* words, int plane, const point3Dtype& place,
                    int rotation, const RGBDType& color) {
    CTextObj3D* text = chart.NewChartTextObj(words);
    text->SetTextPlane(plane);
    text->SetLocation(place);
    text->SetRotation(rotation);
    text->SetJustify(1, 1);
    text->SetColor(color);
    text->SetCharSize(1.2);
    return text;
}

}  // namespace

void example::Draw(Picture& picture) {
    const Theme theme;
    CChart3D& chart = *picture.View().NewChart3D();
    chart.GetHeader()->SetTitle1("Text in three planes and facing the viewer");
    chart.GetHeader()->SetFooter("turned in its plane, and turned over");
    CTransform3D* transform = chart.NewTransform({-1, -1, -1, 0}, {1, 1, 1, 0});
    transform->SetRotate({-26, 0, 32, 0});
    transform->SetChartRect({0.52, 0.52, 0.48, 0});
    CAxes3D* axes = chart.AutoAxes(transform);
    for (int axis = 0; axis < 3; ++axis) {
        axes->EnableAxis(axis, 0);
        axes->EnableAxisLabels(axis, 0);
    }
    ApplyTheme(chart, theme);

    // The same five texts in each plane; (across, up) are their places in it.
    for (int plane = 0; plane < 3; ++plane) {
        const RGBDType color = theme.SeriesColor(plane == 1 ? 0 : plane + 2);
        const auto at = [plane](double across, double up) {
            return plane == 0   ? point3Dtype{across, -up, -1, 0}
                   : plane == 1 ? point3Dtype{across, -1, up, 0}
                                : point3Dtype{-1, across, up, 0};
        };
        const char* names[] = {"x y plane", "x z plane", "y z plane"};
        AddText(chart, names[plane], plane, at(0, 0.75), 0, color);
        AddText(chart, "90", plane, at(-0.75, 0), 90, color);
        AddText(chart, "30", plane, at(0, 0.2), 30, color);
        AddText(chart, "flip x", plane, at(0, -0.35), 0, color)->SetFlipX(1);
        AddText(chart, "flip y", plane, at(0, -0.75), 0, color)->SetFlipY(1);
    }
    AddText(chart, "facing the viewer", TEXTPLANE_VIEWER, {1, 0.3, -0.8, 0}, 0, theme.text);
    picture.Save("text_planes");
}
