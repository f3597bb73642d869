// Free text in the planes of the box and facing the viewer; turned in its plane, and turned over.
#include "examples/support/example.h"

using namespace varnel;

namespace {

CTextObj3D* AddText(CChart3D* chart, CTransform3D* transform, const char* words, int plane,
                    const point3Dtype& place, int rotation, const RGBDType& color) {
    CTextObj3D* text = chart->NewChartTextObj(transform, words);
    text->SetTextPlane(plane);
    text->SetLocation(place);
    text->SetRotation(rotation);
    text->SetJustify(1, 1);
    text->SetColor(color);
    text->SetCharSize(1.2);
    return text;
}

void Draw(example::Picture& picture) {
    CChart3D* chart = picture.NewChart("Text", "in three planes and facing the viewer",
                                       "turned in its plane, and turned over");
    CTransform3D* transform = chart->NewTransform({-1, -1, -1, 0}, {1, 1, 1, 0});
    transform->SetRotate({-26, 0, 32, 0});
    transform->SetChartRect({0.52, 0.52, 0.48, 0});
    transform->SetOffset({0, 0, -0.02, 0});
    CAxes3D* axes = chart->AutoAxes(transform);
    for (int axis = 0; axis < 3; ++axis) {
        axes->EnableAxis(axis, 0);
        axes->EnableAxisLabels(axis, 0);
    }
    example::AddWalls(*axes, 0, 0, 0);

    // The same five texts in each plane; (across, up) are their places in it.
    for (int plane = 0; plane < 3; ++plane) {
        const RGBDType color = example::Color(plane == 0 ? 3 : plane == 1 ? 0 : 2);
        const auto at = [plane](double across, double up) {
            return plane == 0   ? point3Dtype{across, -up, -1, 0}
                   : plane == 1 ? point3Dtype{across, -1, up, 0}
                                : point3Dtype{-1, across, up, 0};
        };
        const char* names[] = {"x y plane", "x z plane", "y z plane"};
        AddText(chart, transform, names[plane], plane, at(0, 0.75), 0, color);
        AddText(chart, transform, "90", plane, at(-0.75, 0), 90, color);
        AddText(chart, transform, "30", plane, at(0, 0.2), 30, color);
        AddText(chart, transform, "flip x", plane, at(0, -0.35), 0, color)->SetFlipX(1);
        AddText(chart, transform, "flip y", plane, at(0, -0.75), 0, color)->SetFlipY(1);
    }
    AddText(chart, transform, "facing the viewer", 3, {1, 0.3, -0.8, 0}, 0, example::kBlack);
    picture.Save("text_planes");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
