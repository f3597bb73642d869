// The six symbols of scatter charts.
#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    const char* names[] = {"10 cube",    "11 plus",      "12 diamond",
                           "13 pyramid", "14 hourglass", "15 arrow"};
    const point3Dtype origin{0, 0, 0, 0};
    const Theme theme;
    CChart3D& chart = *picture.View().NewChart3D();
    chart.SetChartPosition(picture.Square());
    ApplyTheme(chart, theme);
    chart.GetHeader()->SetTitle1("Symbols of scatter charts");
    for (int i = 0; i < 6; ++i) {
        const double x = -0.6 + 0.6 * (i % 3);
        const double z = i < 3 ? 0.33 : -0.36;
        // Symbols do not turn with their place, but with their transform.
        CTransform3D* transform = chart.NewTransform({-1, -1, -1, 0}, {1, 1, 1, 0});
        transform->SetRotate({-22, 0, 30, 0});
        transform->SetOffset({x, 0, z, 0});
        chart.NewChartObj(transform)->ScatterChart3D({&origin, 1}, 3.2, SYMBOL_CUBE + i,
                                                     theme.SeriesColor(i), theme.outline,
                                                     PROJECTION_NONE, 0);
        AddNote(chart, names[i], x, z - 0.36);
    }
    picture.Save("symbols");
}
