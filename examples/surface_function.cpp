// A function of two variables as a surface: three hills and three hollows around a saddle, in blue
// below zero and red above.
#include <cmath>

#include "examples/support/example.h"

using namespace varnel;

namespace {

/// A saddle with three ways up and three down, which fades away from the middle.
double MonkeySaddle(double x, double y) {
    return (x * x * x - 3 * x * y * y) * std::exp(-x * x - y * y);
}

void Draw(example::Picture& picture) {
    CChart3D* chart =
        picture.NewChart("Three hills and three hollows", "(x\xB3 - 3xy\xB2) exp(-x\xB2 - y\xB2)",
                         "a function of two variables");
    CTransform3D* transform = chart->NewTransform({-3, -3, -0.5, 0}, {3, 3, 0.5, 0});
    transform->SetRotate({-32, 0, 28, 0});
    transform->SetChartRect({0.50, 0.50, 0.32, 0});
    transform->SetOffset({-0.02, 0, 0, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->SetAxisTics(0, -3, 0.5, 4, 0.02, 0.04, 0);
    axes->SetAxisTics(1, -3, 0.5, 4, 0.02, 0.04, 0);
    axes->SetAxisTitleString(0, "x");
    example::SetDepthTitle(*axes, "y");
    axes->SetAxisTitleString(2, "z");
    example::AddWalls(*axes, axes->GetAxisNthTicMajor(0), axes->GetAxisNthTicMajor(1),
                      axes->GetAxisNthTicMajor(2));

    CPolysurface surface(41, 41, -3, -3, 3, 3, MonkeySaddle);
    for (int i = 0; i < surface.GetPSNumPolygons(); ++i)
        surface.SetPolysurfaceColors(i, example::kGrey, {0.74, 0.74, 0.77, 1});
    CChartObj3D* object = chart->NewChartObj(transform);
    object->PolysurfaceChart3D(&surface);
    chart->ColorSurfaceByHeight(object, "coolwarm");

    CLegend3D* legend = picture.View().NewLegend3D();
    legend->SetLegendTitle("z");
    legend->EnableBorder(0);
    legend->EnableBackground(0);
    legend->SetScaleLength(0.3);
    legend->SetColorBar(chart);
    picture.Save("surface_function");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
