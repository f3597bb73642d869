// Five thousand points in three classes that can be seen through, so that dense places are darker
// than sparse ones and no class hides another.
#include <cmath>
#include <random>

#include "examples/support/example.h"

using namespace varnel;

namespace {

struct Class {
    const char* name;
    point3Dtype centre;
    point3Dtype spread;
    int count;
    int color;
};

/// Normal numbers from even ones, the same with every library.
double Normal(std::mt19937& random) {
    const auto even = [&random] { return (static_cast<double>(random()) + 0.5) / 4294967296.0; };
    const double radius = std::sqrt(-2 * std::log(even()));
    return radius * std::cos(6.283185307179586 * even());
}

void Draw(example::Picture& picture) {
    CChart3D* chart = picture.NewChart("Three classes of 5,000 points", "seen through each other",
                                       "made from normal numbers");
    picture.View().SetTransparency(1);
    CTransform3D* transform = chart->NewTransform({-4, -4, -4, 0}, {4, 4, 4, 0});
    transform->SetRotate({-22, 0, 30, 0});
    transform->SetChartRect({0.52, 0.44, 0.5, 0});
    transform->SetOffset({-0.04, 0, 0, 0});
    CAxes3D* axes = chart->AutoAxes(transform);
    axes->SetAxisTitleString(0, "x");
    example::SetDepthTitle(*axes, "y");
    axes->SetAxisTitleString(2, "z");
    example::AddWalls(*axes, axes->GetAxisNthTicMajor(0), axes->GetAxisNthTicMajor(1),
                      axes->GetAxisNthTicMajor(2));

    std::mt19937 random(5489);
    std::vector<std::string> names;
    std::vector<RGBDType> colors;
    for (const Class& c : {Class{"wide", {0, 0, 0, 0}, {1.3, 1.3, 0.9, 0}, 2500, 0},
                           Class{"flat", {-1, 0.5, 1.6, 0}, {0.9, 1.1, 0.25, 0}, 1500, 1},
                           Class{"round", {1.5, -0.8, -1.2, 0}, {0.5, 0.5, 0.5, 0}, 1000, 2}}) {
        std::vector<point3Dtype> points;
        for (int i = 0; i < c.count; ++i) {
            const double x = c.centre.x + c.spread.x * Normal(random);
            const double y = c.centre.y + c.spread.y * Normal(random);
            points.push_back({x, y, c.centre.z + c.spread.z * Normal(random), 0});
        }
        RGBDType color = example::Color(c.color);
        names.emplace_back(c.name);
        colors.push_back(color);
        color.a = 0.35;
        CChartObj3D* symbols = chart->NewChartObj(transform);
        symbols->ScatterChart3D(points, 0.22, SYMBOL_CUBE, color, color, PROJECTION_NONE, 0);
        symbols->SetOutlineMode(0);
    }
    example::AddKey(*chart, names, colors);
    picture.Save("scatter_transparent");
    picture.View().SetTransparency(0);
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
