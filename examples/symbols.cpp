// The six symbols of scatter charts.
#include "examples/support/example.h"

using namespace varnel;

namespace {

void Draw(example::Picture& picture) {
    const char* names[] = {"10 cube",    "11 plus",      "12 diamond",
                           "13 pyramid", "14 hourglass", "15 arrow"};
    CChart3D* chart = picture.NewChart("Symbols", "of scatter charts", "codes 10 to 15");
    chart->SetChartPosition(picture.Square());
    for (int i = 0; i < 6; ++i) {
        const double x = -0.6 + 0.6 * (i % 3);
        const double z = i < 3 ? 0.33 : -0.36;
        // Symbols do not turn with their place, but with their transform.
        CTransform3D* transform = chart->NewTransform({-1, -1, -1, 0}, {1, 1, 1, 0});
        transform->SetRotate({-22, 0, 30, 0});
        transform->SetOffset({x, 0, z, 0});
        const point3Dtype origin{0, 0, 0, 0};
        CChartObj3D* symbol = chart->NewChartObj(transform);
        symbol->ScatterChart3D(&origin, 3.2, 1, 10 + i, example::Color(i), example::kGrey, -1, 0);
        example::AddNote(*chart, names[i], x, z - 0.36, example::kBlack, 1);
    }
    picture.Save("symbols");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
