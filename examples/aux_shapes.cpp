// The ten solids, each with an outline where it has one, as wire, and with its name.
#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    struct Shape {
        const char* name;
        double size[3];  ///< radius, edge, sides, or radius and height
        double scale;
    };
    // By their codes, from 1.
    const Shape shapes[] = {{"sphere", {1, 0, 0}, 0.11},       {"cube", {1, 0, 0}, 0.17},
                            {"box", {1.5, 0.6, 1}, 0.15},      {"torus", {0.4, 1, 0}, 0.085},
                            {"cylinder", {0.7, 2, 0}, 0.1},    {"icosahedron", {1, 0, 0}, 0.12},
                            {"octahedron", {1, 0, 0}, 0.13},   {"tetrahedron", {1, 0, 0}, 0.045},
                            {"dodecahedron", {1, 0, 0}, 0.12}, {"cone", {0.8, 1.6, 0}, 0.12}};
    CChart3D& chart = *picture.View().NewChart3D();
    chart.SetChartPosition(picture.Square());
    ApplyTheme(chart, Theme::Light());
    chart.GetHeader()->SetTitle1("Solids");
    chart.GetHeader()->SetTitle2("outlined, and as wire");
    CTransform3D* transform = chart.NewTransform({-1, -1, -1, 0}, {1, 1, 1, 0});
    transform->SetChartRect({1, 1, 1, 0});
    for (int i = 0; i < 10; ++i) {
        const double x = -0.8 + 0.4 * (i % 5);
        const double z = i < 5 ? 0.52 : -0.22;
        const Shape& shape = shapes[i];
        for (int wire = 0; wire < 2; ++wire) {
            CAuxObj3D* solid = chart.NewAuxObj(transform, i + 1);
            solid->SetSizeParameters(shape.size[0], shape.size[1], shape.size[2]);
            solid->SetScale(shape.scale);
            solid->SetRotation({-25, 0, 30, 0});
            // The cone stands on its location, the others have it in their middle.
            const double low = i == 9 ? 0.09 : 0.0;
            solid->SetLocation({x, 0, (wire == 1 ? z - 0.3 : z) - low, 0});
            solid->SetColor(Theme().SeriesColor(i));
            solid->SetSolidType(wire == 0);
            solid->SetOutlineMode(1);
        }
        AddNote(chart, shape.name, x, z - 0.52)->SetCharSize(0.6);
    }
    picture.Save("aux_shapes");
}
